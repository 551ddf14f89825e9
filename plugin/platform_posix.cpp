// Headless side of the settings seam: the XDG configuration folder, no
// keyboard, so Shift is never held, and the user's full name as the owner.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <pwd.h>
#include <unistd.h>

#include "plugin/platform.h"

const char kPlatformPathSeparator = '/';

int PlatformUserDataFolder(char* buffer, int size) {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  int length;
  if (config != nullptr && config[0] != '\0') {
    length = std::snprintf(buffer, size, "%s", config);
  } else {
    const char* home = std::getenv("HOME");
    if (home == nullptr || home[0] == '\0') return 0;
    length = std::snprintf(buffer, size, "%s/.config", home);
  }
  return length > 0 && length < size;
}

bool PlatformShiftHeld() { return false; }
bool PlatformAltHeld() { return false; }

// The first field of the account's full name, or the login name.
void PlatformMachineOwner(char* owner, char* organisation, int size) {
  const passwd* account = getpwuid(getuid());
  const char* name = account != nullptr ? account->pw_gecos : nullptr;
  if (name == nullptr || name[0] == '\0' || name[0] == ',') name = account != nullptr ? account->pw_name : nullptr;
  std::snprintf(owner, size, "%s", name != nullptr && name[0] != '\0' ? name : "Unknown user");
  if (char* comma = std::strchr(owner, ',')) *comma = '\0';
  organisation[0] = '\0';
}
