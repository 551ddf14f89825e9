// Headless side of the settings seam: the XDG configuration folder, and no
// keyboard, so Shift is never held.
#include <cstdio>
#include <cstdlib>

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
