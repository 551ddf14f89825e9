// Drives the plug-in's dialog inside lwhost.exe from a second process, as a
// user would: types a text, switches the effect, sets a panel number, then
// presses Test and Build, or Cancel. Afterwards it checks the settings file
// that the dialog wrote when it closed. The user's own settings file is put
// back at the end.
//
//   dialog_driver build|cancel HOST.exe PLUGIN.dll OUT_DIR
//
// In build mode it writes to OUT_DIR: host.log (the host's output), test.gif
// (the Test run), build.gif (the Build run) and build.ini (the settings file
// after the Build). Before pressing Test it creates shot.ready and waits up to
// 15 s for shot.done, so that a screenshot can be taken of the dialog.
// Every step is bounded; after 60 s in all the host is ended and the run fails.
#include <windows.h>
#include <shlobj.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

constexpr DWORD kWatchdogMs = 60000;
constexpr const char* kDialogTitle = "Lettermotion #3";
constexpr int kBuildButton = 1;
constexpr int kCancelButton = 2;
constexpr int kTextEdit = 23;
constexpr int kEffectList = 30;
constexpr int kTestButton = 35;
constexpr int kFirstPanelId = 100;
constexpr int kLastPanelId = 638;
constexpr int kSimpleFrames = 117;
constexpr int kEffectSimple = 17;
constexpr int kFillSwatch = 101;  // the text's fill of Simple
constexpr int kDelayEdit = 11;
constexpr int kUpDownOffset = 10000;
constexpr int kTrueColourBox = 10;
constexpr int kSupercompressBox = 19;
constexpr int kTransparentBox = 46;
constexpr int kColourBoxRed = 706;  // the colour box's edits for red, green and blue
constexpr int kColourBoxGreen = 707;
constexpr int kColourBoxBlue = 708;

DWORD g_start = 0;
int g_failures = 0;

bool TimeLeft() { return GetTickCount() - g_start < kWatchdogMs; }

void Check(bool condition, const char* what) {
  std::printf("%s: %s\n", condition ? "ok" : "FAIL", what);
  std::fflush(stdout);
  if (!condition) ++g_failures;
}

// Polls until done() holds, the time limit passes, or the watchdog fires.
template <typename Condition>
bool WaitFor(Condition done, DWORD limitMs) {
  DWORD begin = GetTickCount();
  while (!done()) {
    if (GetTickCount() - begin > limitMs || !TimeLeft()) return false;
    Sleep(100);
  }
  return true;
}

bool FileExists(const std::string& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string MakerFolder() {
  char folder[MAX_PATH] = {};
  SHGetFolderPathA(nullptr, CSIDL_APPDATA, nullptr, 0, folder);
  return std::string(folder) + "\\Brindle Foundries";
}

std::string SettingsPath() { return MakerFolder() + "\\LWMOTIO3.INI"; }
std::string FillPath() { return MakerFolder() + "\\Lettermotion 3\\Material00101.mtrl"; }

// A "key = value" line of the settings file.
bool HasSetting(const std::string& text, const std::string& key, const std::string& value) {
  return text.find("\n" + key + " = " + value + "\r\n") != std::string::npos;
}

struct Host {
  PROCESS_INFORMATION process{};
  HWND dialog = nullptr;
};

bool StartHost(const std::string& host, const std::string& plugin, const std::string& out, int flags,
               const std::string& log, Host* started) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE output = CreateFileA(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  std::string command = "\"" + host + "\" --plugin \"" + plugin + "\" --out \"" + out + "\" --flags " + std::to_string(flags);
  BOOL ok = CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                           &started->process);
  CloseHandle(output);
  return ok != FALSE;
}

// Waits until the dialog's thread has handled everything sent before.
void Settle(const Host& host) {
  DWORD_PTR ignored = 0;
  SendMessageTimeoutA(host.dialog, WM_NULL, 0, 0, SMTO_NORMAL, 30000, &ignored);
}

