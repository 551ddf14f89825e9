// Doppler, Mirage and Anaconda against the headless dialog after start-up
// with the compiled-in settings, on a short text in a small font.
#include <set>
#include <vector>

#include "effects/anaconda.h"
#include "effects/doppler.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kRolling = 32;
constexpr int kPause = 33;

class WarpEffect : public EffectOnDefaults {
 protected:
  void SetUp() override {
    EffectOnDefaults::SetUp();
    SnapshotSetText(&snapshot_, 23, "Hq");
    SnapshotSetNumber(&snapshot_, 28, 20);
    SnapshotSetNumber(&snapshot_, kPause, 50);
  }

  // Builds row's effect afresh; the frames' pictures and delays.
  void Build(int row) {
    FrameListFree(&frames_);
    context_.flags = 0;
    ASSERT_EQ(EffectTable[row].build(&context_), 1);
    pictures_.clear();
    delays_.clear();
    for (const FrameRecord& record : Frames()) {
      pictures_.push_back(TakePixels(DibClone(record.image)));
      delays_.push_back(record.delay);
    }
  }

  Pixels Preview(int row) {
    context_.flags = 0;
    EffectTable[row].preview(&context_);
    return TakePixels(context_.previewBitmap);
  }

  static std::set<std::int32_t> Colours(const Pixels& pixels) {
    return {pixels.values.begin(), pixels.values.end()};
  }

  std::vector<Pixels> pictures_;
  std::vector<std::uint32_t> delays_;
};

// Doppler ------------------------------------------------------------------------------------

constexpr int kDoppler = 6;

// Range 75 over 10 frames: from 25 per cent up to the text's own size in
// five steps, then on toward 150 while fading, all in double precision.
TEST(DopplerSteps, GrowToOwnSizeThenOnWhileFading) {
  EXPECT_EQ(DopplerStep(0, 10, 25, 150).scale, 25);
  EXPECT_EQ(DopplerStep(0, 10, 25, 150).level, 0);
  EXPECT_EQ(DopplerStep(4, 10, 25, 150).scale, 85);
  EXPECT_EQ(DopplerStep(4, 10, 25, 150).level, 204);
  EXPECT_EQ(DopplerStep(5, 10, 25, 150).level, 255);
  EXPECT_EQ(DopplerStep(9, 10, 25, 150).scale, 140);
  EXPECT_EQ(DopplerStep(9, 10, 25, 150).level, 50);  // (1 - 4 / 5.0) * 255 is just below 51
  EXPECT_EQ(DopplerStep(0, 1, 25, 150).level, 255);  // no half: drawn at full strength
}

// Frames frames without pause; the middle one is the still frame, the
// first is background alone.
TEST_F(WarpEffect, DopplerMiddleFrameIsTheStillText) {
  SnapshotSetNumber(&snapshot_, 328, 10);
  Build(kDoppler);
  EXPECT_EQ(delays_, std::vector<std::uint32_t>(10, 8u));
  EXPECT_EQ(Colours(pictures_[0]), std::set<std::int32_t>{0xCCCCCC});
  Pixels middle = pictures_[5];
  EXPECT_NE(pictures_[4].values, middle.values);

  SnapshotSetCheck(&snapshot_, kRolling, 0);
  Build(kDoppler);
  ASSERT_EQ(pictures_.size(), 1u);
  EXPECT_EQ(pictures_[0].values, middle.values);
  EXPECT_EQ(Preview(kDoppler).values, middle.values);

  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(Preview(kDoppler).width, 0);
  EXPECT_EQ(EffectTable[kDoppler].build(&context_), 0);
}

// Mirage -------------------------------------------------------------------------------------

constexpr int kMirage = 12;

