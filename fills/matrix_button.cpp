#include "fills/matrix_button.h"

#include <cstdio>

#include "fills/matrix_tile.h"
#include "plugin/settings.h"

MemHandle MatrixButtonSetUp(int index) {
  MatrixRecord record;
  if (MatrixTileDefault(&record) == 0) return nullptr;
  MemFree(record.tile);
  record.index = index;
  std::snprintf(record.path, sizeof record.path, "%s", DataFolderPath(MatrixLibrary));
  record.tile = MatrixTileLoad(record.path, index);
  MemHandle block = MemAlloc(kMemMoveableZeroed, sizeof record);
  auto* stored = static_cast<MatrixRecord*>(block != nullptr ? MemLock(block) : nullptr);
  if (stored == nullptr) {
    MemFree(record.tile);
    return MemFree(block);
  }
  *stored = record;
  MemUnlock(block);
  return block;
}

void MatrixButtonRelease(MemHandle block) {
  if (auto* record = static_cast<MatrixRecord*>(block != nullptr ? MemLock(block) : nullptr)) {
    MemFree(record->tile);
    MemUnlock(block);
  }
  MemFree(block);
}
