// The effects that come in, hold and go out; and what the effects whose
// layers pass through one transform share at their ends.
#include <algorithm>

#include "effects/chaos.h"
#include "effects/framework.h"
#include "effects/text_frame.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kChaos = 5;
constexpr int kFramework = 8;
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

  ChaosExtra sharp = {255, 0};
  context_.extra = &sharp;
  Pixels hold = TakePixels(ChaosGenerate(&context_));
  SnapshotSetNumber(&snapshot_, 511, 1);
  ASSERT_EQ(Build(kChaos), 1);
  EXPECT_EQ(Delays(), std::vector<std::uint32_t>{108u});
  EXPECT_EQ(FramePixels(0).values, hold.values);
}

// Frames starts at 8; the first frame, at level 0, shows the background
// alone; "Full frame" widens the margins by 38 per cent of the text.
TEST_F(InOutEffects, FrameworkFadesInAndOutThroughTheSmear) {
  SnapshotSetNumber(&snapshot_, 533, 2);
  ASSERT_EQ(Build(kFramework), 1);
  std::vector<std::uint32_t> expected(9, 8u);
  expected[4] = expected[8] = 108u;
  EXPECT_EQ(Delays(), expected);
  Pixels first = FramePixels(0);
  EXPECT_EQ(std::count(first.values.begin(), first.values.end(), 0xE5E5E5), first.width * first.height);

  FrameworkExtra sharp = {8, 0, 255};
  context_.extra = &sharp;
  Pixels plain = TakePixels(FrameworkGenerate(&context_));
  SnapshotSetCheck(&snapshot_, 538, 1);
  Pixels full = TakePixels(FrameworkGenerate(&context_));
  TextFrame text;
  ASSERT_EQ(TextFrameMeasure(&snapshot_.controls, {516, 537, 519, 525, 527, 529, 531, 535}, &text), 1);
  EXPECT_EQ(full.width - plain.width, 2 * (text.textWidth * 38 / 100));
  EXPECT_EQ(full.height - plain.height, 2 * (text.textHeight * 38 / 100));
}

TEST_F(InOutEffects, EmptyTextGivesNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  for (int row : {kChaos, kFramework, kLiquidMetal}) {
    context_.previewBitmap = nullptr;
    EXPECT_EQ(EffectTable[row].preview(&context_), 1);
    EXPECT_EQ(context_.previewBitmap, nullptr) << row;
    EXPECT_EQ(Build(row), 0) << row;
    EXPECT_EQ(frames_.count, 0) << row;
  }
}

}  // namespace
