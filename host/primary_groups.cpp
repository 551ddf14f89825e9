#include "host/primary_groups.h"

#include <cstdio>
#include <cstring>
#include <ctime>

#include "fills/matrix_group.h"
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

}  // namespace

int HostInstallPrimaryGroups(std::string* error) { return InstallTileGroup(error); }
