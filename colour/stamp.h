// Putting one palette index wherever an untouched true-colour frame shows
// one exact colour.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// A new bitmap with the size, depth and colour table of image and its pixels,
// except that index stands wherever the low 24 bits of source's pixel equal
// those of colour. Null on failure; image and source are left as they are.
DibHandle StampColourIndex(DibHandle image, DibHandle source, std::int32_t colour, int index);
