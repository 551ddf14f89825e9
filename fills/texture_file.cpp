#include "fills/texture_file.h"

#include <cstdio>
#include <ctime>

#include "fills/group_backup.h"
#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

constexpr int kOwnerSize = 260;

}  // namespace

const char* TextureCurrentGroupPath() { return DataFolderPath(DefaultTextureFileName); }

int TextureFileRead(const char* path, TextureGroup* group) {
  std::FILE* file = std::fopen(path, "r");
  if (file == nullptr) return 0;
  int result = TextureGroupParse(file, group);
  std::fclose(file);
  return result;
}

int TextureFileWrite(const char* path, const TextureGroup& group) {
  std::time_t now = std::time(nullptr);
  char dateText[25];
  SettingsDateText(*std::localtime(&now), dateText);
  char owner[kOwnerSize];
  char organisation[kOwnerSize];
  PlatformMachineOwner(owner, organisation, kOwnerSize);
  GroupBackup(path);
  std::FILE* file = std::fopen(path, "w");
  if (file == nullptr) return 0;
  TextureGroupPrint(file, group, TextureFileStamp{1, dateText, owner, organisation});
  std::fclose(file);
  return 1;
}
