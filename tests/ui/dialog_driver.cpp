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
#include <iterator>
#include <string>

namespace {

constexpr DWORD kWatchdogMs = 60000;
constexpr const char* kDialogTitle = "Lettermotion #3";
// Control ids: the dialog's buttons, edits and boxes, the range of the
// effects' panel controls, Simple's frame count and text fill, and the
// colour box's edits for red, green and blue.
constexpr int kBuildButton = 1, kCancelButton = 2, kTestButton = 35;
constexpr int kTextEdit = 23, kEffectList = 30, kDelayEdit = 11, kUpDownOffset = 10000;
constexpr int kTrueColourBox = 10, kSupercompressBox = 19, kTransparentBox = 46;
constexpr int kFirstPanelId = 100, kLastPanelId = 638;
constexpr int kEffectSimple = 17, kSimpleFrames = 117, kFillSwatch = 101;
constexpr int kColourBoxRed = 706, kColourBoxGreen = 707, kColourBoxBlue = 708;

DWORD g_start = 0;
int g_failures = 0;

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
    if (GetTickCount() - begin > limitMs || GetTickCount() - g_start >= kWatchdogMs) return false;
    Sleep(100);
  }
  return true;
}

bool FileExists(const std::string& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
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
  std::string command =
      "\"" + host + "\" --plugin \"" + plugin + "\" --out \"" + out + "\" --flags " + std::to_string(flags);
  BOOL ok =
      CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started->process);
  CloseHandle(output);
  return ok != FALSE;
}

// Waits until the dialog's thread has handled everything sent before.
void Settle(const Host& host) {
  DWORD_PTR ignored = 0;
  SendMessageTimeoutA(host.dialog, WM_NULL, 0, 0, SMTO_NORMAL, 30000, &ignored);
}

// Calls visit(window) for each top-level window, or each child of parent.
template <typename Visit>
void ForEachWindow(HWND parent, Visit visit) {
  WNDENUMPROC call = [](HWND window, LPARAM visitor) -> BOOL {
    (*reinterpret_cast<Visit*>(visitor))(window);
    return TRUE;
  };
  if (parent == nullptr)
    EnumWindows(call, reinterpret_cast<LPARAM>(&visit));
  else
    EnumChildWindows(parent, call, reinterpret_cast<LPARAM>(&visit));
}

// Whether the second stage has ended: it shows the current effect's panel last.
bool PanelShown(HWND dialog) {
  bool found = false;
  ForEachWindow(dialog, [&](HWND child) {
    int id = GetDlgCtrlID(child);
    found = found || (id >= kFirstPanelId && id <= kLastPanelId && IsWindowVisible(child));
  });
  return found;
}

// The dialog, once its second stage has made and loaded the panels.
bool FindDialog(Host* host) {
  auto up = [&] { return (host->dialog = FindWindowA(nullptr, kDialogTitle)) != nullptr && PanelShown(host->dialog); };
  if (!WaitFor(up, 20000)) return false;
  Settle(*host);
  return true;
}

HWND Item(const Host& host, int id) { return GetDlgItem(host.dialog, id); }
bool Visible(const Host& host, int id) { return IsWindowVisible(Item(host, id)) != FALSE; }
bool Enabled(const Host& host, int id) { return IsWindowEnabled(Item(host, id)) != FALSE; }

void ChooseEffect(const Host& host, int effect) {
  SendMessageA(Item(host, kEffectList), CB_SETCURSEL, static_cast<WPARAM>(effect), 0);
  SendMessageA(host.dialog, WM_COMMAND, MAKEWPARAM(kEffectList, CBN_CLOSEUP),
               reinterpret_cast<LPARAM>(Item(host, kEffectList)));
  Settle(host);
}

