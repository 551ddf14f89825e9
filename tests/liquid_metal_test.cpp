#include <algorithm>

#include "effects/liquid_metal.h"
#include "effects/text_frame.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kLiquidMetal = 11;

class LiquidMetal : public EffectOnDefaults {
 protected:
  RippleExtra still_ = LiquidMetalRestingRipple();
};

// A plain frame, six rising frames at delay 8, the falling frames with a
// jitter of 0 to 3 from a fixed seed, and a plain frame that pauses; a
// small frame count keeps the whole rise.
TEST_F(LiquidMetal, BuildRisesFallsAndRestsWithRepeatableDelays) {
  SnapshotSetNumber(&snapshot_, 477, 30);
  ASSERT_EQ(Build(kLiquidMetal), 1);
  std::vector<std::uint32_t> delays = Delays();
  ASSERT_EQ(delays.size(), 31u);
  EXPECT_EQ(std::vector<std::uint32_t>(delays.begin(), delays.begin() + 7), std::vector<std::uint32_t>(7, 8u));
  EXPECT_EQ(delays.back(), 108u);
  auto falling = std::vector<std::uint32_t>(delays.begin() + 7, delays.end() - 1);
  EXPECT_GE(*std::min_element(falling.begin(), falling.end()), 8u);
  EXPECT_LE(*std::max_element(falling.begin(), falling.end()), 11u);
  EXPECT_NE(std::count(falling.begin(), falling.end(), 8u), 23);
  EXPECT_EQ(FramePixels(0).values, FramePixels(30).values);  // both ends show the still text

  ASSERT_EQ(Build(kLiquidMetal), 1);
  EXPECT_EQ(Delays(), delays);

  // A host that holds true colour counts in longer units: a wider jitter.
  HostRecord trueColour{};
  trueColour.hostFlags = kHostFlagTrueColour;
  context_.host = &trueColour;
  SnapshotSetNumber(&snapshot_, 477, 12);
  ASSERT_EQ(Build(kLiquidMetal), 1);
  delays = Delays();
  EXPECT_GT(*std::max_element(delays.begin() + 7, delays.end() - 1), 11u);
  context_.host = nullptr;

  SnapshotSetNumber(&snapshot_, 477, 1);
  ASSERT_EQ(Build(kLiquidMetal), 1);
  EXPECT_EQ(frames_.count, 8);
}

// The frame has a strip below the text for the waves: a fifth of the font
// size, at least 8.
TEST_F(LiquidMetal, FrameHasAStripBelowTheText) {
  context_.extra = &still_;
  for (auto [fontSize, strip] : {std::pair{100, 20}, std::pair{10, 8}}) {
    SnapshotSetNumber(&snapshot_, 28, fontSize);
    TextFrame layout;
    TextFrameMeasure(&snapshot_.controls, {460, 481, 463, 469, 471, 473, 475, 479}, &layout);
    EXPECT_EQ(TakePixels(LiquidMetalGenerate(&context_)).height, layout.size.height + strip) << fontSize;
  }
}

}  // namespace
