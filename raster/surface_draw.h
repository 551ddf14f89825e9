// Shapes drawn onto a working surface through the drawing service: each
// shape comes back as a picture on black, and its lit pixels replace the
// surface's where the picture lies. The drawing is unsmoothed, so a lit
// pixel holds exactly the shape's colour; a colour of 0 draws nothing.
#pragma once

#include <cstdint>

#include "raster/dib.h"

struct SurfacePoint {
  std::int32_t x;
  std::int32_t y;
};
static_assert(sizeof(SurfacePoint) == 8);

// The ellipse filling box, with no pen. 1, or 0 if the picture could not be had.
int SurfaceFillEllipse(DibHead* surface, const DibRect& box, std::uint32_t colour);
// The polyline through count points with a solid pen of penWidth and round
// ends and joins. 1, or 0 if a picture could not be had.
int SurfacePolyline(DibHead* surface, const SurfacePoint* points, int count, int penWidth, std::uint32_t colour);
