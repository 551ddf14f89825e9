// Filled shapes drawn with no outline, by the rules the platform's GDI keeps
// for a null pen: a pixel is covered when its centre lies inside the shape;
// a rectangle or an ellipse covers its box less the right column and the
// bottom row; a polygon is filled in the alternate (even-odd) mode. Only
// 24-bit targets are drawn on; anything outside the bitmap is clipped.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// points holds count pairs of x and y.
void ShapeFillPolygon(DibHead* target, const std::int32_t* points, int count, std::uint32_t colour);
void ShapeFillRectangle(DibHead* target, const DibRect& box, std::uint32_t colour);
void ShapeFillEllipse(DibHead* target, const DibRect& box, std::uint32_t colour);
