#include "host/group_paths.h"

#include "plugin/platform.h"
#include "plugin/settings.h"

bool GroupIsInDataFolder(const std::string& group) {
  return group.find('/') == std::string::npos && group.find(kPlatformPathSeparator) == std::string::npos;
}

std::string GroupPath(const std::string& group) {
  return GroupIsInDataFolder(group) ? std::string(DataFolderPath(group.c_str())) : group;
}
