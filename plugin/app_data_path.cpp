// Paths in the maker's folder of the user's application data.
#include <cstdio>
#include <cstring>

#include "plugin/platform.h"
#include "plugin/settings.h"

const char* AppDataPath(const char* fileName) {
  static char path[kAppDataPathSize];
  char folder[kAppDataPathSize];
  path[0] = '\0';
  if (!PlatformUserDataFolder(folder, sizeof folder)) return path;
  size_t folderLength = std::strlen(folder);
  bool hasSeparator = folderLength > 0 && folder[folderLength - 1] == kPlatformPathSeparator;
  const char separator[2] = {kPlatformPathSeparator, '\0'};
  int length = std::snprintf(path, sizeof path, "%s%sBrindle Foundries%s%s", folder, hasSeparator ? "" : separator,
                             separator, fileName);
  if (length < 0 || length >= static_cast<int>(sizeof path)) {
    path[0] = '\0';  // a cut path would name some other file
    return path;
  }
  for (char* tail = path + length - std::strlen(fileName); *tail != '\0'; ++tail) {
    if (*tail == '\\') *tail = kPlatformPathSeparator;
  }
  return path;
}

const char* DataFolderPath(const char* name) {
  static char path[kAppDataPathSize];
  char inFolder[kAppDataPathSize];
  path[0] = '\0';
  int length = std::snprintf(inFolder, sizeof inFolder, "Lettermotion 3\\%s", name);
  if (length < 0 || length >= static_cast<int>(sizeof inFolder)) return path;
  std::snprintf(path, sizeof path, "%s", AppDataPath(inFolder));
  return path;
}
