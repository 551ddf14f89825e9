// Shared by the effect tests: an effect run against the headless dialog as
// it stands after start-up with the compiled-in settings and no saved fills,
// for a palette host.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "effects/effect.h"
#include "plugin/controls_startup.h"
#include "tests/text_test_support.h"

class EffectOnDefaults : public GdiStarted {
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

  std::vector<FrameRecord> Frames() {
    if (frames_.count == 0) return {};
    auto* records = static_cast<FrameRecord*>(MemLock(frames_.records));
    std::vector<FrameRecord> out(records, records + frames_.count);
    MemUnlock(frames_.records);
    return out;
  }

  // Runs the row's build into a fresh list; the build's result.
  int Build(int row) {
    FrameListFree(&frames_);
    frames_ = FrameList{};
    context_.flags = 0;
    return EffectTable[row].build(&context_);
  }

  std::vector<std::uint32_t> Delays() {
    std::vector<std::uint32_t> delays;
    for (int i = 0; i < frames_.count; ++i) {
      FrameRecord record;
      FrameRecordRead(&frames_, i, &record);
      delays.push_back(record.delay);
    }
    return delays;
  }

  // The row's preview picture, taken over from the context; empty for none.
  Pixels Preview(int row) {
    context_.flags = 0;
    context_.previewBitmap = nullptr;
    EffectTable[row].preview(&context_);
    return TakePixels(context_.previewBitmap);
  }

  // The pixels of frame i, copied out.
  Pixels FramePixels(int i) {
    FrameRecord record;
    if (FrameRecordRead(&frames_, i, &record) == 0) return {};
    return TakePixels(DibClone(record.image));
  }

  // How many frames a fresh build with these settings makes; 0 if it fails.
  int BuildCount(EffectCallback build) {
    FrameListFree(&frames_);
    context_.flags = 0;
    return build(&context_) == 1 ? frames_.count : 0;
  }

  // The preview gives a picture; with the text emptied the build fails and
  // the preview gives none, returning emptyResult.
  void ExpectPreviewUntilTheTextIsEmpty(EffectCallback preview, EffectCallback build, int emptyResult) {
    context_.flags = 0;
    context_.previewBitmap = nullptr;
    EXPECT_EQ(preview(&context_), 1);
    DibOwner picture(context_.previewBitmap);
    EXPECT_NE(picture, nullptr);
    SnapshotSetText(&snapshot_, 23, "");
    EXPECT_EQ(BuildCount(build), 0);
    context_.flags = 0;
    context_.previewBitmap = nullptr;
    EXPECT_EQ(preview(&context_), emptyResult);
    EXPECT_EQ(context_.previewBitmap, nullptr);
  }

  ControlsSnapshot snapshot_;
  FrameList frames_{};
  EffectContext context_{};
};
