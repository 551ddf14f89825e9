// What the headless renderer does before a run, as the dialog and the
// installer would: settings from the command line, the data folders, and the
// headless dialog loaded from the settings.
#pragma once

#include <string>

#include "plugin/controls_snapshot.h"
#include "plugin/settings.h"

// Splits KEY=VALUE and finds its row. Refuses a missing "=", an unknown key,
// and a number setting whose value is not a whole number: mistakes of usage.
// 0 with error set on refusal.
int RenderParseSetting(const std::string& assignment, const SettingRow** row, std::string* value,
                       std::string* error);

// Stores KEY=VALUE into the setting named KEY, as a line of the settings
// file would; a text value arrives in UTF-8 and is stored in the code page.
// Refuses what RenderParseSetting refuses, and text that the code page
// cannot hold or that is longer than 260 bytes. 0 with error set on refusal.
int RenderSetSetting(const std::string& assignment, std::string* error);

// The effect's row from its display name (any case) or row number; -1 if
// neither.
int RenderEffectIndex(const std::string& nameOrRow);

// Stores UTF-8 text as MainText in the system's code page. Refuses empty
// text, text longer than the edit holds and characters the code page lacks.
int RenderSetText(const std::string& utf8, std::string* error);

// The dialog as it stands after start-up for a host with hostFlags, with
// the two values that are not settings: Custom palette and Character space.
// With useFiles 0 the fills keep their compiled-in values, as when Shift is
// held while the dialog opens.
void RenderLoadDialog(ControlsSnapshot* snapshot, unsigned hostFlags, int customPalette, int characterSpace,
                      int useFiles);