BOOL CALLBACK FindShownPanelControl(HWND child, LPARAM found) {
  int id = GetDlgCtrlID(child);
  if (id >= kFirstPanelId && id <= kLastPanelId && IsWindowVisible(child)) *reinterpret_cast<bool*>(found) = true;
  return TRUE;
}

// Whether the second stage has ended: it shows the current effect's panel last.
bool PanelShown(HWND dialog) {
  bool found = false;
  EnumChildWindows(dialog, FindShownPanelControl, reinterpret_cast<LPARAM>(&found));
  return found;
}

// The dialog, once its second stage has made and loaded the panels.
bool FindDialog(Host* host) {
  bool found = WaitFor(
      [&] {
        host->dialog = FindWindowA(nullptr, kDialogTitle);
        return host->dialog != nullptr && PanelShown(host->dialog);
      },
      20000);
  if (found) Settle(*host);
  return found;
}

HWND Item(const Host& host, int id) { return GetDlgItem(host.dialog, id); }

void ChooseEffect(const Host& host, int effect) {
  SendMessageA(Item(host, kEffectList), CB_SETCURSEL, static_cast<WPARAM>(effect), 0);
  SendMessageA(host.dialog, WM_COMMAND, MAKEWPARAM(kEffectList, CBN_CLOSEUP),
               reinterpret_cast<LPARAM>(Item(host, kEffectList)));
}

bool Visible(const Host& host, int id) { return IsWindowVisible(Item(host, id)) != FALSE; }

bool WaitForExit(const Host& host) {
  DWORD left = kWatchdogMs - (GetTickCount() - g_start);
  if (GetTickCount() - g_start > kWatchdogMs) left = 0;
  return WaitForSingleObject(host.process.hProcess, left) == WAIT_OBJECT_0;
}

void EndHost(Host* host) {
  if (WaitForSingleObject(host->process.hProcess, 0) != WAIT_OBJECT_0) {
    TerminateProcess(host->process.hProcess, 99);
    Check(false, "the host ended within the time limit");
  }
  CloseHandle(host->process.hThread);
  CloseHandle(host->process.hProcess);
}

// Clears an edit and types text into it, key by key.
void TypeKeys(HWND edit, const char* text) {
  SendMessageA(edit, EM_SETSEL, 0, -1);
  SendMessageA(edit, WM_CLEAR, 0, 0);
  for (const char* key = text; *key != '\0'; ++key) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*key), 0);
}

void TypeText(const Host& host, int id, const char* text) {
  TypeKeys(Item(host, id), text);
  Settle(host);
}