bool WaitForExit(const Host& host) {
  DWORD elapsed = GetTickCount() - g_start;
  return WaitForSingleObject(host.process.hProcess, elapsed < kWatchdogMs ? kWatchdogMs - elapsed : 0) == WAIT_OBJECT_0;
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

// What the dialog makes of the host's flags: bit 0, a palette-based target;
// bit 1, true colour, which lwhost is never given here.
void CheckHostFlags(const Host& host, bool paletteFormat) {
  char range[64] = {};
  GetWindowTextA(Item(host, kDelayEdit + kUpDownOffset), range, sizeof range);
  Check(std::strcmp(range, paletteFormat ? "1,25,8" : "1,250,80") == 0, "the Delay range follows the host's flags");
  Check(!Enabled(host, kTrueColourBox), "True color is disabled without the host's true-colour flag");
  Check(Enabled(host, kTransparentBox) == paletteFormat, "Transparent is offered only to a palette-based host");
  Check(Enabled(host, kSupercompressBox) == paletteFormat, "Supercompress is offered only to a palette-based host");
  if (!paletteFormat) {
    Check(SendMessageA(Item(host, kSupercompressBox), BM_GETCHECK, 0, 0) == BST_UNCHECKED,
          "Supercompress is cleared for a host without a palette-based target");
  }
}

HWND FindColourBox(const Host& host) {
  HWND found = nullptr;
  ForEachWindow(nullptr, [&](HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = {};
    GetClassNameA(window, name, sizeof name);
    if (process == host.process.dwProcessId && window != host.dialog && IsWindowVisible(window) &&
        std::strcmp(name, "#32770") == 0 && GetDlgItem(window, kColourBoxRed) != nullptr) {
      found = window;
    }
  });
  return found;
}

// A click on the face of the text's fill swatch opens the host's colour box
// (code 11); pure red is typed in and confirmed.
void PickFillColour(const Host& host) {
  PostMessageA(Item(host, kFillSwatch), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
  PostMessageA(Item(host, kFillSwatch), WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
  HWND box = nullptr;
  bool opened = WaitFor([&] { return (box = FindColourBox(host)) != nullptr; }, 10000);
  Check(opened, "a click on the fill swatch opens the host's colour box");
  if (!opened) return;
  for (auto [id, value] : {std::pair(kColourBoxRed, "255"), {kColourBoxGreen, "0"}, {kColourBoxBlue, "0"}}) {
    TypeKeys(GetDlgItem(box, id), value);
  }
  PostMessageA(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  Check(WaitFor([&] { return IsWindow(box) == FALSE; }, 10000), "the colour box closes on OK");
  Settle(host);
}

// The solid colour in the swatch's saved file (at offset 20), or -1.
long long SavedFillColour() {
  std::string record = ReadFile(FillPath());
  std::uint32_t colour = 0;
  if (record.size() < 24) return -1;
  std::memcpy(&colour, record.data() + 20, sizeof colour);
  return colour;
}

void EditTextAndEffect(const Host& host) {
  TypeText(host, kTextEdit, "");
  Check(!Enabled(host, kBuildButton) && Enabled(host, kTestButton), "an empty text disables Build but not Test");
  TypeText(host, kTextEdit, "Wine UI");
  Check(Enabled(host, kBuildButton), "typing a text enables Build");

  Check(Visible(host, kSimpleFrames), "the Simple panel shows at start");
  ChooseEffect(host, 0);
  Check(!Visible(host, kSimpleFrames), "another effect hides the Simple panel");
  ChooseEffect(host, kEffectSimple);
  Check(Visible(host, kSimpleFrames), "choosing Simple again shows its panel");
}

// The user's own settings and fill files, kept aside for the time of the
// runs and put back (or removed, an empty copy standing for none) at the end.
void KeepOrRestoreUserSettings(const std::string& outDir, bool restore) {
  for (const auto& [path, copy] :
       {std::pair(SettingsPath(), outDir + "\\user.ini"), std::pair(FillPath(), outDir + "\\user.mtrl")}) {
    std::string kept = ReadFile(restore ? copy : path);
    if (restore) DeleteFileA(path.c_str());
    if (!restore || !kept.empty()) std::ofstream(restore ? path : copy, std::ios::binary) << kept;
  }
}

// Starts the host, lets drive() work the dialog once it is up, and ends the
// host if it has not closed by then.
template <typename Drive>
void RunHost(const std::string& hostPath, const std::string& plugin, const std::string& gif, int flags,
             const std::string& log, Drive drive) {
  Host host;
  if (!StartHost(hostPath, plugin, gif, flags, log, &host)) return Check(false, "the host starts");
  FindDialog(&host) ? drive(host) : Check(false, "the dialog opens with its panels");
  EndHost(&host);
}

int RunBuild(const std::string& hostPath, const std::string& plugin, const std::string& outDir) {
  KeepOrRestoreUserSettings(outDir, false);
  std::string gif = outDir + "\\out.gif";
  DeleteFileA(gif.c_str());
  RunHost(hostPath, plugin, gif, 1, outDir + "\\host.log", [&](const Host& host) {
    CheckHostFlags(host, true);
    EditTextAndEffect(host);
    PickFillColour(host);
    TypeText(host, kSimpleFrames, "6");
    std::ofstream(outDir + "\\shot.ready") << "ready\n";
    WaitFor([&] { return FileExists(outDir + "\\shot.done"); }, 15000);

    PostMessageA(Item(host, kTestButton), BM_CLICK, 0, 0);
    Check(WaitFor([&] { return FileExists(gif); }, 40000), "Test writes a GIF");
    Settle(host);
    Check(IsWindow(host.dialog) != FALSE, "the dialog stays open after Test");
    MoveFileExA(gif.c_str(), (outDir + "\\test.gif").c_str(), MOVEFILE_REPLACE_EXISTING);

    PostMessageA(Item(host, kBuildButton), BM_CLICK, 0, 0);
    Check(WaitForExit(host), "Build closes the dialog");
    Check(FileExists(gif), "Build writes a GIF");
    MoveFileExA(gif.c_str(), (outDir + "\\build.gif").c_str(), MOVEFILE_REPLACE_EXISTING);
  });

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
  Check(HasSetting(ReadFile(SettingsPath()), "MainSimpleFrames", "6"), "the Build run left its settings file");
  std::ofstream(SettingsPath(), std::ios::app) << "UiTestMarker=1\r\n";
  RunHost(hostPath, plugin, outDir + "\\cancel.gif", 0, outDir + "\\cancel.log", [&](const Host& host) {
    Check(SendMessageA(Item(host, kSimpleFrames), WM_GETTEXTLENGTH, 0, 0) > 0, "the panel is loaded");
    CheckHostFlags(host, false);
    TypeText(host, kSimpleFrames, "9");
    PostMessageA(Item(host, kCancelButton), BM_CLICK, 0, 0);
    Check(WaitForExit(host), "Cancel closes the dialog");
  });
  std::string after = ReadFile(SettingsPath());
  Check(after.find("UiTestMarker") == std::string::npos, "Cancel writes the settings file");
  Check(HasSetting(after, "MainSimpleFrames", "6"), "Cancel keeps the panel edit out of the file");
  Check(!FileExists(outDir + "\\cancel.gif"), "Cancel writes no GIF");
  KeepOrRestoreUserSettings(outDir, true);
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
