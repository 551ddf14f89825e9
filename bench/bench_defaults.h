// Shared by the benchmarks: the drawing service started and the headless
// dialog as it stands after start-up with the compiled-in settings and no
// saved fills.
#pragma once

#include "plugin/controls_startup.h"
#include "plugin/host_interface.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

struct BenchDefaults {
  BenchDefaults() {
    GdiOp start{};
    start.op = kGdiStart;
    GdiCommand(&start);
    SettingsReset();
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  }
  ~BenchDefaults() { SnapshotClear(&snapshot); }
  ControlsSnapshot snapshot;
};
