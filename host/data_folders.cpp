#include "host/data_folders.h"

#include "host/primary_groups.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "plugin/settings.h"

namespace {

int MakeOneFolder(const std::string& path) {
#ifdef _WIN32
  return mkdir(path.c_str());
#else
  return mkdir(path.c_str(), 0777);
#endif
}

}  // namespace

int HostMakeFolder(const std::string& path, std::string* error) {
  for (std::size_t end = 1; end <= path.size(); ++end) {
    if (end < path.size() && path[end] != '/' && path[end] != '\\') continue;
    std::string prefix = path.substr(0, end);
    if (prefix.back() == ':' || MakeOneFolder(prefix) == 0 || errno == EEXIST) continue;
    *error = "cannot make the folder '" + prefix + "': " + std::strerror(errno);
    return 0;
  }
  return 1;
}

int HostMakeDataFolders(std::string* error) {
  std::string data = AppDataPath("Lettermotion 3");
  if (data.empty()) {
    *error = "the user's application-data folder cannot be found";
    return 0;
  }
  return HostMakeFolder(data, error) != 0 && HostInstallPrimaryGroups(error) != 0 ? 1 : 0;
}