// Frames 8 and 9 both give n = 4: four fading in, the sharp rest, four
// fading out and the blank rest, the two rests holding the pause.
TEST_F(WarpEffect, MirageMakesTwoHalvesAndTwoRestsFromAnyFramesSetting) {
  for (int setting : {8, 9}) {
    SnapshotSetNumber(&snapshot_, 414, setting);
    Build(kMirage);
    ASSERT_EQ(pictures_.size(), 10u) << setting;
    for (int i = 0; i < 10; ++i) EXPECT_EQ(delays_[i], i == 4 || i == 9 ? 58u : 8u) << i;
  }
  // The first frame's text has level 0 and the last frame is blank: both
  // show the background alone, outline included.
  EXPECT_EQ(Colours(pictures_[0]), std::set<std::int32_t>{0x996633});
  EXPECT_EQ(Colours(pictures_[9]), std::set<std::int32_t>{0x996633});
  EXPECT_GT(Colours(pictures_[1]).size(), 1u);

  // The rest is the sharp text at full strength, as a still build gives it.
  Pixels rest = pictures_[4];
  SnapshotSetCheck(&snapshot_, kRolling, 0);
  Build(kMirage);
  ASSERT_EQ(pictures_.size(), 1u);
  EXPECT_EQ(pictures_[0].values, rest.values);
  EXPECT_EQ(delays_[0], 8u);
}

// The frame is wider than the text by twice the range, the text in the
// middle of that room.
TEST_F(WarpEffect, MirageFrameMakesRoomForTheWaves) {
  SnapshotSetNumber(&snapshot_, 416, 8);
  Pixels narrow = Preview(kMirage);
  SnapshotSetNumber(&snapshot_, 416, 80);
  Pixels wide = Preview(kMirage);
  EXPECT_EQ(wide.width - narrow.width, 2 * 80 - 2 * 8);
  EXPECT_EQ(wide.height, narrow.height);

  // Without text the preview measures an empty string and the build a
  // blank: background alone either way.
  SnapshotSetText(&snapshot_, 23, "");
  Pixels empty = Preview(kMirage);
  EXPECT_EQ(empty.width, 2 + 160);  // the outline's margin of 1 each side
  EXPECT_EQ(Colours(empty), std::set<std::int32_t>{0x996633});
  SnapshotSetNumber(&snapshot_, 414, 8);
  Build(kMirage);
  ASSERT_EQ(pictures_.size(), 10u);
  EXPECT_EQ(Colours(pictures_[4]), std::set<std::int32_t>{0x996633});
  EXPECT_GT(pictures_[4].width, empty.width);
}

// Anaconda ------------------------------------------------------------------------------------

constexpr int kAnaconda = 0;

// Frames 8 and 9 both give four frames; the loop never pauses.
TEST_F(WarpEffect, AnacondaHalvesTheFramesSettingWithoutPause) {
  for (int setting : {8, 9}) {
    SnapshotSetNumber(&snapshot_, 453, setting);
    Build(kAnaconda);
    EXPECT_EQ(delays_, std::vector<std::uint32_t>(4, 8u)) << setting;
  }
  EXPECT_NE(pictures_[0].values, pictures_[1].values);
}

// One turn of the wave: step n is step 0 again, so the loop closes.
TEST_F(WarpEffect, AnacondaWaveClosesAfterOneTurn) {
  WaveExtra extra{5, 0, "Hq "};
  context_.extra = &extra;
  Pixels first = TakePixels(AnacondaGenerate(&context_));
  extra.index = 5;
  EXPECT_EQ(TakePixels(AnacondaGenerate(&context_)).values, first.values);
  extra.index = 2;
  EXPECT_NE(TakePixels(AnacondaGenerate(&context_)).values, first.values);
}

// The room for the wave: an eighth of the amplitude across, half of it below.
TEST_F(WarpEffect, AnacondaFrameGrowsWithTheRange) {
  SnapshotSetNumber(&snapshot_, 455, 8);
  Pixels low = Preview(kAnaconda);
  SnapshotSetNumber(&snapshot_, 455, 60);
  Pixels high = Preview(kAnaconda);
  EXPECT_EQ(high.width - low.width, 120 / 8 - 16 / 8);
  EXPECT_EQ(high.height - low.height, 120 / 2 - 16 / 2);
}

}  // namespace
