#include <algorithm>
#include <tuple>
#include <utility>

#include "effects/simple.h"
#include "effects/text_frame.h"
#include "tests/effect_test_support.h"

namespace {

class SimpleEffect : public EffectOnDefaults {
 protected:
  void SetUp() override {
    EffectOnDefaults::SetUp();
    context_.extra = &still_;
  }
  SimpleExtra still_{};
};

// The lowest opacity without shadow and outline leaves only the background.
TEST_F(SimpleEffect, FrameIsTheMeasuredTextPlusMarginsAndShadowOffset) {
  TextFrame layout;
  PanelLookIds ids = {100, 121, 103, 109, 111, 113, 115, 119};
  ASSERT_EQ(TextFrameMeasure(&snapshot_.controls, ids, &layout), 1);
  EXPECT_EQ(layout.pad, 2);  // softness 10 adds 1 + 10 / 10
  DibOwner frame(SimpleGenerate(&context_));
  DibLock lock(frame.get());
  ASSERT_NE(lock.head, nullptr);
  EXPECT_EQ(std::tuple(lock.head->biBitCount, lock.head->biWidth, lock.head->biHeight),
            std::tuple(24, layout.textWidth + 2 * 2 + 4, layout.textHeight + 2 * 2 + 4));
  EXPECT_EQ(DibGetPixel(lock.head, 0, 0), 0xE5E5E5);  // the corner shows the background fill

  SnapshotSetNumber(&snapshot_, 103, 1);
  SnapshotSetCheck(&snapshot_, 100, 0);
  SnapshotSetCheck(&snapshot_, 121, 0);
  DibOwner faint(SimpleGenerate(&context_));
  DibLock faintLock(faint.get());
  ASSERT_NE(faintLock.head, nullptr);
  for (int y = 0; y < faintLock.head->biHeight; ++y)
    for (int x = 0; x < faintLock.head->biWidth; ++x)
      ASSERT_EQ(DibGetPixel(faintLock.head, x, y), 0xE5E5E5) << x << "," << y;
}

// A still build is one frame at the delay without pause; a scrolling one
// pauses at both ends of the loop.
TEST_F(SimpleEffect, StillBuildIsOneFrameAndScrollingBuildPausesTwice) {
  SnapshotSetCheck(&snapshot_, 32, 0);
  ASSERT_EQ(SimpleBuild(&context_), 1);
  ASSERT_EQ(Delays(), std::vector<std::uint32_t>{8u});  // the palette host's delay default
  FrameRecord still;
  FrameRecordRead(&frames_, 0, &still);
  EXPECT_EQ(still.transparentIndex, -1);

  FrameListFree(&frames_);
  SnapshotSetCheck(&snapshot_, 32, 1);
  SnapshotSetNumber(&snapshot_, 117, 16);
  SnapshotSetNumber(&snapshot_, 33, 100);
  ASSERT_EQ(SimpleBuild(&context_), 1);
  std::vector<std::uint32_t> delays = Delays();
  ASSERT_EQ(delays.size(), 16u);
  EXPECT_EQ(std::count(delays.begin(), delays.end(), 108u), 2);
  EXPECT_EQ(std::count(delays.begin(), delays.end(), 8u), 14);
  EXPECT_EQ(delays.back(), 108u);
}

// A build lays the text once and cuts each frame's masks from it: at three
// levels (shadow, fill, outline cover) and with the text cut off on every
// side, the frames equal those that lay the text anew.
TEST_F(SimpleEffect, TextLaidOnceGivesTheFramesOfTextLaidEachTime) {
  SnapshotSetNumber(&snapshot_, 103, 200);
  SnapshotSetNumber(&snapshot_, 109, 90);
  LaidTextLevels laidLevels{};
  const std::pair<int, int> scrolls[] = {{0, 0}, {-60, 0}, {300, 0}, {0, -25}, {0, 40}};
  for (auto [scrollX, scrollY] : scrolls) {
    SimpleExtra anew{scrollX, scrollY, nullptr};
    SimpleExtra laid{scrollX, scrollY, &laidLevels};
    context_.extra = &anew;
    DibOwner expected(SimpleGenerate(&context_));
    context_.extra = &laid;
    DibOwner actual(SimpleGenerate(&context_));
    ASSERT_NE(expected, nullptr);
    EXPECT_EQ(DibSamePicture(actual.get(), expected.get()), 1) << scrollX << "," << scrollY;
  }
  EXPECT_EQ(laidLevels.count, 3);
}

TEST_F(SimpleEffect, EmptyTextGivesNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(SimplePreview(&context_), 1);
  EXPECT_EQ(context_.previewBitmap, nullptr);
  EXPECT_EQ(SimpleBuild(&context_), 0);
  EXPECT_EQ(frames_.count, 0);
}

}  // namespace
