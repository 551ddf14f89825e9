// Headless side of the settings seam: the XDG configuration folder, no
// keyboard, so Shift is never held, and the account's full name as owner.
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

// The full name of the account (the first field of its comment), else its
// login name; the organisation from $ORGANIZATION, as news readers have it.
void PlatformMachineOwner(char* owner, int ownerSize, char* organisation, int organisationSize) {
  const passwd* account = getpwuid(getuid());
  const char* name = "Unknown user";
  int nameLength = static_cast<int>(std::strlen(name));
  if (account != nullptr && account->pw_gecos != nullptr && account->pw_gecos[0] != '\0' &&
      account->pw_gecos[0] != ',') {
    name = account->pw_gecos;
    nameLength = static_cast<int>(std::strcspn(name, ","));
  } else if (account != nullptr && account->pw_name != nullptr && account->pw_name[0] != '\0') {
    name = account->pw_name;
    nameLength = static_cast<int>(std::strlen(name));
  }
  std::snprintf(owner, ownerSize, "%.*s", nameLength, name);
  const char* company = std::getenv("ORGANIZATION");
  std::snprintf(organisation, organisationSize, "%s", company != nullptr ? company : "");
}
