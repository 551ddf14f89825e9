// The two-colour band patterns of Stripes, as plain functions over bitmaps.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// A new 24-bit bitmap filled with colour (red low), or null.
DibHandle SolidBitmap(int width, int height, std::uint32_t colour);

// Band patterns: each pixel comes from fill1 or fill2.
enum StripeType {
  kStripesVertical = 0,
  kStripesDiagonalBack,
  kStripesDiagonalForward,
  kStripesChevron,
  kStripesSplitChevron,
  kStripesReverseChevron,
  kStripesReverseSplitChevron,
};

// A new bitmap of fill1's size: the pattern of type (any type outside 1 to 6
// draws as vertical bands) with bands band pixels wide, wrapped sideways by
// shift, to the right for direction 1 and to the left otherwise. Null on
// failure.
DibHandle StripePattern(DibHandle fill1, DibHandle fill2, int shift, int band, int type, int direction);
