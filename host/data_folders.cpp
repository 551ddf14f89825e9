#include "host/data_folders.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "fills/texture_file.h"
#include "host/primary_texture_group.h"
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
  if (!HostMakeFolder(data, error)) return 0;
  return HostInstallPrimaryGroups(error);
}

int HostInstallPrimaryGroups(std::string* error) {
  std::string path = DataFolderPath(kPrimaryTextureGroup);
  std::FILE* present = std::fopen(path.c_str(), "r");
  if (present != nullptr) {
    std::fclose(present);
    return 1;
  }
  std::FILE* file = std::fopen(path.c_str(), "w");
  bool written = file != nullptr && std::fputs(kPrimaryTextureGroupText, file) >= 0;
  if (file != nullptr && std::fclose(file) != 0) written = false;
  if (written) return 1;
  *error = "cannot write the primary texture group '" + path + "'";
  return 0;
}
