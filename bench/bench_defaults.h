// Shared by the benchmarks: the drawing service started and the headless
// dialog as it stands after start-up with the compiled-in settings and no
// saved fills, over a configuration folder of the run's own in which the
// primary groups are installed.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>

#include "host/data_folders.h"
#include "plugin/controls_startup.h"
#include "plugin/host_interface.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

struct BenchDefaults {
  BenchDefaults() {
    char folder[] = "/tmp/lw_bench_XXXXXX";
    if (mkdtemp(folder) != nullptr) {
      configFolder = folder;
      setenv("XDG_CONFIG_HOME", folder, 1);
      std::string error;
      HostMakeDataFolders(&error);
    }
    GdiOp start{};
    start.op = kGdiStart;
    GdiCommand(&start);
    SettingsReset();
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  }
  ~BenchDefaults() {
    SnapshotClear(&snapshot);
    std::error_code ignored;
    if (!configFolder.empty()) std::filesystem::remove_all(configFolder, ignored);
  }
  ControlsSnapshot snapshot;
  std::string configFolder;
};
