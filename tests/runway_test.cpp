#include "effects/runway.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kRunwayRow = 16;

TEST(RunwayStages, CountAndStepAreLoweredUntilTheSmallestStageIsLegible) {
  EXPECT_EQ(RunwayStagesFor(10, 12, 6).count, 6);
  EXPECT_EQ(RunwayStagesFor(10, 12, 6).step, 1);
  EXPECT_EQ(RunwayStagesFor(24, 12, 6).count, 8);
  EXPECT_EQ(RunwayStagesFor(24, 12, 6).step, 2);
  EXPECT_EQ(RunwayStagesFor(144, 12, 6).count, 12);
  EXPECT_EQ(RunwayStagesFor(4, 3, 3).count, 1);  // both stop at 1
  EXPECT_EQ(RunwayStagesFor(4, 3, 3).step, 1);

  EXPECT_EQ(RunwayStageLevel(11, 12, 16), 16);  // the largest is the faintest
  EXPECT_EQ(RunwayStageLevel(0, 12, 16), 236);  // ceil(239 / 12 * 11 + 16)
  EXPECT_EQ(RunwayStageLevel(0, 1, 16), 16);
}

class RunwayEffect : public EffectOnDefaults {};

// With one stage the letters arrive whole, one a frame. The blank enters
// last and adds nothing to the picture, and the round that moves nothing
// repeats it once more; that last frame pauses and is the resting picture.
TEST_F(RunwayEffect, OneLetterAFrameAndTheBlankEntersLast) {
  SnapshotSetText(&snapshot_, 23, "ab");
  SnapshotSetNumber(&snapshot_, 232, 1);
  SnapshotSetNumber(&snapshot_, 33, 100);
  ASSERT_EQ(Build(kRunwayRow), 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{8, 8, 8, 108}));
  const std::vector<FrameRecord> frames = Frames();
  EXPECT_EQ(DibSamePicture(frames[0].image, frames[1].image), 0);
  EXPECT_EQ(DibSamePicture(frames[1].image, frames[2].image), 1);
  EXPECT_EQ(DibSamePicture(frames[2].image, frames[3].image), 1);
  EXPECT_EQ(FramePixels(3).values, Preview(kRunwayRow).values);
}

// Every letter enters and shrinks through all stages: the letters and the
// blank, then the stages left to the last of them, then the still round.
// Without Animated the one frame is the preview's resting line.
TEST_F(RunwayEffect, RoundsRunUntilEveryLetterIsSmallestAndTheStillIsThePreview) {
  SnapshotSetText(&snapshot_, 23, "ab");
  SnapshotSetNumber(&snapshot_, 28, 24);  // 8 stages
  ASSERT_EQ(Build(kRunwayRow), 1);
  EXPECT_EQ(frames_.count, 3 + 7 + 1);

  SnapshotSetCheck(&snapshot_, 32, 0);
  ASSERT_EQ(Build(kRunwayRow), 1);
  ASSERT_EQ(frames_.count, 1);
  EXPECT_EQ(FramePixels(0).values, Preview(kRunwayRow).values);

  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(Preview(kRunwayRow).width, 0);
  EXPECT_EQ(Build(kRunwayRow), 0);
}

}  // namespace
