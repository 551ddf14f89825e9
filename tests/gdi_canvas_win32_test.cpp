// The plug-in's canvas is GDI itself, the headless one our rasteriser: here
// both draw the same random shapes. Polygons must cover exactly the same
// pixels. Ellipses, given their corners in order as every caller gives them,
// may part at the end of a rim row now and then: a few pixels, no more.
#include <gtest/gtest.h>

#include <algorithm>

#include "raster/crt_random.h"
#include "raster/gdi_command.h"
#include "raster/shape_fill.h"

namespace {

constexpr int kSize = 64;

// Pixels where GDI's picture and ours differ after draw(canvas, ours).
template <typename Draw>
int Differences(Draw draw) {
  GdiCanvas* canvas = GdiCanvasOpen(kSize, kSize);
  DibOwner ours(DibNew(kSize, kSize, nullptr, 24));
  DibLock oursLock(ours.get());
  draw(canvas, oursLock.head);
  DibOwner gdi(GdiCanvasClose(canvas));
  DibLock gdiLock(gdi.get());
  int count = 0;
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) count += DibGetPixel(gdiLock.head, x, y) != DibGetPixel(oursLock.head, x, y);
  return count;
}

TEST(GdiCanvasAgainstOurRasteriser, SameCoverage) {
  CrtSrand(7);
  for (int round = 0; round < 20; ++round) {
    std::int32_t points[8];
    for (std::int32_t& value : points) value = CrtRand() % (kSize + 20) - 10;
    EXPECT_EQ(Differences([&](GdiCanvas* canvas, DibHead* ours) {
                GdiCanvasPolygon(canvas, points, 4, 0xFFFFFF);
                ShapeFillPolygon(ours, points, 4, 0xFFFFFF);
              }),
              0)
        << round;
    const DibRect box{std::min(points[0], points[2]), std::min(points[1], points[3]), std::max(points[0], points[2]),
                      std::max(points[1], points[3])};
    EXPECT_LE(Differences([&](GdiCanvas* canvas, DibHead* ours) {
                GdiCanvasEllipse(canvas, box, 0xFFFFFF);
                ShapeFillEllipse(ours, box, 0xFFFFFF);
              }),
              4)
        << box.left << "," << box.top << "," << box.right << "," << box.bottom;
  }
}

}  // namespace
