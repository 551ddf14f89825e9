// Drives the plug-in's dialog inside lwhost.exe from a second process, as a
// user would: types a text, picks a tile in the tile dialog, switches the
// effect, sets a panel number, then presses Test and Build, or Cancel.
// Afterwards it checks the settings file that the dialog wrote when it
// closed. The user's own settings file is put back at the end.
//
//   dialog_driver build|cancel HOST.exe PLUGIN.dll OUT_DIR
//
// In build mode it writes to OUT_DIR: host.log (the host's output), test.gif
// (the Test run), build.gif (the Build run) and build.ini (the settings file
// after the Build). With the tile dialog open it creates tiles.ready, and
// before pressing Test shot.ready, and waits up to 15 s for tiles.done or
// shot.done, so that a screenshot can be taken.
// Every step is bounded; after 60 s in all the host is ended and the run fails.
#include <windows.h>
#include <shlobj.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr DWORD kWatchdogMs = 60000;
// Control ids: the dialog's buttons, edits and boxes, the range of the
// effects' panel controls, Simple's frame count and text fill, and the
// colour box's edits for red, green and blue.
constexpr int kBuildButton = 1, kCancelButton = 2, kTestButton = 35, kTextEdit = 23, kEffectList = 30;
constexpr int kDelayUpDown = 10011, kTrueColourBox = 10, kSupercompressBox = 19, kTransparentBox = 46;
constexpr int kFirstPanelId = 100, kLastPanelId = 638, kEffectSimple = 17, kSimpleFrames = 117, kFillSwatch = 101;
constexpr int kColourBoxRed = 706, kColourBoxGreen = 707, kColourBoxBlue = 708;
// Background Mural's tile button and the tile dialog's list, "+" and size text.
constexpr int kEffectMural = 3, kTileButton = 357, kTileList = 102, kTileAdd = 103, kTileSize = 105;
constexpr int kMessageBoxText = 101, kTileIndexMessage = 1425, kChosenTile = 2;

DWORD g_start = 0;
int g_failures = 0;

void Check(bool condition, const char* what) {
  std::printf("%s: %s\n", condition ? "ok" : "FAIL", what);
  std::fflush(stdout);
  g_failures += condition ? 0 : 1;
}

// Polls until done() holds, the time limit passes, or the watchdog fires.
template <typename Condition>
bool WaitFor(Condition done, DWORD limitMs) {
  for (DWORD begin = GetTickCount(); !done(); Sleep(100))
    if (GetTickCount() - begin > limitMs || GetTickCount() - g_start >= kWatchdogMs) return false;
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

// Waits until the thread of window has handled everything sent before.
void Settle(HWND window) {
  DWORD_PTR ignored = 0;
  SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 30000, &ignored);
}

// Whether the second stage has ended: it shows the current effect's panel last.
bool PanelShown(HWND dialog) {
  bool found = false;
  auto visit = [](HWND child, LPARAM found) -> BOOL {
    int id = GetDlgCtrlID(child);
    *reinterpret_cast<bool*>(found) |= id >= kFirstPanelId && id <= kLastPanelId && IsWindowVisible(child);
    return TRUE;
  };
  EnumChildWindows(dialog, visit, reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND Item(const Host& host, int id) { return GetDlgItem(host.dialog, id); }
bool Enabled(const Host& host, int id) { return IsWindowEnabled(Item(host, id)) != FALSE; }

bool WaitForExit(const Host& host) {
  return WaitFor([&] { return WaitForSingleObject(host.process.hProcess, 0) == WAIT_OBJECT_0; }, kWatchdogMs);
}

// Clears an edit and types text into it, key by key.
void TypeText(HWND edit, const char* text) {
  SendMessageA(edit, EM_SETSEL, 0, -1);
  SendMessageA(edit, WM_CLEAR, 0, 0);
  for (const char* key = text; *key != '\0'; ++key) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*key), 0);
  Settle(edit);
}