std::string ItemText(HWND item) {
  char text[64] = {};
  SendMessageA(item, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

bool Enabled(const Host& host, int id) { return IsWindowEnabled(Item(host, id)) != FALSE; }

// What the dialog makes of the host's flags: bit 0, a palette-based target;
// bit 1, true colour, which lwhost is never given here.
void CheckHostFlags(const Host& host, bool paletteFormat) {
  const char* range = paletteFormat ? "1,25,8" : "1,250,80";
  Check(ItemText(Item(host, kDelayEdit + kUpDownOffset)) == range, "the Delay range follows the host's flags");
  Check(!Enabled(host, kTrueColourBox), "True color is disabled without the host's true-colour flag");
  Check(Enabled(host, kTransparentBox) == paletteFormat, "Transparent is offered only to a palette-based host");
  Check(Enabled(host, kSupercompressBox) == paletteFormat, "Supercompress is offered only to a palette-based host");
  if (!paletteFormat) {
    Check(SendMessageA(Item(host, kSupercompressBox), BM_GETCHECK, 0, 0) == BST_UNCHECKED,
          "Supercompress is cleared for a host without a palette-based target");
  }
}

struct ColourBoxSearch {
  DWORD process;
  HWND dialog;
  HWND found;
};

BOOL CALLBACK FindColourBoxWindow(HWND window, LPARAM search) {
  auto* wanted = reinterpret_cast<ColourBoxSearch*>(search);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char name[16] = {};
  GetClassNameA(window, name, sizeof name);
  if (process == wanted->process && window != wanted->dialog && IsWindowVisible(window) &&
      std::strcmp(name, "#32770") == 0 && GetDlgItem(window, kColourBoxRed) != nullptr) {
    wanted->found = window;
  }
  return TRUE;
}

HWND FindColourBox(const Host& host) {
  ColourBoxSearch search{host.process.dwProcessId, host.dialog, nullptr};
  EnumWindows(FindColourBoxWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// A click on the face of the text's fill swatch opens the host's colour box
// (code 11); pure red is typed in and confirmed.
void PickFillColour(const Host& host) {
  HWND swatch = Item(host, kFillSwatch);
  PostMessageA(swatch, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
  PostMessageA(swatch, WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
  HWND box = nullptr;
  bool opened = WaitFor([&] { return (box = FindColourBox(host)) != nullptr; }, 10000);
  Check(opened, "a click on the fill swatch opens the host's colour box");
  if (!opened) return;
  TypeKeys(GetDlgItem(box, kColourBoxRed), "255");
  TypeKeys(GetDlgItem(box, kColourBoxGreen), "0");
  TypeKeys(GetDlgItem(box, kColourBoxBlue), "0");
  PostMessageA(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  Check(WaitFor([&] { return IsWindow(box) == FALSE; }, 10000), "the colour box closes on OK");
  Settle(host);
}

// The solid colour in the swatch's saved file, or -1.
long long SavedFillColour() {
  std::string record = ReadFile(FillPath());
  constexpr std::size_t kColourOffset = 20;
  if (record.size() < kColourOffset + 4) return -1;
  std::uint32_t colour = 0;
  std::memcpy(&colour, record.data() + kColourOffset, sizeof colour);
  return colour;
}

void EditTextAndEffect(const Host& host) {
  TypeText(host, kTextEdit, "");
  Check(!IsWindowEnabled(Item(host, kBuildButton)), "an empty text disables Build");
  Check(IsWindowEnabled(Item(host, kTestButton)) != FALSE, "an empty text leaves Test enabled");
  TypeText(host, kTextEdit, "Wine UI");
  Check(IsWindowEnabled(Item(host, kBuildButton)) != FALSE, "typing a text enables Build");

  Check(Visible(host, kSimpleFrames), "the Simple panel shows at start");
  ChooseEffect(host, 0);
  Settle(host);
  Check(!Visible(host, kSimpleFrames), "another effect hides the Simple panel");
  ChooseEffect(host, kEffectSimple);
  Settle(host);
  Check(Visible(host, kSimpleFrames), "choosing Simple again shows its panel");
}

void WaitForScreenshot(const std::string& outDir) {
  std::ofstream(outDir + "\\shot.ready") << "ready\n";
  WaitFor([&] { return FileExists(outDir + "\\shot.done"); }, 15000);
}

// The user's own settings file, kept aside for the time of the runs; an
// empty copy stands for none.
void Keep(const std::string& path, const std::string& copy) {
  std::ofstream(copy, std::ios::binary) << ReadFile(path);
}

void Restore(const std::string& path, const std::string& copy) {
  std::string kept = ReadFile(copy);
  if (kept.empty()) DeleteFileA(path.c_str());
  else std::ofstream(path, std::ios::binary) << kept;
}

void KeepUserSettings(const std::string& outDir) {
  Keep(SettingsPath(), outDir + "\\user.ini");
  Keep(FillPath(), outDir + "\\user.mtrl");
}

void RestoreUserSettings(const std::string& outDir) {
  Restore(SettingsPath(), outDir + "\\user.ini");
  Restore(FillPath(), outDir + "\\user.mtrl");
}

int RunBuild(const std::string& hostPath, const std::string& plugin, const std::string& outDir) {
  KeepUserSettings(outDir);
  std::string gif = outDir + "\\out.gif";
  DeleteFileA(gif.c_str());
  Host host;
  if (!StartHost(hostPath, plugin, gif, 1, outDir + "\\host.log", &host)) {
    Check(false, "the host starts");
    return 1;
  }
  if (FindDialog(&host)) {
    CheckHostFlags(host, true);
    EditTextAndEffect(host);
    PickFillColour(host);
    TypeText(host, kSimpleFrames, "6");
    WaitForScreenshot(outDir);

    PostMessageA(Item(host, kTestButton), BM_CLICK, 0, 0);
    Check(WaitFor([&] { return FileExists(gif); }, 40000), "Test writes a GIF");
    Settle(host);
    Check(IsWindow(host.dialog) != FALSE, "the dialog stays open after Test");
    MoveFileExA(gif.c_str(), (outDir + "\\test.gif").c_str(), MOVEFILE_REPLACE_EXISTING);

    PostMessageA(Item(host, kBuildButton), BM_CLICK, 0, 0);
    Check(WaitForExit(host), "Build closes the dialog");
    Check(FileExists(gif), "Build writes a GIF");
    MoveFileExA(gif.c_str(), (outDir + "\\build.gif").c_str(), MOVEFILE_REPLACE_EXISTING);
  } else {
    Check(false, "the dialog opens with its panels");
  }
  EndHost(&host);

  std::string settings = ReadFile(SettingsPath());
  Check(HasSetting(settings, "MainText", "Wine UI"), "the settings file holds the typed text");
  Check(HasSetting(settings, "MainSimpleFrames", "6"), "the settings file holds the panel's frame count after Build");
  Check(HasSetting(settings, "MainEffect", "17"), "the settings file holds the effect");
  Check(SavedFillColour() == 0x0000FF, "the fill swatch saved the picked colour");
  CopyFileA(SettingsPath().c_str(), (outDir + "\\build.ini").c_str(), FALSE);
  return g_failures;
}

// Cancel after a panel edit: the file is written again (a marker line added
// before the run is gone), but the edit is not in it.
int RunCancel(const std::string& hostPath, const std::string& plugin, const std::string& outDir) {
  std::string before = ReadFile(SettingsPath());
  Check(HasSetting(before, "MainSimpleFrames", "6"), "the Build run left its settings file");
  std::ofstream(SettingsPath(), std::ios::app) << "UiTestMarker=1\r\n";
  Host host;
  if (!StartHost(hostPath, plugin, outDir + "\\cancel.gif", 0, outDir + "\\cancel.log", &host)) {
    Check(false, "the host starts");
    return 1;
  }
  if (FindDialog(&host)) {
    Check(SendMessageA(Item(host, kSimpleFrames), WM_GETTEXTLENGTH, 0, 0) > 0, "the panel is loaded");
    CheckHostFlags(host, false);
    TypeText(host, kSimpleFrames, "9");
    PostMessageA(Item(host, kCancelButton), BM_CLICK, 0, 0);
    Check(WaitForExit(host), "Cancel closes the dialog");
  } else {
    Check(false, "the dialog opens with its panels");
  }
  EndHost(&host);
  std::string after = ReadFile(SettingsPath());
  Check(after.find("UiTestMarker") == std::string::npos, "Cancel writes the settings file");
  Check(HasSetting(after, "MainSimpleFrames", "6"), "Cancel keeps the panel edit out of the file");
  Check(!FileExists(outDir + "\\cancel.gif"), "Cancel writes no GIF");
  RestoreUserSettings(outDir);
  return g_failures;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fprintf(stderr, "usage: dialog_driver build|cancel HOST.exe PLUGIN.dll OUT_DIR\n");
    return 2;
  }
  g_start = GetTickCount();
  std::string mode = argv[1];
  if (mode == "build") return RunBuild(argv[2], argv[3], argv[4]) == 0 ? 0 : 1;
  if (mode == "cancel") return RunCancel(argv[2], argv[3], argv[4]) == 0 ? 0 : 1;
  std::fprintf(stderr, "dialog_driver: unknown mode %s\n", argv[1]);
  return 2;
}
