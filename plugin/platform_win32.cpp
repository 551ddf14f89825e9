// Windows side of the settings seam: the shell's roaming application-data
// folder, the keyboard state and the registered owner.
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

// One text value of the system's version key, or fallback.
void ReadVersionText(const char* valueName, const char* fallback, char* buffer, int size) {
  std::snprintf(buffer, size, "%s", fallback);
  HKEY key;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0, KEY_READ, &key) !=
      ERROR_SUCCESS)
    return;
  char text[MAX_PATH] = {};
  DWORD length = sizeof text - 1;
  DWORD type = 0;
  if (RegQueryValueExA(key, valueName, nullptr, &type, reinterpret_cast<BYTE*>(text), &length) == ERROR_SUCCESS &&
      type == REG_SZ)
    std::snprintf(buffer, size, "%s", text);
  RegCloseKey(key);
}

}  // namespace

void PlatformMachineOwner(char* owner, int ownerSize, char* organisation, int organisationSize) {
  ReadVersionText("RegisteredOwner", "Unknown user", owner, ownerSize);
  ReadVersionText("RegisteredOrganization", "", organisation, organisationSize);
}
