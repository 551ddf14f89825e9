// Tile groups from arbitrary bytes: both readers, and every tile they give
// drawn as a fill, must neither crash nor read out of bounds.
#include <cstdint>

#include "fills/matrix_group.h"
#include "fills/matrix_tile.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void DrawTile(DibHandle tile) {
  MatrixRecord record{};
  record.tile = tile;
  record.rectangle = {0, 0, 37, 29};
  MemFree(MatrixTileRender(&record));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const char* path = FuzzInputFile(data, size);
  MatrixTileList list;
  if (MatrixGroupRead(path, &list) != 0)
    for (DibHandle tile : list.tiles) DrawTile(tile);
  MatrixTileListFree(&list);
  for (int index = 0; index < 3; ++index) {
    DibHandle tile = MatrixGroupLoadTile(path, index);
    DrawTile(tile);
    MemFree(tile);
  }
  return 0;
}
