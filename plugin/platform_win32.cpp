// Windows side of the settings seam: the shell's roaming application-data
// folder and the keyboard state.
#include <windows.h>
#include <shlobj.h>

#include <cstdio>
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

namespace {

// A string value of the Windows NT version key, or "" when there is none.
void VersionKeyValue(const char* name, char* buffer, int size) {
  buffer[0] = '\0';
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0, KEY_READ, &key) !=
      ERROR_SUCCESS)
    return;
  DWORD type = 0;
  DWORD length = static_cast<DWORD>(size - 1);
  if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &length) != ERROR_SUCCESS ||
      type != REG_SZ)
    length = 0;
  buffer[length < static_cast<DWORD>(size) ? length : size - 1] = '\0';
  RegCloseKey(key);
}

}  // namespace

void PlatformMachineOwner(char* owner, char* organisation, int size) {
  VersionKeyValue("RegisteredOwner", owner, size);
  if (owner[0] == '\0') std::snprintf(owner, size, "%s", "Unknown user");
  VersionKeyValue("RegisteredOrganization", organisation, size);
}
