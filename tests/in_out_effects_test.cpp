// The effects that come in, hold and go out; and what the effects whose
// layers pass through one transform share at their ends.
#include <algorithm>

#include "effects/chaos.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kChaos = 5;
constexpr int kLiquidMetal = 11;

using InOutEffects = EffectOnDefaults;

// 2 * (Frames / 2) + 1 frames; the hold frame in the middle and the last
// frame pause; equal amplitudes give equal frames; one frame is the sharp
// hold frame alone.
TEST_F(InOutEffects, ChaosScattersInHoldsAndScattersOut) {
  ASSERT_EQ(Build(kChaos), 1);
  std::vector<std::uint32_t> delays = Delays();
  ASSERT_EQ(delays.size(), 31u);
  std::vector<std::uint32_t> expected(31, 8u);
  expected[15] = expected[30] = 108u;
  EXPECT_EQ(delays, expected);
  EXPECT_EQ(FramePixels(0).values, FramePixels(30).values);
  EXPECT_EQ(FramePixels(1).values, FramePixels(29).values);
  EXPECT_NE(FramePixels(0).values, FramePixels(15).values);

  ChaosExtra sharp = {255, 0};
  context_.extra = &sharp;
  Pixels hold = TakePixels(ChaosGenerate(&context_));
  SnapshotSetNumber(&snapshot_, 511, 1);
  ASSERT_EQ(Build(kChaos), 1);
  EXPECT_EQ(Delays(), std::vector<std::uint32_t>{108u});
  EXPECT_EQ(FramePixels(0).values, hold.values);
}

TEST_F(InOutEffects, EmptyTextGivesNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  for (int row : {kChaos, kLiquidMetal}) {
    context_.previewBitmap = nullptr;
    EXPECT_EQ(EffectTable[row].preview(&context_), 1);
    EXPECT_EQ(context_.previewBitmap, nullptr) << row;
    EXPECT_EQ(Build(row), 0) << row;
    EXPECT_EQ(frames_.count, 0) << row;
  }
}

}  // namespace
