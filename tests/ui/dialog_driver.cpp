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

std::string SettingsPath() {
  char folder[MAX_PATH] = {};
  SHGetFolderPathA(nullptr, CSIDL_APPDATA, nullptr, 0, folder);
  return std::string(folder) + "\\Brindle Foundries\\LWMOTIO3.INI";
}

// A "key = value" line of the settings file.
bool HasSetting(const std::string& text, const std::string& key, const std::string& value) {
  return text.find("\n" + key + " = " + value + "\r\n") != std::string::npos;
}

struct Host {
  PROCESS_INFORMATION process{};
  HWND dialog = nullptr;
};

bool StartHost(const std::string& host, const std::string& plugin, const std::string& out, const std::string& log,
               Host* started) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE output = CreateFileA(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  std::string command = "\"" + host + "\" --plugin \"" + plugin + "\" --out \"" + out + "\"";
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
void TypeText(const Host& host, int id, const char* text) {
  HWND edit = Item(host, id);
  SendMessageA(edit, EM_SETSEL, 0, -1);
  SendMessageA(edit, WM_CLEAR, 0, 0);
  for (const char* key = text; *key != '\0'; ++key) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*key), 0);
  Settle(host);
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
void KeepUserSettings(const std::string& outDir) {
  std::ofstream(outDir + "\\user.ini", std::ios::binary) << ReadFile(SettingsPath());
}

void RestoreUserSettings(const std::string& outDir) {
  std::string kept = ReadFile(outDir + "\\user.ini");
  if (kept.empty()) DeleteFileA(SettingsPath().c_str());
  else std::ofstream(SettingsPath(), std::ios::binary) << kept;
}

int RunBuild(const std::string& hostPath, const std::string& plugin, const std::string& outDir) {
  KeepUserSettings(outDir);
  std::string gif = outDir + "\\out.gif";
  DeleteFileA(gif.c_str());
  Host host;
  if (!StartHost(hostPath, plugin, gif, outDir + "\\host.log", &host)) {
    Check(false, "the host starts");
    return 1;
  }
  if (FindDialog(&host)) {
    EditTextAndEffect(host);
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
  if (!StartHost(hostPath, plugin, outDir + "\\cancel.gif", outDir + "\\cancel.log", &host)) {
    Check(false, "the host starts");
    return 1;
  }
  if (FindDialog(&host)) {
    Check(SendMessageA(Item(host, kSimpleFrames), WM_GETTEXTLENGTH, 0, 0) > 0, "the panel is loaded");
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
