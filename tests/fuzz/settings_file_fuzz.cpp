// Any bytes as a settings file: read over the defaults, written back out,
// and loaded into the headless dialog, whose number reads must stay within
// their ranges; then the command line's report of what the dialog changed.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "host/settings_report.h"
#include "plugin/build_pipeline.h"
#include "plugin/control_table.h"
#include "plugin/controls_startup.h"
#include "plugin/host_interface.h"
#include "plugin/settings.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

// The range text "min,max,default" of a number edit's up-down.
void ReadRange(const ControlRow& row, int* minimum, int* maximum) {
  *minimum = 0;
  *maximum = 100;
  int start = 0;
  std::sscanf(row.paramText != nullptr ? row.paramText : "", "%d,%d,%d", minimum, maximum, &start);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SettingsReset();
  SettingsLoadFile(FuzzInputFile(data, size), false);
  SettingsSaveFile(FuzzOutputFile(), 0);

  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  for (const ControlRow& row : ControlTable) {
    if (row.kind != kControlNumber || row.id == 11) continue;  // Delay's range is the host's
    int minimum = 0;
    int maximum = 0;
    ReadRange(row, &minimum, &maximum);
    int value = ReadControlInt(&snapshot.controls, static_cast<int>(row.id));
    if (minimum <= maximum && (value < minimum || value > maximum)) std::abort();
  }
  int effect = EffectRowOfSelection(ControlSelection(&snapshot.controls, kEffectListControl));
  SettingsAdjustments(&snapshot.controls, effect);
  SnapshotClear(&snapshot);
  return 0;
}
