#include <gtest/gtest.h>

#include <vector>

#include "effects/pixel_scatter.h"
#include "raster/crt_random.h"
#include "tests/picture_test_support.h"
#include "tests/text_test_support.h"

namespace {

// Each pixel of a 16 by 16 picture names its own place, x + 16 y.
std::uint32_t Place(int x, int y) { return static_cast<std::uint32_t>(x + 16 * y); }

// The stream restarts at every call: a mask and a picture of one size move
// alike, and a draw from the stream in between changes nothing. Each pixel
// takes its offsets x first and keeps its place when the source lies
// outside. A reach of 0 or 1 moves nothing, and a flat picture stays flat
// (so a solid fill may skip the scatter).
TEST(PixelScatter, EveryCallMakesTheSameField) {
  const int reach = 9;
  DibOwner mask(PictureOf(16, 16, 8, Place));
  DibOwner picture(PictureOf(16, 16, 24, Place));
  Pixels movedMask = TakePixels(PixelScatter(mask.get(), {255, reach}));
  CrtRand();
  Pixels movedPicture = TakePixels(PixelScatter(picture.get(), {255, reach}));
  ASSERT_EQ(movedMask.values, movedPicture.values);
  for (int still : {0, 1}) {
    DibOwner unmoved(PixelScatter(picture.get(), {255, still}));
    EXPECT_TRUE(SameBitmap(unmoved.get(), picture.get())) << still;
  }
  DibOwner flat(PictureOf(16, 16, 24, [](int, int) { return 0x336699u; }));
  DibOwner stillFlat(PixelScatter(flat.get(), {0, 64}));
  EXPECT_TRUE(SameBitmap(stillFlat.get(), flat.get()));

  // The field as the stream gives it: two offsets a pixel, row by row.
  CrtSrand(13204);
  std::vector<int> offsets(2 * 16 * 16);
  for (int& offset : offsets) offset = CrtRand() % reach - reach / 2;
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      int sx = x + offsets[2 * (16 * y + x)];
      int sy = y + offsets[2 * (16 * y + x) + 1];
      bool inside = sx >= 0 && sy >= 0 && sx < 16 && sy < 16;
      ASSERT_EQ(movedMask.At(x, y), static_cast<std::int32_t>(inside ? Place(sx, sy) : Place(x, y))) << x << "," << y;
    }
  }
}

}  // namespace
