#include <cmath>

#include "effects/hot_lead.h"
#include "effects/hot_lead_emboss.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kHotLeadRow = 9;

// An 8-bit mask of the given size with one value everywhere.
DibHandle FlatMask(int width, int height, int value) {
  DibHandle mask = MaskNew(width, height);
  DibLock lock(mask);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>(value));
  return mask;
}

TEST(HotLeadEmboss, EvenDepthGrowsByOneAndTheAntiDiagonalIsZeroed) {
  EXPECT_EQ(HotLeadKernelSize(6), 7);
  EXPECT_EQ(HotLeadKernelSize(5), 5);
  const std::vector<double> kernel = HotLeadKernel(15, 6);  // sigma 1.5
  ASSERT_EQ(kernel.size(), 49u);
  auto at = [&](int x, int y) { return kernel[(y + 3) * 7 + x + 3]; };
  for (int x = -3; x <= 3; ++x) EXPECT_EQ(at(x, -x), 0.0) << x;
  EXPECT_EQ(at(1, 0), 8.0 * std::exp(-1 / 2.25));
  EXPECT_EQ(at(0, -1), -8.0 * std::exp(-1 / 2.25));
  EXPECT_EQ(at(-2, 3), -8.0 * std::exp(-13 / 2.25));
}

// One kernel weight in the bottom row picks the pixel one storage row lower,
// which is the next picture row down, and the bottom picture row reads the top.
TEST(HotLeadEmboss, KernelRowsRunUpFromTheBottomRowAndReadsWrapAround) {
  DibOwner mask(FlatMask(5, 4, 0));
  {
    DibLock lock(mask.get());
    DibPutPixel(lock.head, 2, 0, 200);
    DibPutPixel(lock.head, 1, 2, 100);
  }
  const double pick[9] = {0, 1, 0, 0, 0, 0, 0, 0, 0};
  Pixels out = TakePixels(HotLeadConvolve(mask.get(), 3, pick));
  ASSERT_EQ(out.width, 5);
  EXPECT_EQ(out.At(1, 1), 100);
  EXPECT_EQ(out.At(2, 3), 200);
  EXPECT_EQ(out.At(1, 2), 0);

  // A kernel whose total is neither 0 nor 1 is divided by it.
  DibOwner flat(FlatMask(5, 4, 10));
  const double even[9] = {2, 2, 2, 2, 2, 2, 2, 2, 2};
  EXPECT_EQ(TakePixels(HotLeadConvolve(flat.get(), 3, even)).At(4, 0), 10);
  EXPECT_EQ(HotLeadConvolve(flat.get(), 5, HotLeadKernel(15, 5).data()), nullptr);  // taller than the mask
  EXPECT_EQ(HotLeadConvolve(flat.get(), 2, even), nullptr);
}

class HotLeadEffect : public EffectOnDefaults {};

// The whole sequence comes out with Animated off; the blank frame is only
// background and pauses when it stands before a single letter.
TEST_F(HotLeadEffect, OneFrameALetterAfterAnOptionalBlankFrame) {
  SnapshotSetCheck(&snapshot_, 32, 0);
  SnapshotSetNumber(&snapshot_, 33, 100);
  SnapshotSetCheck(&snapshot_, 489, 1);
  SnapshotSetText(&snapshot_, 23, "Lead");
  ASSERT_EQ(Build(kHotLeadRow), 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{8, 8, 8, 8, 108}));
  Pixels blank = FramePixels(0);
  for (std::int32_t value : blank.values) ASSERT_EQ(value, 0xDADADA);
  Pixels whole = FramePixels(4);
  EXPECT_EQ(std::tuple(whole.width, whole.height), std::tuple(blank.width, blank.height));
  EXPECT_EQ(whole.values, Preview(kHotLeadRow).values);

  SnapshotSetText(&snapshot_, 23, "L");
  ASSERT_EQ(Build(kHotLeadRow), 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{108, 108}));
}

// A picture smaller than the kernel cannot be convolved: no preview, no build.
TEST_F(HotLeadEffect, PictureSmallerThanTheKernelFailsTheBuild) {
  SnapshotSetNumber(&snapshot_, 28, 4);
  SnapshotSetNumber(&snapshot_, 31, 0);
  SnapshotSetNumber(&snapshot_, 492, 15);
  SnapshotSetText(&snapshot_, 23, "i");
  EXPECT_EQ(Preview(kHotLeadRow).width, 0);
  EXPECT_EQ(Build(kHotLeadRow), 0);
  EXPECT_EQ(frames_.count, 0);
}

}  // namespace
