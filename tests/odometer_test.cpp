#include "effects/odometer.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kOdometerRow = 13;

TEST(OdometerMotion, StepFollowsStepsAndDragIsTheStepSharedByPersistence) {
  const OdometerMotion fine = OdometerMotionFor(100, 0);
  EXPECT_EQ(std::tuple(fine.step, fine.drag), std::tuple(1.0, 1.0));
  const OdometerMotion coarse = OdometerMotionFor(9, 5);
  EXPECT_EQ(std::tuple(coarse.step, coarse.drag), std::tuple(100.0 / 9, 3.0));
  EXPECT_EQ(OdometerMotionFor(1, 3).drag, 34.0);
}

class OdometerEffect : public EffectOnDefaults {
 protected:
  void SetUp() override {
    EffectOnDefaults::SetUp();
    SnapshotSetNumber(&snapshot_, 33, 100);
    SnapshotSetNumber(&snapshot_, 148, 1);  // a letter arrives in one step
    SnapshotSetNumber(&snapshot_, 152, 0);
  }
  void Roll(int appear, int disappear) {
    SnapshotSetCheck(&snapshot_, 150, appear);
    SnapshotSetCheck(&snapshot_, 151, disappear);
    ASSERT_EQ(Build(kOdometerRow), 1);
  }
};

// One step a letter: a frame for each letter, none for the blank, and the
// last of each motion pauses; leaving ends on the bare background.
TEST_F(OdometerEffect, OneFrameALetterWithStepsOneAndBlanksTakeNoTurn) {
  SnapshotSetText(&snapshot_, 23, "a b");
  Roll(1, 0);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{8, 108}));
  EXPECT_EQ(FramePixels(1).values, Preview(kOdometerRow).values);

  Roll(0, 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{8, 108}));
  for (std::int32_t value : FramePixels(1).values) ASSERT_EQ(value, 0xB2B2B2);

  Roll(1, 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{8, 108, 8, 108}));
}

// Steps of one per cent move a small letter less than a pixel a frame: the
// equal frames are dropped, so no two neighbours are alike and there are at
// most as many frames as pixel rows the letter crosses.
TEST_F(OdometerEffect, EqualFramesAreDropped) {
  SnapshotSetText(&snapshot_, 23, "o");
  SnapshotSetNumber(&snapshot_, 28, 8);
  SnapshotSetNumber(&snapshot_, 148, 100);
  Roll(1, 0);
  const std::vector<FrameRecord> frames = Frames();
  const int height = Preview(kOdometerRow).height;
  ASSERT_GT(frames_.count, 2);
  EXPECT_LE(frames_.count, height + 1);
  for (std::size_t i = 1; i < frames.size(); ++i)
    EXPECT_EQ(DibSamePicture(frames[i - 1].image, frames[i].image), 0) << i;
}

// Persistence pulls the following letters along: with drag 1 and a
// persistence of 101 the second letter is pulled by 100 and arrives with the
// first; with 2 it is pulled half way and needs its own frame.
TEST_F(OdometerEffect, PersistencePullsTheNextLetterAhead) {
  SnapshotSetText(&snapshot_, 23, "ab");
  SnapshotSetNumber(&snapshot_, 152, 101);
  Roll(1, 0);
  EXPECT_EQ(frames_.count, 1);
  SnapshotSetNumber(&snapshot_, 152, 2);
  Roll(1, 0);
  EXPECT_EQ(frames_.count, 2);
}

}  // namespace
