// Runs in both builds: natively against our rasteriser, under Wine against
// GDI itself, so the two must agree on which boundary pixels are filled.
#include <gtest/gtest.h>

#include "raster/gdi_command.h"

namespace {

constexpr std::uint32_t kFill = 0x3366CC;

// The covered pixels of a 12 by 12 canvas after draw, one string per row.
template <typename Draw>
std::vector<std::string> Covered(Draw draw) {
  GdiCanvas* canvas = GdiCanvasOpen(12, 12);
  EXPECT_NE(canvas, nullptr);
  EXPECT_EQ(draw(canvas), 1);
  DibOwner dib(GdiCanvasClose(canvas));
  DibLock lock(dib.get());
  std::vector<std::string> rows;
  for (int y = 0; y < 12; ++y) {
    std::string row;
    for (int x = 0; x < 12; ++x) row += DibGetPixel(lock.head, x, y) == static_cast<std::int32_t>(kFill) ? '#' : '.';
    rows.push_back(row);
  }
  return rows;
}

TEST(GdiCanvas, ShapesCoverWhatGdiCovers) {
  // A rectangle with no pen leaves out its right column and bottom row; a
  // polygon on the same corners keeps them.
  std::vector<std::string> box = Covered([](GdiCanvas* c) { return GdiCanvasRectangle(c, {1, 1, 5, 4}, kFill); });
  EXPECT_EQ(box[0], "............");
  EXPECT_EQ(box[1], ".###........");
  EXPECT_EQ(box[2], ".###........");
  EXPECT_EQ(box[3], "............");
  const std::int32_t square[] = {1, 1, 5, 1, 5, 4, 1, 4};
  std::vector<std::string> polygon = Covered([&](GdiCanvas* c) { return GdiCanvasPolygon(c, square, 4, kFill); });
  EXPECT_EQ(polygon[1], ".####.......");
  EXPECT_EQ(polygon[3], ".####.......");
  EXPECT_EQ(polygon[4], "............");
  const std::int32_t triangle[] = {0, 0, 8, 0, 0, 8};
  std::vector<std::string> corner = Covered([&](GdiCanvas* c) { return GdiCanvasPolygon(c, triangle, 3, kFill); });
  EXPECT_EQ(corner[0], "########....");
  EXPECT_EQ(corner[6], "##..........");
  EXPECT_EQ(corner[7], "#...........");
  EXPECT_EQ(corner[8], "............");
  std::vector<std::string> ellipse = Covered([](GdiCanvas* c) { return GdiCanvasEllipse(c, {0, 0, 12, 12}, kFill); });
  EXPECT_EQ(ellipse[0], "....####....");
  EXPECT_EQ(ellipse[2], ".##########.");
  EXPECT_EQ(ellipse[5], "############");
  EXPECT_EQ(ellipse[11], "....####....");
}

// A wide pen with round ends reaches past the end points; flat ends stop
// at them.
TEST(GdiCanvas, LineEndsFollowTheirCaps) {
  std::vector<std::string> round = Covered([](GdiCanvas* c) { return GdiCanvasLine(c, 3, 6, 8, 6, 4, kFill); });
  EXPECT_EQ(round[6].substr(1, 9), "#########");
  EXPECT_EQ(round[2], "............");
  EXPECT_EQ(round[10], "............");
  std::vector<std::string> flat = Covered([](GdiCanvas* c) {
    GdiOp op{};
    op.op = kGdiLine;
    op.canvas = c;
    op.lineX1 = 3;
    op.lineY1 = 6;
    op.lineX2 = 8;
    op.lineY2 = 6;
    op.lineWidth = 4;
    op.lineCapKind = 1;
    op.lineColour = kFill;
    return static_cast<int>(GdiCommand(&op));
  });
  EXPECT_EQ(flat[6][1], '.');
  EXPECT_EQ(flat[6][5], '#');
  EXPECT_EQ(flat[6][10], '.');
}

TEST(GdiCanvas, ShapesNeedACanvas) {
  GdiOp op{};
  op.op = kGdiPolygon;
  EXPECT_EQ(GdiCommand(&op), 0);
  op.op = kGdiLine;
  EXPECT_EQ(GdiCommand(&op), 0);
  EXPECT_EQ(GdiCanvasOpen(0, 5), nullptr);
}

}  // namespace