// What the dialog makes of the host's flags: bit 0, a palette-based target;
// bit 1, true colour, which lwhost is never given here.
void CheckHostFlags(const Host& host, bool palette) {
  char range[64] = {};
  GetWindowTextA(Item(host, kDelayUpDown), range, sizeof range);
  Check(std::string(range) == (palette ? "1,25,8" : "1,250,80") && !Enabled(host, kTrueColourBox) &&
            Enabled(host, kTransparentBox) == palette && Enabled(host, kSupercompressBox) == palette,
        "the Delay range, True color, Transparent and Supercompress follow the host's flags");
}

// A visible dialog of the host's other than the main one that has a control
// of the id.
HWND FindBoxWith(const Host& host, int id, HWND besides = nullptr) {
  for (HWND box = nullptr; (box = FindWindowExA(nullptr, box, "#32770", nullptr)) != nullptr;) {
    DWORD process = 0;
    GetWindowThreadProcessId(box, &process);
    if (process == host.process.dwProcessId && box != host.dialog && box != besides && IsWindowVisible(box) &&
        GetDlgItem(box, id) != nullptr)
      return box;
  }
  return nullptr;
}

// Lets the script take the screen: name.ready, then up to 15 s for name.done.
void Screenshot(const std::string& outDir, const std::string& name) {
  std::ofstream(outDir + "\\" + name + ".ready") << "ready\n";
  WaitFor([&] { return FileExists(outDir + "\\" + name + ".done"); }, 15000);
}

HWND FindColourBox(const Host& host) { return FindBoxWith(host, kColourBoxRed); }

void ChooseEffect(const Host& host, int effect) {
  SendMessageA(Item(host, kEffectList), CB_SETCURSEL, static_cast<WPARAM>(effect), 0);
  SendMessageA(host.dialog, WM_COMMAND, MAKEWPARAM(kEffectList, CBN_CLOSEUP), LPARAM(Item(host, kEffectList)));
  Settle(host.dialog);
}

std::string TextOf(HWND window) {
  char text[512] = {};
  GetWindowTextA(window, text, sizeof text);
  return text;
}

