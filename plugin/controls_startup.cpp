#include "plugin/controls_startup.h"

#include "fills/fountain_button.h"
#include "fills/material.h"
#include "fills/matrix_button.h"
#include "fills/noise_record.h"
#include "plugin/control_table.h"
#include "plugin/host_interface.h"
#include "plugin/settings.h"

namespace {

constexpr int kDelayId = 11;
constexpr int kTrueColourId = 10;
constexpr int kCustomPaletteId = 14;
constexpr int kCharacterSpacingId = 34;
constexpr const char* kCharacterSpacingStart = "90";

// What each control holds before the table loads it: the up-downs' ranges
// and the records the fill swatches, gradient bars, the tile button and the
// noise swatch make for themselves when created.
void CreateControls(ControlsSnapshot* snapshot, int useFiles) {
  for (const ControlRow& row : ControlTable) {
    if (row.kind == kControlNumber) SnapshotSetText(snapshot, row.id + kUpDownIdOffset, row.paramText);
    if (row.kind == kControlCustom && row.subclass == kClassFillSwatch) {
      SnapshotSetOwningData(snapshot, row.id, MaterialSetUp(row.id, static_cast<std::uint32_t>(row.param), useFiles),
                            MaterialRelease);
    }
    if (row.kind == kControlCustom && row.subclass == kClassMuralList) {
      SnapshotSetOwningData(snapshot, row.id, MatrixButtonSetUp(static_cast<int>(MainMuralIndex)), MatrixButtonRelease);
    }
    if (row.kind == kControlCustom && row.subclass == kClassGradientBar)
      SnapshotSetData(snapshot, row.id, FountainSetUp(row.id, row.caption, row.limit, useFiles));
    if (row.kind == kControlCustom && row.subclass == kClassNoiseSwatch)
      SnapshotSetData(snapshot, row.id, NoiseSetUp(row.id, useFiles));
  }
}

}  // namespace

const char* DelayRangeForHost(std::uint32_t hostFlags) {
  return (hostFlags & kHostFlagPaletteFormat) ? "1,25,8" : "1,250,80";
}

void SnapshotFromSettings(ControlsSnapshot* snapshot, std::uint32_t hostFlags, int useFiles) {
  SnapshotClear(snapshot);
  CreateControls(snapshot, useFiles);
  SnapshotSetText(snapshot, kDelayId + kUpDownIdOffset, DelayRangeForHost(hostFlags));
  SnapshotSetText(snapshot, kCharacterSpacingId, kCharacterSpacingStart);
  SnapshotSetCheck(snapshot, kCustomPaletteId, 1);
  ControlsLoad(&snapshot->controls);
  // Such a host has Truecolour cleared before the load.
  if (!(hostFlags & kHostFlagTrueColour)) SnapshotSetCheck(snapshot, kTrueColourId, 0);
}
