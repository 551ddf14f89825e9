// Shared by the effect tests: an effect run against the headless dialog as
// it stands after start-up with the compiled-in settings and no saved fills,
// and the frames a build left.
#pragma once

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
    std::vector<FrameRecord> out(frames_.count);
    for (int i = 0; i < frames_.count; ++i) FrameRecordRead(&frames_, i, &out[i]);
    return out;
  }

  std::vector<std::uint32_t> Delays() {
    std::vector<std::uint32_t> delays;
    for (const FrameRecord& frame : Frames()) delays.push_back(frame.delay);
    return delays;
  }

  // A fresh build into an empty list; its return value.
  int Build(EffectCallback build) {
    FrameListFree(&frames_);
    context_.flags = 0;
    return build(&context_);
  }

  // The preview's picture, taken over from the context.
  Pixels Preview(EffectCallback preview) {
    context_.flags = 0;
    context_.previewBitmap = nullptr;
    preview(&context_);
    return TakePixels(context_.previewBitmap);
  }

  ControlsSnapshot snapshot_;
  FrameList frames_{};
  EffectContext context_{};
};
