// Windows side of the settings seam: the shell's roaming application-data
// folder and the keyboard state.
#include <windows.h>
#include <shlobj.h>

#include <cstring>

#include "plugin/platform.h"

const char kPlatformPathSeparator = '\\';

int PlatformUserDataFolder(char* buffer, int size) {
  LPITEMIDLIST folder = nullptr;
  if (SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &folder) != S_OK) return 0;
  char path[MAX_PATH] = {};
  BOOL found = SHGetPathFromIDListA(folder, path);
  CoTaskMemFree(folder);
  if (!found || static_cast<int>(std::strlen(path)) >= size) return 0;
  std::strcpy(buffer, path);
  return 1;
}

bool PlatformShiftHeld() { return GetKeyState(VK_SHIFT) < 0; }
bool PlatformAltHeld() { return GetKeyState(VK_MENU) < 0; }
