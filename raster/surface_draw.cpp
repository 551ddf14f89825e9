#include "raster/surface_draw.h"

#include "raster/gdi_command.h"

namespace {

// Lays the non-black pixels of picture onto surface with the picture's
// left top at (left, top).
int StampLit(DibHead* surface, std::intptr_t result, int left, int top) {
  DibOwner picture(reinterpret_cast<DibHandle>(result));
  DibLock lock(picture.get());
  if (lock.head == nullptr) return 0;
  for (int y = 0; y < lock.head->biHeight; ++y) {
    for (int x = 0; x < lock.head->biWidth; ++x) {
      std::int32_t pixel = DibGetPixel(lock.head, x, y);
      if (pixel != 0) DibPutPixel(surface, left + x, top + y, static_cast<std::uint32_t>(pixel));
    }
  }
  return 1;
}

}  // namespace

int SurfaceFillEllipse(DibHead* surface, const DibRect& box, std::uint32_t colour) {
  GdiOp op{};
  op.op = kGdiEllipse;
  op.bounds = box;
  op.shapeFill = colour;
  op.shapeOutline = kGdiNoColour;
  // The picture is 8 larger than the box, the ellipse inset by 4.
  return StampLit(surface, GdiCommand(&op), box.left - 4, box.top - 4);
}

int SurfacePolyline(DibHead* surface, const SurfacePoint* points, int count, int penWidth, std::uint32_t colour) {
  GdiOp op{};
  op.op = kGdiLine;
  op.lineWidth = penWidth;
  op.lineCapKind = 0;  // round ends, so that the segments meet in round joins
  op.lineColour = colour;
  int margin = GdiLineMargin(penWidth);
  for (int i = 1; i < count; ++i) {
    op.lineX1 = points[i - 1].x;
    op.lineY1 = points[i - 1].y;
    op.lineX2 = points[i].x;
    op.lineY2 = points[i].y;
    int left = op.lineX1 < op.lineX2 ? op.lineX1 : op.lineX2;
    int top = op.lineY1 < op.lineY2 ? op.lineY1 : op.lineY2;
    if (StampLit(surface, GdiCommand(&op), left - margin, top - margin) == 0) return 0;
  }
  return 1;
}
