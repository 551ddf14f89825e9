#include "host/group_paths.h"

#include <cstdio>

#include "plugin/platform.h"
#include "plugin/settings.h"

bool GroupIsInDataFolder(const std::string& group) {
  return group.find('/') == std::string::npos && group.find(kPlatformPathSeparator) == std::string::npos;
}

std::string GroupPath(const std::string& group) {
  return GroupIsInDataFolder(group) ? std::string(DataFolderPath(group.c_str())) : group;
}

bool GroupFileExists(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file != nullptr) std::fclose(file);
  return file != nullptr;
}

int GroupReadTiles(const std::string& path, MatrixTileList* list, std::string* error) {
  if (!GroupFileExists(path)) return (*error = "no tile group at '" + path + "'"), 0;
  if (MatrixGroupRead(path.c_str(), list) == 0) return (*error = "'" + path + "' is not a tile group"), 0;
  return 1;
}
