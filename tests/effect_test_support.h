// Shared by the effect tests: an effect run against the headless dialog as
// it stands after start-up with the compiled-in settings and no saved fills.
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
    auto* records = static_cast<FrameRecord*>(MemLock(frames_.records));
    std::vector<FrameRecord> out(records, records + frames_.count);
    MemUnlock(frames_.records);
    return out;
  }

  ControlsSnapshot snapshot_;
  FrameList frames_{};
  EffectContext context_{};
};
