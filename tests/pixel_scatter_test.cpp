#include <gtest/gtest.h>

#include <cstdlib>

#include "effects/pixel_scatter.h"
#include "raster/crt_random.h"
#include "tests/picture_test_support.h"
#include "tests/text_test_support.h"

namespace {

// Each pixel of a 16 by 16 picture names its own place, x + 16 y.
std::uint32_t Place(int x, int y) { return static_cast<std::uint32_t>(x + 16 * y); }

TEST(PixelScatter, NoneOrOneLeavesThePicture) {
  DibOwner picture(PictureOf(21, 13, 24, Busy));
  for (int scatter : {0, 1}) {
    DibOwner scattered(PixelScatter(picture.get(), {255, scatter}));
    EXPECT_TRUE(SameBitmap(scattered.get(), picture.get())) << scatter;
  }
}

// The stream restarts at every call: a mask and a picture of one size move
// alike, a draw from the stream in between changes nothing, and the first
// pixels take their offsets x first. Every pixel comes from within reach,
// or stays where it is when its source lies outside.
TEST(PixelScatter, EveryCallMakesTheSameFieldWithinReach) {
  const int reach = 9;
  DibOwner mask(PictureOf(16, 16, 8, Place));
  DibOwner picture(PictureOf(16, 16, 24, Place));
  Pixels movedMask = TakePixels(PixelScatter(mask.get(), {255, reach}));
  CrtRand();
  Pixels movedPicture = TakePixels(PixelScatter(picture.get(), {255, reach}));
  ASSERT_EQ(movedMask.values, movedPicture.values);

  CrtSrand(13204);
  int firstX = CrtRand() % reach - reach / 2;
  int firstY = CrtRand() % reach - reach / 2;
  int secondX = CrtRand() % reach - reach / 2 + 1;
  int secondY = CrtRand() % reach - reach / 2;
  auto expected = [](int x, int y, int ownX, int ownY) {
    return x >= 0 && y >= 0 && x < 16 && y < 16 ? Place(x, y) : Place(ownX, ownY);
  };
  EXPECT_EQ(movedMask.At(0, 0), static_cast<std::int32_t>(expected(firstX, firstY, 0, 0)));
  EXPECT_EQ(movedMask.At(1, 0), static_cast<std::int32_t>(expected(secondX, secondY, 1, 0)));

  int kept = 0;
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      int from = movedMask.At(x, y);
      ASSERT_LE(std::abs(from % 16 - x), reach / 2);
      ASSERT_LE(std::abs(from / 16 - y), reach / 2);
      kept += from == static_cast<std::int32_t>(Place(x, y));
    }
  }
  EXPECT_GT(kept, 0);   // sources outside at the edges
  EXPECT_LT(kept, 128);  // most pixels move
}

}  // namespace
