// The headless dialog as the live one stands after its start-up: every
// control loaded from the settings by the control table, with the host's
// delay range and the general controls' starting states.
#pragma once

#include <cstdint>

#include "plugin/controls_snapshot.h"

// The Delay range by the host's flags: bit 0 set gives "1,25,8", clear
// "1,250,80".
const char* DelayRangeForHost(std::uint32_t hostFlags);

// Clears the snapshot (made by SnapshotInit) and fills it: up-down range
// texts, fill swatches' records (their saved files read unless useFiles is
// 0), then ControlsLoad. Character spacing starts at 90 and Custom palette
// checked; a host without true colour leaves True color unchecked.
void SnapshotFromSettings(ControlsSnapshot* snapshot, std::uint32_t hostFlags, int useFiles);
