#include <cmath>

#include "effects/bubble_field.h"
#include "effects/bubbles.h"
#include "raster/crt_random.h"
#include "tests/effect_test_support.h"

namespace {

constexpr BubbleControlIds kBubbleIds = {162, 183, 185, 187, 189, 191};
constexpr int kFramesId = 178;

class BubblesEffect : public EffectOnDefaults {
 protected:
  void TearDown() override {
    FreeBubbleField(&field_);
    EffectOnDefaults::TearDown();
  }
  BubbleField field_{};
};

int Height(DibHandle dib) {
  int width = 0, height = 0;
  DibSizeOf(dib, &width, &height);
  return height;
}

// Density 9 gives 4 large, 6 medium and 9 small bubbles; each takes five
// draws in a fixed order, the third thrown away.
TEST_F(BubblesEffect, FieldIsSeededClassByClassWithFiveDrawsABubble) {
  SnapshotSetNumber(&snapshot_, 189, 9);
  ASSERT_EQ(InitBubbleField(&field_, &snapshot_.controls, kBubbleIds, 100, 30, 88), 1);
  field_.ready = 1;
  ASSERT_EQ(field_.count, 19);
  EXPECT_EQ(Height(field_.ground), 60);

  CrtSrand(10632);
  const struct { int count, base, speed, intensity; } classes[] = {{4, 36, 1, 255}, {6, 27, 2, 160}, {9, 18, 4, 128}};
  int i = 0;
  for (const auto& kind : classes) {
    for (int k = 0; k < kind.count; ++k, ++i) {
      const Bubble& bubble = field_.bubbles[i];
      EXPECT_EQ(bubble.x, CrtRand() % (200 - kind.base) + kind.base / 2) << i;
      EXPECT_EQ(bubble.y, CrtRand() % 60) << i;
      CrtRand();
      EXPECT_EQ(bubble.size, kind.base - CrtRand() % std::max(kind.base / 9, 1)) << i;
      EXPECT_EQ(bubble.angle, CrtRand() % 360) << i;
      EXPECT_EQ(std::tuple(bubble.speed, bubble.intensity), std::tuple(kind.speed, kind.intensity)) << i;
    }
  }
}

// The sway advances at every draw, whatever frame is asked for; with no
// drift the turning shows nothing.
TEST_F(BubblesEffect, EveryDrawTurnsTheSwayEvenAtTheSameFrame) {
  ASSERT_EQ(InitBubbleField(&field_, &snapshot_.controls, kBubbleIds, 80, 30, 8), 1);
  field_.ready = 1;
  double angle0 = field_.bubbles[0].angle;
  Pixels first = TakePixels(DrawBubbleField(&snapshot_.controls, kBubbleIds, &field_, 0));
  Pixels second = TakePixels(DrawBubbleField(&snapshot_.controls, kBubbleIds, &field_, 0));
  EXPECT_DOUBLE_EQ(field_.bubbles[0].angle, angle0 + 2 * 45.0);
  EXPECT_NE(first.values, second.values);

  SnapshotSetNumber(&snapshot_, 185, 0);
  Pixels still1 = TakePixels(DrawBubbleField(&snapshot_.controls, kBubbleIds, &field_, 3));
  Pixels still2 = TakePixels(DrawBubbleField(&snapshot_.controls, kBubbleIds, &field_, 3));
  EXPECT_EQ(still1.values, still2.values);
}

// A bubble over the top comes in again at the bottom; over the left edge it
// is lost.
TEST_F(BubblesEffect, OnlyTheTopEdgeWraps) {
  field_.ground = DibNew(40, 40, nullptr, 24);
  field_.bubbles = new Bubble[1]{{2, 2, 10, 1, 0, 0.0}};
  field_.count = 1;
  field_.fieldWidth = 40;
  field_.fieldHeight = 40;
  field_.frames = 1;
  field_.ready = 1;
  SnapshotSetNumber(&snapshot_, 183, 0xFFFFFF);
  Pixels out = TakePixels(DrawBubbleField(&snapshot_.controls, kBubbleIds, &field_, 0));
  ASSERT_EQ(out.height, 20);
  EXPECT_GT(out.At(1, 0) & 0xFF, 128);   // the bubble itself
  EXPECT_GT(out.At(1, 19) & 0xFF, 100);  // its top rows, wrapped
  EXPECT_EQ(out.At(1, 10), 0);
  EXPECT_EQ(out.At(19, 1), 0);  // its left columns are not wrapped
}

// The mask is a glassy ring: full at the rim, clearer at the centre.
TEST(BubbleMask, RimIsFullAndCentreFallsByTheIntensity) {
  Pixels mask = TakePixels(BubbleMask(20, 128));
  ASSERT_EQ(mask.width, 20);
  EXPECT_EQ(mask.At(0, 10), 0xFFFFFF);
  // The innermost rings are a pixel or two across: 255 - 8 or 9 tenths of 128.
  EXPECT_GE(mask.At(9, 9) & 0xFF, 255 - 9 * 128 / 10);
  EXPECT_LE(mask.At(9, 9) & 0xFF, 255 - 8 * 128 / 10);
  EXPECT_EQ(mask.At(0, 0), 0);
}

// The sizing call of a build has already turned the bubbles once, so the
// build's first frame is the second draw of a fresh field.
TEST_F(BubblesEffect, BuildFramesFollowTheSizingCall) {
  SnapshotSetNumber(&snapshot_, kFramesId, 4);
  ASSERT_EQ(BuildCount(BubblesBuild), 4);
  Pixels built = FramePixels(0);

  field_.loopFrames = 4;
  context_.extra = &field_;
  Pixels fresh = TakePixels(BubblesGenerate(&context_));
  Pixels second = TakePixels(BubblesGenerate(&context_));
  EXPECT_NE(built.values, fresh.values);
  EXPECT_EQ(built.values, second.values);
}

// Rolling off, one frame; else the frames setting cut to twice the height of
// the first frame, for both effects; an empty text fails the build only.
TEST_F(BubblesEffect, FrameCountsFollowTheSettingAndTheHeight) {
  SnapshotSetNumber(&snapshot_, 28, 10);
  SnapshotSetNumber(&snapshot_, 189, 8);
  SnapshotSetNumber(&snapshot_, 406, 8);
  struct Case {
    EffectCallback preview, build;
    DibHandle (*generate)(EffectContext*);
    int framesId;
  } cases[] = {{BubblesPreview, BubblesBuild, BubblesGenerate, kFramesId},
               {BackgroundBubblesPreview, BackgroundBubblesBuild, BackgroundBubblesGenerate, 395}};
  for (const Case& effect : cases) {
    BubbleField sizing{};
    sizing.loopFrames = 1;
    context_.extra = &sizing;
    DibOwner first(effect.generate(&context_));
    FreeBubbleField(&sizing);
    int twiceHeight = 2 * Height(first.get());
    ASSERT_GT(twiceHeight, 0);

    EXPECT_EQ(BuildCount(effect.build), std::min(88, twiceHeight));
    SnapshotSetNumber(&snapshot_, effect.framesId, 1);
    EXPECT_EQ(BuildCount(effect.build), 1);
    SnapshotSetNumber(&snapshot_, effect.framesId, 32760);
    EXPECT_EQ(BuildCount(effect.build), twiceHeight);
    SnapshotSetCheck(&snapshot_, 32, 0);
    EXPECT_EQ(BuildCount(effect.build), 1);
    SnapshotSetCheck(&snapshot_, 32, 1);

    ExpectPreviewUntilTheTextIsEmpty(effect.preview, effect.build, 1);
    SnapshotSetText(&snapshot_, 23, "Bubbles");
  }
}

}  // namespace
