// Wide lines drawn unsmoothed as a solid GDI pen draws them: a pixel is
// covered when its centre lies within half the pen of the segment. Round
// ends add half a pen's disc at each end point; flat ends stop there. Only
// 24-bit targets are drawn on; anything outside the bitmap is clipped.
#pragma once

#include <cstdint>

#include "raster/dib.h"

void ShapeStrokeLine(DibHead* target, int x1, int y1, int x2, int y2, int penWidth, int roundEnds,
                     std::uint32_t colour);