// A click on Background Mural's tile opens the tile dialog on the primary
// group, which refuses a new tile; a chosen cell and OK give the button that
// tile's number.
void ChooseTile(const Host& host, const std::string& outDir) {
  ChooseEffect(host, kEffectMural);
  PostMessageA(Item(host, kTileButton), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
  PostMessageA(Item(host, kTileButton), WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
  HWND tiles = nullptr;
  bool opened = WaitFor([&] { return (tiles = FindBoxWith(host, kTileList)) != nullptr; }, 10000);
  Check(opened, "a click on the tile button opens the tile dialog");
  if (!opened) return;
  HWND list = GetDlgItem(tiles, kTileList);
  Check(SendMessageA(list, LB_GETCOUNT, 0, 0) >= 6, "the tile dialog lists the primary group");
  SendMessageA(list, LB_SETCURSEL, kChosenTile, 0);
  SendMessageA(tiles, WM_COMMAND, MAKEWPARAM(kTileList, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
  Check(TextOf(GetDlgItem(tiles, kTileSize)).find(" x ") != std::string::npos, "the chosen tile's size shows");
  Screenshot(outDir, "tiles");

  PostMessageA(GetDlgItem(tiles, kTileAdd), BM_CLICK, 0, 0);
  HWND refusal = nullptr;
  WaitFor([&] { return (refusal = FindBoxWith(host, kMessageBoxText, tiles)) != nullptr; }, 10000);
  Check(refusal != nullptr && TextOf(GetDlgItem(refusal, kMessageBoxText)).rfind("This file cannot be edited", 0) == 0,
        "\"+\" on the primary group says it cannot be edited");
  if (refusal != nullptr) PostMessageA(GetDlgItem(refusal, IDOK), BM_CLICK, 0, 0);
  WaitFor([&] { return refusal == nullptr || IsWindow(refusal) == FALSE; }, 10000);

  PostMessageA(GetDlgItem(tiles, IDOK), BM_CLICK, 0, 0);
  Check(WaitFor([&] { return IsWindow(tiles) == FALSE; }, 10000), "the tile dialog closes on OK");
  Settle(host.dialog);
  Check(SendMessageA(Item(host, kTileButton), kTileIndexMessage, 0, 0) == kChosenTile,
        "the tile button holds the chosen tile");
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
  for (auto [id, value] : {std::pair(kColourBoxRed, "255"), {kColourBoxGreen, "0"}, {kColourBoxBlue, "0"}})
    TypeText(GetDlgItem(box, id), value);
  PostMessageA(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  Check(WaitFor([&] { return IsWindow(box) == FALSE; }, 10000), "the colour box closes on OK");
  Settle(host.dialog);
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

// Starts the host with its output in log, lets drive() work the dialog once
// its second stage has made and loaded the panels, and ends the host if it
// has not closed by then.
template <typename Drive>
void RunHost(const std::string& hostPath, const std::string& plugin, const std::string& gif, int flags,
             const std::string& log, Drive drive) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE output = CreateFileA(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output;
  std::string command =
      "\"" + hostPath + "\" --plugin \"" + plugin + "\" --out \"" + gif + "\" --flags " + std::to_string(flags);
  Host host;
  BOOL started = CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                                &host.process);
  CloseHandle(output);
  if (!started) return Check(false, "the host starts");
  auto up = [&] { return (host.dialog = FindWindowA(nullptr, "Lettermotion #3")) != nullptr && PanelShown(host.dialog); };
  WaitFor(up, 20000) ? (Settle(host.dialog), drive(host)) : Check(false, "the dialog opens with its panels");
  bool ended = WaitForSingleObject(host.process.hProcess, 0) == WAIT_OBJECT_0;
  if (!ended) TerminateProcess(host.process.hProcess, 99);
  Check(ended, "the host ended within the time limit");
  CloseHandle(host.process.hThread);
  CloseHandle(host.process.hProcess);
}

int RunBuild(const std::string& hostPath, const std::string& plugin, const std::string& outDir) {
  KeepOrRestoreUserSettings(outDir, false);
  std::string gif = outDir + "\\out.gif";
  DeleteFileA(gif.c_str());
  RunHost(hostPath, plugin, gif, 1, outDir + "\\host.log", [&](const Host& host) {
    CheckHostFlags(host, true);
    TypeText(Item(host, kTextEdit), "");
    Check(!Enabled(host, kBuildButton) && Enabled(host, kTestButton), "an empty text disables Build but not Test");
    TypeText(Item(host, kTextEdit), "Wine UI");
    Check(Enabled(host, kBuildButton), "typing a text enables Build");
    ChooseTile(host, outDir);
    for (int effect : {0, kEffectSimple}) {
      ChooseEffect(host, effect);
      Check(IsWindowVisible(Item(host, kSimpleFrames)) == (effect == kEffectSimple), "the chosen effect's panel shows");
    }
    PickFillColour(host);
    TypeText(Item(host, kSimpleFrames), "6");
    Screenshot(outDir, "shot");

    PostMessageA(Item(host, kTestButton), BM_CLICK, 0, 0);
    Check(WaitFor([&] { return FileExists(gif); }, 40000), "Test writes a GIF");
    Settle(host.dialog);
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
  Check(HasSetting(settings, "MainMuralIndex", "2"), "the settings file holds the chosen tile");
  std::string fill = ReadFile(FillPath());  // the solid colour is at offset 20
  Check(fill.size() >= 24 && fill.compare(20, 4, std::string("\xFF\0\0\0", 4)) == 0,
        "the fill swatch saved the picked colour");
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
    TypeText(Item(host, kSimpleFrames), "9");
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
  g_start = GetTickCount();
  std::string mode = argc == 5 ? argv[1] : "";
  if (mode == "build" || mode == "cancel")
    return (mode == "build" ? RunBuild : RunCancel)(argv[2], argv[3], argv[4]) != 0;
  std::fprintf(stderr, "usage: dialog_driver build|cancel HOST.exe PLUGIN.dll OUT_DIR\n");
  return 2;
}
