#include <gtest/gtest.h>

#include "raster/gdi_command.h"
#include "raster/surface_draw.h"
#include "tests/text_test_support.h"

namespace {

Pixels Shape(GdiOp op) { return TakePixels(reinterpret_cast<DibHandle>(GdiCommand(&op))); }

// An unsmoothed ellipse picture is its box grown by 8, holding only black and
// the fill, the ellipse inset by 4 and touching its box's four sides.
TEST(ShapePicture, EllipseFillsItsBoxInsetByFour) {
  GdiOp op{};
  op.op = kGdiEllipse;
  op.bounds = {10, 20, 30, 30};
  op.shapeFill = 0x123456;
  op.shapeOutline = kGdiNoColour;
  Pixels picture = Shape(op);
  ASSERT_EQ(std::tuple(picture.width, picture.height), std::tuple(28, 18));
  for (std::int32_t value : picture.values) ASSERT_TRUE(value == 0 || value == 0x123456);
  EXPECT_EQ(picture.At(14, 4), 0x123456);
  EXPECT_EQ(picture.At(4, 9), 0x123456);
  EXPECT_EQ(picture.At(23, 9), 0x123456);
  EXPECT_EQ(picture.At(14, 3), 0);
  EXPECT_EQ(picture.At(4, 4), 0);  // the box's corner is outside the ellipse
}

// A line picture is the box of its ends grown by the margin; round ends reach
// half a pen past the end points, flat ones stop there.
TEST(ShapePicture, LineEndsFollowTheirCaps) {
  GdiOp op{};
  op.op = kGdiLine;
  op.lineX1 = 0;
  op.lineY1 = 0;
  op.lineX2 = 20;
  op.lineY2 = 0;
  op.lineWidth = 6;
  op.lineColour = 0xFFFFFF;
  int margin = GdiLineMargin(6);
  EXPECT_EQ(2 * margin, (6 / 2 + 6) * 2 + 8);
  Pixels round = Shape(op);
  ASSERT_EQ(std::tuple(round.width, round.height), std::tuple(20 + 2 * margin, 2 * margin));
  EXPECT_EQ(round.At(margin - 2, margin), 0xFFFFFF);
  EXPECT_EQ(round.At(margin + 21, margin), 0xFFFFFF);
  EXPECT_EQ(round.At(margin + 10, margin - 4), 0);
  op.lineCapKind = 1;
  Pixels flat = Shape(op);
  EXPECT_EQ(flat.At(margin - 2, margin), 0);
  EXPECT_EQ(flat.At(margin + 10, margin + 2), 0xFFFFFF);
}

// Surface drawing lays only the lit pixels, so later shapes cover earlier
// ones and leave the rest as it was.
TEST(SurfaceDraw, PolylineLaysItsPenOverWhatIsThere) {
  DibOwner surface(DibNew(40, 20, nullptr, 24));
  DibLock lock(surface.get());
  ASSERT_NE(lock.head, nullptr);
  DibPutPixel(lock.head, 0, 0, 0x0000FF);
  const SurfacePoint points[] = {{5, 10}, {20, 10}, {35, 4}};
  ASSERT_EQ(SurfacePolyline(lock.head, points, 3, 4, 0x808080), 1);
  EXPECT_EQ(DibGetPixel(lock.head, 0, 0), 0x0000FF);
  EXPECT_EQ(DibGetPixel(lock.head, 5, 10), 0x808080);
  EXPECT_EQ(DibGetPixel(lock.head, 20, 9), 0x808080);
  EXPECT_EQ(DibGetPixel(lock.head, 35, 4), 0x808080);
  EXPECT_EQ(DibGetPixel(lock.head, 12, 2), 0);
}

}  // namespace
