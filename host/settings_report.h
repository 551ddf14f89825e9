// What the dialog made of the settings: a number clamped to its control's
// range (after the file's wrap-around of negative numbers), a direction that
// is not one of its control's cells, an effect row that does not exist. The
// settings keep their values; the report only tells the user.
#pragma once

#include <string>
#include <vector>

#include "plugin/controls.h"

// One line per adjusted setting of the general controls and of the panel of
// effect, "KEY = GIVEN ..., USED is used", in control-table order.
std::vector<std::string> SettingsAdjustments(const Controls* dialog, int effect);

// The effect row that a selection of the effect list runs: none selected
// counts as the first row, one past the end as the last.
int EffectRowOfSelection(int selection);

// The key of the effect's frame-count setting ("MainSimpleFrames"), or null
// for an effect whose panel has none.
const char* FrameCountSetting(int effect);
