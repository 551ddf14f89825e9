#include "fills/texture_file.h"

#include <cstdio>
#include <ctime>
#include <string>

#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

constexpr int kOwnerSize = 260;

// Replaces backup with a copy of path; a missing file leaves no backup.
void KeepBackup(const char* path) {
  std::string backup = std::string(path) + ".bak";
  std::remove(backup.c_str());
  std::FILE* source = std::fopen(path, "rb");
  if (source == nullptr) return;
  std::FILE* copy = std::fopen(backup.c_str(), "wb");
  if (copy != nullptr) {
    char buffer[4096];
    std::size_t length;
    while ((length = std::fread(buffer, 1, sizeof buffer, source)) > 0) std::fwrite(buffer, 1, length, copy);
    std::fclose(copy);
  }
  std::fclose(source);
}

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
  PlatformMachineOwner(owner, kOwnerSize, organisation, kOwnerSize);
  KeepBackup(path);
  std::FILE* file = std::fopen(path, "w");
  if (file == nullptr) return 0;
  TextureGroupPrint(file, group, TextureFileStamp{1, dateText, owner, organisation});
  std::fclose(file);
  return 1;
}
