// Spiral's stamp transforms: the turn by any angle, nearest or bilinear,
// the choice between it and the exact quarter turns, and the rectangle that
// a stamp's ink covers.
#pragma once

#include "raster/dib.h"

// Degrees to radians as the spiral has always turned: from 3.14159 / 180.
constexpr double kSpiralRadiansPerDegree = 0.017453277777777776;

// A new bitmap of the same size, depth and colour table, turned by angle
// degrees about its centre (w / 2, h / 2): each target pixel reads the
// source where the inverse turn lands, 0 outside. smooth 0 takes the
// nearest pixel below and right of that place, smooth 1 interpolates the
// four around it (the far edge repeats its own pixel). Indexes at 8 bits,
// each channel at 24 and 32 bits; other depths come back blank. Null on
// failure.
DibHandle SpiralRotate(DibHandle stamp, int angle, int smooth);

// The stamp turned by angle: a copy at 0, the exact quarter turns at 90,
// 180 and 270, SpiralRotate at any other angle (360 and above included).
DibHandle SpiralTurn(DibHandle stamp, int angle, int smooth);

// The smallest rectangle, right and bottom exclusive, that holds the
// non-zero pixels of a bitmap of 8 bits or more, moved by the offset; all 0
// when there are none.
DibRect SpiralBounds(const DibHead* bitmap, int offsetX, int offsetY);

// The smallest rectangle holding both; an empty one adds nothing.
DibRect SpiralBoundsUnion(const DibRect& first, const DibRect& second);
