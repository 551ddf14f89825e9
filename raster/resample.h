// Two-pass filtered resampling. Each output pixel is a weighted sum of input
// pixels under a kernel that is widened when shrinking, so reductions are
// antialiased rather than decimated. Enlargements take the Mitchell cubic,
// reductions the three-lobe Lanczos.
#pragma once

#include "raster/dib.h"

// A kernel: its weight at a distance in source pixels, and its reach.
struct ResampleFilter {
  double (*weight)(double x, double support);
  double support;
};

constexpr int kResampleFilterCount = 16;
constexpr int kResampleMitchell = 12;
constexpr int kResampleLanczos = 13;
extern const ResampleFilter ResampleFilters[kResampleFilterCount];

// New bitmap of width * percentX / 100 + 0.5 by height * percentY / 100 + 0.5
// (truncated), or null. Only depths 8, 24 and 32 are filtered; other depths
// give a blank bitmap of the new size.
DibHandle DibResize(DibHandle source, int percentX, int percentY);
// The worker: a new bitmap of the given size with the source's depth and
// colour table, the kernel widened by blur. Null on failure.
DibHandle DibResample(DibHandle source, int width, int height, double blur);
