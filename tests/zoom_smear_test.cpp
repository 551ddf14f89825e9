// The smear against a plain reference that follows the rule one pixel at a
// time, byte for byte, and by hand on a line.
#include <gtest/gtest.h>

#include "effects/zoom_smear.h"
#include "tests/picture_test_support.h"
#include "tests/text_test_support.h"

namespace {

DibHandle ReferenceSmear(DibHandle bitmap, const FrameworkExtra& e) {
  DibLock source(bitmap);
  const DibHead* in = source.head;
  int w = in->biWidth, h = in->biHeight, cx = w / 2, cy = h / 2;
  DibHandle out = DibNewLike(in, w, h);
  DibLock target(out);
  for (int y = 0; y < h; y++) {
    for (int x = 0; x < w; x++) {
      int sums[4] = {0, 0, 0, 0}, taken = 0;
      for (int k = 0; k < e.samples; k++) {
        int sx = x, sy = y;
        if (k > 0) {
          float f = (float)k * (float)(e.strength / 100.0);
          double s = 1.0 - f / 100.0;
          sx = (int)((double)(float)(x - cx) * s + cx);
          sy = (int)((double)(float)(y - cy) * s + cy);
        }
        std::int32_t pixel = DibGetPixel(in, sx, sy);
        if (pixel == -1 && (sx < 0 || sy < 0 || sx >= w || sy >= h)) break;
        for (int c = 0; c < 4; c++) sums[c] += pixel >> (8 * c) & 255;
        taken++;
      }
      std::uint32_t value = 0;
      for (int c = 0; c < 4; c++) value |= (std::uint32_t)(sums[c] / taken) << (8 * c);
      DibPutPixel(target.head, x, y, value);
    }
  }
  return out;
}

TEST(ZoomSmear, MatchesThePlainReferenceByteForByte) {
  for (int strength : {240, 700, 100, -100, -700, 33}) {
    for (int depth : {8, 24}) {
      // 260 wide: at 240 some samples land on a whole pixel in double
      // precision but just short of it through the single-precision factor.
      for (auto [w, h] : {std::pair{45, 27}, std::pair{60, 30}, std::pair{260, 9}}) {
        auto busy = [depth](int x, int y) { return Busy(x, y) & (depth == 8 ? 255 : ~0u); };
        DibOwner picture(PictureOf(w, h, depth, busy));
        FrameworkExtra extra{8, strength, 255};
        DibOwner expected(ReferenceSmear(picture.get(), extra));
        DibOwner smeared(ZoomSmear(picture.get(), extra));
        ASSERT_NE(smeared, nullptr);
        EXPECT_TRUE(SameBitmap(smeared.get(), expected.get())) << strength << " " << depth << " " << w;
      }
    }
  }
}

// Smeared away from the centre at -700 on a line of 40 whose pixel x is
// 4 x, pixel 36 stops at its fifth sample, which falls at 40. At strength 0
// nothing moves, and a flat picture stays flat at any strength (so a solid
// fill may skip the smear).
TEST(ZoomSmear, StopsAtTheFirstSampleOutside) {
  DibOwner line(PictureOf(40, 1, 8, [](int x, int) { return static_cast<std::uint32_t>(4 * x); }));
  EXPECT_EQ(TakePixels(ZoomSmear(line.get(), {8, -700, 255})).At(36, 0), (144 + 148 + 152 + 156) / 4);
  DibOwner unmoved(ZoomSmear(line.get(), {8, 0, 255}));
  EXPECT_TRUE(SameBitmap(unmoved.get(), line.get()));
  DibOwner flat(PictureOf(45, 27, 24, [](int, int) { return 0x336699u; }));
  DibOwner stillFlat(ZoomSmear(flat.get(), {8, 700, 255}));
  EXPECT_TRUE(SameBitmap(stillFlat.get(), flat.get()));
}

}  // namespace
