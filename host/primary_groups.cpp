#include "host/primary_groups.h"

#include <cstdio>
#include <cstring>
#include <ctime>

#include "fills/matrix_group.h"
#include "fills/texture_file.h"
#include "plugin/settings.h"

namespace {

bool Exists(const char* path) {
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

int InstallTileGroup(std::string* error) {
  const char* path = DataFolderPath(kPrimaryMatrixGroup);
  if (path[0] == '\0' || Exists(path)) return 1;
  MatrixTileList list;
  for (int i = 0; i < kPrimaryTileCount; ++i) {
    DibHandle tile = MemAlloc(kMemMoveableZeroed, kPrimaryTiles[i].size);
    void* bytes = tile != nullptr ? MemLock(tile) : nullptr;
    if (bytes == nullptr) {
      MemFree(tile);
      MatrixTileListFree(&list);
      return (*error = "Memory error"), 0;
    }
    std::memcpy(bytes, kPrimaryTiles[i].block, kPrimaryTiles[i].size);
    MemUnlock(tile);
    list.tiles.push_back(tile);
  }
  std::string target = path;
  int written = MatrixGroupWrite(target.c_str(), list, 0, std::time(nullptr));
  MatrixTileListFree(&list);
  if (written == 0) {
    std::remove(target.c_str());
    return (*error = "cannot write the tile group '" + target + "'"), 0;
  }
  return 1;
}

int InstallTextureGroup(std::string* error) {
  const char* path = DataFolderPath(kPrimaryTextureGroup);
  if (path[0] == '\0' || Exists(path)) return 1;
  std::string target = path;
  std::FILE* file = std::fopen(target.c_str(), "w");
  bool written = file != nullptr && std::fputs(kPrimaryTextureGroupText, file) >= 0;
  if (file != nullptr && std::fclose(file) != 0) written = false;
  if (written) return 1;
  std::remove(target.c_str());
  return (*error = "cannot write the texture group '" + target + "'"), 0;
}

}  // namespace

int HostInstallPrimaryGroups(std::string* error) { return InstallTileGroup(error) != 0 && InstallTextureGroup(error) != 0 ? 1 : 0; }
