// Tile fills: one tile of a group, repeated from the top left corner to
// cover a rectangle, never scaled; and the built-in tile that stands in when
// a group or a tile cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fills/matrix_record.h"

constexpr int kBuiltinTileSize = 90;

// The built-in tile: a packed 24-bit bitmap block (head and pixels) of 90 by
// 90, made at build time.
extern const std::uint8_t kBuiltinTileBlock[];
extern const std::size_t kBuiltinTileBlockSize;

// A new 24-bit bitmap of the size of the record's rectangle covered with its
// tile, or with the built-in tile when it has none. Null on failure.
DibHandle MatrixTileRender(const MatrixRecord* record);
// A new block holding tile number index of the group file at path, or null
// when the file, the tile or a read fails.
DibHandle MatrixTileLoad(const char* path, int index);
// Clears the record and gives it a copy of the built-in tile. 1, or 0.
int MatrixTileDefault(MatrixRecord* record);
// A new block holding a copy of the built-in tile, or null.
DibHandle MatrixBuiltinTile();
