// The plug-in's three exported entry points.
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "dialogkit/message_box_win32.h"
#include "plugin/host_check.h"
#include "plugin/host_interface.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/plugin_params.h"
#include "plugin/plugin_state_win32.h"
#include "raster/gdi_command.h"

namespace {

// The process's executable and its version record: a process without a
// record, or one that cannot be read, may load us; a record naming another
// maker or another major version may not.
BOOL HostAllowsLoading() {
  char path[MAX_PATH];
  if (GetModuleFileNameA(nullptr, path, sizeof path) == 0) return TRUE;
  DWORD ignored = 0;
  DWORD size = GetFileVersionInfoSizeA(path, &ignored);
  if (size < 1) return TRUE;
  std::vector<char> record(size);
  if (!GetFileVersionInfoA(path, 0, size, record.data())) return TRUE;

  char* fileVersion = nullptr;
  char* company = nullptr;
  UINT length = 0;
  if (!VerQueryValueA(record.data(), "\\StringFileInfo\\040904E4\\FileVersion", reinterpret_cast<void**>(&fileVersion),
                      &length))
    fileVersion = nullptr;
  if (!VerQueryValueA(record.data(), "\\StringFileInfo\\040904E4\\CompanyName", reinterpret_cast<void**>(&company),
                      &length))
    company = nullptr;
  return HostVersionAccepted(company, fileVersion);
}

// The folder of the DLL itself, ending in a backslash.
void FindProgramFolder() {
  char path[MAX_PATH];
  GetModuleFileNameA(g_module, path, sizeof path);
  char drive[_MAX_DRIVE];
  char directory[_MAX_DIR];
  _splitpath(path, drive, directory, nullptr, nullptr);
  _makepath(g_programFolder, drive, directory, nullptr, nullptr);
  std::size_t length = std::strlen(g_programFolder);
  if (length == 0 || g_programFolder[length - 1] != '\\') std::strcat(g_programFolder, "\\");
}

constexpr const char* kHostTooOld =
    "You need a newer version of Loopwright Studio or Loopwright Express to support this plugin.\n\n"
    "Please visit the Brindle Foundries web page to update your software.";

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  g_module = module;
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  return HostAllowsLoading();
}

extern "C" int PLUGIN16GetPluginParams(PluginParams* params) { return PluginDescribe(params); }

extern "C" int PLUGIN16DoBuild(HWND parent, HostRecord* host) {
  if (!HostInterfaceSupported(host->versionWord)) {
    MessageBoxShow(parent, kHostTooOld);
    UpdateWindow(parent);
    return 0;
  }
  g_fontArial14 = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
  g_fontDialog = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif");
  g_fontArial12 = CreateFontA(12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
  GdiOp drawing{};
  drawing.op = kGdiStart;
  GdiCommand(&drawing);
  FindProgramFolder();
  MainDialogRun(parent, host);

  UpdateWindow(parent);
  DeleteObject(g_fontArial12);
  DeleteObject(g_fontDialog);
  DeleteObject(g_fontArial14);
  g_fontArial12 = g_fontDialog = g_fontArial14 = nullptr;
  drawing.op = kGdiStop;
  GdiCommand(&drawing);
  return 1;
}
