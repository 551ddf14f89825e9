// Anaconda's travelling wave: every column of a picture moved up or down by
// one period of a sine along the picture's width.
#pragma once

#include <memory>

#include "raster/dib.h"

// A new table of count offsets holding one period, sin - 0.78, rotated so
// that it starts at count * fraction; null if it cannot be made.
std::unique_ptr<float[]> MakeWaveTable(int count, float fraction);

// Column x of the four-times enlargement moves down by -amplitude * table[x]
// (from count on, the last entry). A new bitmap of the argument's size and
// depth, or null.
DibHandle Wave(DibHandle bitmap, const float* table, int amplitude, int count);
