// The ripple of Liquid Metal: a radial sine displacement read back along the
// diagonal, with bilinear sampling.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// Liquid Metal's per-frame record; every field is 32 bits.
struct RippleExtra {
  std::int32_t level;      // the outline mask is scaled by it; always 255
  std::int32_t centreX;    // per cent, 100 is the middle of the bitmap
  std::int32_t centreY;
  std::int32_t amplitude;  // hundredths of a pixel
  std::int32_t wavelength; // hundredths of a pixel
  std::int32_t phase;      // hundredths of a radian
  std::int32_t damping;    // hundredths
  std::int32_t fade;       // 1: the ripple dies out toward the far corner
  std::int32_t plain;      // 1: the bitmap is returned unchanged
};
static_assert(sizeof(RippleExtra) == 36);

// A new bitmap of the source's size, depth and colour table, or null. Each
// target pixel reads the source at (x + wave, y + wave), clamped to the
// bitmap, blending the four neighbours in single precision; a neighbour past
// the right or bottom edge counts as 0. Depths 8, 24 and 32.
DibHandle Ripple(DibHandle bitmap, const RippleExtra& extra);
