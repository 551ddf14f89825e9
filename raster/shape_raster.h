// Our own rasteriser of the drawing service's shapes, for the engine that has
// no GDI+ behind it: filled and outlined ellipses and wide lines on a 24-bit
// picture. A pixel is sampled at its centre, or on a 4 by 4 grid when
// smoothing; a covered sample takes the colour over what is there.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// Line ends, by the values of the GDI+ LineCap they stand for.
constexpr int kShapeCapFlat = 0;
constexpr int kShapeCapSquare = 1;
constexpr int kShapeCapRound = 2;

// The ellipse that fills the box at (left, top) of width by height.
void ShapeFillEllipse(DibHead* picture, int left, int top, int width, int height, std::uint32_t colour,
                      int antialias);
// The ellipse's outline, a pen of penWidth centred on it.
void ShapeStrokeEllipse(DibHead* picture, int left, int top, int width, int height, int penWidth,
                        std::uint32_t colour, int antialias);
// A line of penWidth from (x1, y1) to (x2, y2) with the given ends; any cap
// value other than square and round is flat.
void ShapeStrokeLine(DibHead* picture, int x1, int y1, int x2, int y2, int penWidth, int startCap, int endCap,
                     std::uint32_t colour, int antialias);
