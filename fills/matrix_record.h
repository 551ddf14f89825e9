// A tile fill's record: which tile of which group, the tile itself once
// loaded, and the rectangle to cover. Packed; the Material file holds the same
// fields with the tile handle in 4 bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr int kMatrixPathSize = 261;

#pragma pack(push, 1)
struct MatrixRecord {
  char path[kMatrixPathSize];  // full path of the group file
  std::int32_t index;          // tile number in the group
  DibHandle tile;              // owned by the record, or null
  DibRect rectangle;           // target
  std::uint32_t flags;         // bit 1: the tile button is held down
  std::uint8_t reserved[28];
};
#pragma pack(pop)

static_assert(offsetof(MatrixRecord, index) == 261 && offsetof(MatrixRecord, tile) == 265);
static_assert(offsetof(MatrixRecord, rectangle) == 273 && offsetof(MatrixRecord, flags) == 289);
static_assert(offsetof(MatrixRecord, reserved) == 293 && sizeof(MatrixRecord) == 321);
