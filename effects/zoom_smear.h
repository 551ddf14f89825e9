// The smear of Framework: every pixel is the mean of samples along the line
// through the bitmap's centre.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// Framework's per-frame record.
struct FrameworkExtra {
  std::int32_t samples;   // always 8
  std::int32_t strength;  // signed; 0 is no smear
  std::int32_t level;     // 0 to 255: scales shadow, text and outline masks
};
static_assert(sizeof(FrameworkExtra) == 12);

// A new bitmap of the source's size, depth and colour table, or null.
// Sample k of pixel (x, y) lies at (x - cx) * s + cx, likewise for y, with
// s = 1 - k * strength / 10000 (the factor in single precision, the rest in
// double), truncated; a positive strength samples toward the centre, a
// negative one away from it. Sampling stops at the first sample outside the
// bitmap; each channel is the integer mean of the samples taken. Depths 8,
// 24 and 32.
DibHandle ZoomSmear(DibHandle bitmap, const FrameworkExtra& extra);
