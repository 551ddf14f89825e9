// The scatter of Chaos: every pixel takes the pixel of a random neighbour,
// from a stream restarted at each call.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// Chaos's per-frame record.
struct ChaosExtra {
  std::int32_t outlineLevel;  // 0 to 255, scales the outline mask
  std::int32_t scatter;       // the reach in pixels; 0 is none
};
static_assert(sizeof(ChaosExtra) == 8);

// A new bitmap of the source's size, depth and colour table, or null. The
// random stream restarts from the same seed at every call, so pictures of
// one size move alike and one amplitude always gives the same field. The
// pixel at (x, y) comes from (x + dx, y + dy), each offset rand() % scatter
// - scatter / 2, x's first; a source outside the bitmap keeps the pixel
// where it is. Depths 8, 24 and 32.
DibHandle PixelScatter(DibHandle bitmap, const ChaosExtra& extra);
