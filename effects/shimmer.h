// Mirage's heat shimmer: every row of a picture pushed sideways by a sum of
// three sine waves.
#pragma once

#include <memory>

#include "raster/dib.h"

// A new table of count offsets, zero for strength 0; null if it cannot be
// made. fraction (0 to 1) slides the three harmonics against one another.
std::unique_ptr<float[]> MakeMirageTable(int count, float fraction, float strength);

// Row y of the four-times enlargement moves right by amplitude * table[y]
// (from count on, the last entry). A new bitmap of the argument's size and
// depth, or null.
DibHandle Shimmer(DibHandle bitmap, const float* table, int amplitude, int count);
