// Filled shapes drawn with no outline, by the rules the platform's GDI keeps
// for a null pen: a rectangle covers its box less the right column and the
// bottom row; an ellipse fills its box between a rim traced as GDI traces
// it; a polygon, filled in the alternate (even-odd)
// mode, covers a pixel when the pixel's corner point lies inside, its left
// and top edges included and its right and bottom ones not. Only 24-bit
// targets are drawn on; anything outside the bitmap is clipped.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// points holds count pairs of x and y. Each gives 1, or 0 when its working
// memory could not be had.
int ShapeFillPolygon(DibHead* target, const std::int32_t* points, int count, std::uint32_t colour);
int ShapeFillRectangle(DibHead* target, const DibRect& box, std::uint32_t colour);
int ShapeFillEllipse(DibHead* target, const DibRect& box, std::uint32_t colour);
