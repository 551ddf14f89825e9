#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "effects/simple.h"
#include "effects/text_frame.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"
#include "tests/text_test_support.h"

namespace {

// Simple run against the headless dialog as it stands after start-up with
// the compiled-in settings and no saved fills.
class SimpleEffect : public GdiStarted {
 protected:
  void SetUp() override {
    SettingsReset();
    SnapshotInit(&snapshot_);
    SnapshotFromSettings(&snapshot_, kHostFlagPaletteFormat, 0);
    context_.dialog = &snapshot_.controls;
    context_.frames = &frames_;
  }
  void TearDown() override {
    FrameListFree(&frames_);
    SnapshotClear(&snapshot_);
  }

  DibHandle Generate(int scrollX, int scrollY) {
    SimpleExtra extra{scrollX, scrollY};
    context_.extra = &extra;
    return SimpleGenerate(&context_);
  }

  std::vector<FrameRecord> Frames() {
    std::vector<FrameRecord> out(frames_.count);
    auto* records = static_cast<FrameRecord*>(MemLock(frames_.records));
    for (int i = 0; i < frames_.count; ++i) out[i] = records[i];
    MemUnlock(frames_.records);
    return out;
  }

  ControlsSnapshot snapshot_;
  FrameList frames_{};
  EffectContext context_{};
};

TEST_F(SimpleEffect, FrameIsTheMeasuredTextPlusMarginsAndShadowOffset) {
  TextFrame layout;
  PanelLookIds ids = {100, 121, 103, 109, 111, 113, 115, 119};
  ASSERT_EQ(TextFrameMeasure(&snapshot_.controls, ids, &layout), 1);
  EXPECT_EQ(layout.pad, 2);  // softness 10 adds 1 + 10 / 10
  DibOwner frame(Generate(0, 0));
  DibLock lock(frame.get());
  ASSERT_NE(lock.head, nullptr);
  EXPECT_EQ(lock.head->biBitCount, 24);
  EXPECT_EQ(lock.head->biWidth, layout.textWidth + 2 * 2 + 4);
  EXPECT_EQ(lock.head->biHeight, layout.textHeight + 2 * 2 + 4);
  // The corner shows the background fill; the text shows its fill somewhere.
  EXPECT_EQ(DibGetPixel(lock.head, 0, 0), 0xE5E5E5);
  bool sawFill = false;
  for (int y = 0; y < lock.head->biHeight; ++y)
    for (int x = 0; x < lock.head->biWidth; ++x) sawFill |= DibGetPixel(lock.head, x, y) == 0x996633;
  EXPECT_TRUE(sawFill);
}

TEST_F(SimpleEffect, LowestOpacityWithoutShadowAndOutlineLeavesTheBackground) {
  SnapshotSetNumber(&snapshot_, 103, 1);
  SnapshotSetCheck(&snapshot_, 100, 0);
  SnapshotSetCheck(&snapshot_, 121, 0);
  DibOwner frame(Generate(0, 0));
  DibLock lock(frame.get());
  ASSERT_NE(lock.head, nullptr);
  for (int y = 0; y < lock.head->biHeight; ++y)
    for (int x = 0; x < lock.head->biWidth; ++x) ASSERT_EQ(DibGetPixel(lock.head, x, y), 0xE5E5E5) << x << "," << y;
}

TEST_F(SimpleEffect, TextScrolledOutOfTheFrameLeavesOnlyTheBackground) {
  DibOwner still(Generate(0, 0));
  int width = 0;
  {
    DibLock lock(still.get());
    width = lock.head->biWidth;
  }
  DibOwner gone(Generate(-width - 8, 0));
  DibLock lock(gone.get());
  for (int y = 0; y < lock.head->biHeight; ++y)
    for (int x = 0; x < lock.head->biWidth; ++x) ASSERT_EQ(DibGetPixel(lock.head, x, y), 0xE5E5E5);
}

TEST_F(SimpleEffect, StillBuildIsOneFrameAtTheDelayWithoutPause) {
  SnapshotSetCheck(&snapshot_, 32, 0);
  ASSERT_EQ(SimpleBuild(&context_), 1);
  auto frames = Frames();
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].delay, 8u);  // the palette host's delay default
  EXPECT_EQ(frames[0].transparentIndex, -1);
}

TEST_F(SimpleEffect, ScrollingBuildPausesTwiceAndLoops) {
  SnapshotSetCheck(&snapshot_, 32, 1);
  SnapshotSetNumber(&snapshot_, 117, 16);
  SnapshotSetNumber(&snapshot_, 33, 100);
  ASSERT_EQ(SimpleBuild(&context_), 1);
  auto frames = Frames();
  ASSERT_EQ(frames.size(), 16u);
  int pausing = 0;
  for (const FrameRecord& frame : frames) {
    EXPECT_TRUE(frame.delay == 8u || frame.delay == 108u);
    pausing += frame.delay == 108u;
  }
  EXPECT_EQ(pausing, 2);
  EXPECT_EQ(frames.back().delay, 108u);
}

TEST_F(SimpleEffect, EmptyTextGivesNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(SimplePreview(&context_), 1);
  EXPECT_EQ(context_.previewBitmap, nullptr);
  EXPECT_EQ(SimpleBuild(&context_), 0);
  EXPECT_EQ(frames_.count, 0);
}

}  // namespace
