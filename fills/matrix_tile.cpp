#include "fills/matrix_tile.h"

#include <cstring>

#include "fills/matrix_group.h"

namespace {

// Repeats the tile over the picture from (0, 0); pixels that fall outside
// are dropped.
void CoverWithTile(DibHead* picture, const DibHead* tile) {
  int tileWidth = tile->biWidth;
  int tileHeight = tile->biHeight;
  if (tileWidth < 1 || tileHeight < 1) return;
  for (int top = 0; top < picture->biHeight; top += tileHeight)
    for (int left = 0; left < picture->biWidth; left += tileWidth)
      DibRegionCopy(picture, left, top, tile, 0, 0, tileWidth, tileHeight);
}

}  // namespace

DibHandle MatrixBuiltinTile() {
  DibHandle block = MemAlloc(kMemMoveableZeroed, kBuiltinTileBlockSize);
  void* bytes = block != nullptr ? MemLock(block) : nullptr;
  if (bytes == nullptr) return MemFree(block);
  std::memcpy(bytes, kBuiltinTileBlock, kBuiltinTileBlockSize);
  MemUnlock(block);
  return block;
}

DibHandle MatrixTileRender(const MatrixRecord* record) {
  const DibRect& r = record->rectangle;
  DibOwner picture(DibNew(r.right - r.left, r.bottom - r.top, nullptr, 24));
  DibLock target(picture.get());
  if (target.head == nullptr) return nullptr;
  DibLock own(record->tile);
  if (own.head != nullptr) {
    CoverWithTile(target.head, own.head);
  } else {
    CoverWithTile(target.head, reinterpret_cast<const DibHead*>(kBuiltinTileBlock));
  }
  return picture.release();
}

DibHandle MatrixTileLoad(const char* path, int index) { return MatrixGroupLoadTile(path, index); }

int MatrixTileDefault(MatrixRecord* record) {
  std::memset(record, 0, sizeof *record);
  record->tile = MatrixBuiltinTile();
  return record->tile != nullptr ? 1 : 0;
}
