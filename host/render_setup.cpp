#include "host/render_setup.h"

#include <cstdlib>
#include <cstring>
#include <strings.h>

#include "effects/effect.h"
#include "host/cp1252.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"

namespace {

constexpr int kCustomPaletteBox = 14;
constexpr int kCharacterSpaceEdit = 34;
constexpr int kTextLimit = kSettingStringSize - 1;

// A whole number as the settings file would hold it: an optional sign, then
// digits only.
bool IsWholeNumber(const char* text) {
  if (*text == '-' || *text == '+') ++text;
  if (*text == '\0') return false;
  for (; *text != '\0'; ++text)
    if (*text < '0' || *text > '9') return false;
  return true;
}

}  // namespace

int RenderParseSetting(const std::string& assignment, const SettingRow** row, std::string* value,
                       std::string* error) {
  std::size_t equals = assignment.find('=');
  if (equals == std::string::npos || equals == 0) {
    *error = "--set needs KEY=VALUE, not '" + assignment + "'";
    return 0;
  }
  std::string key = assignment.substr(0, equals);
  *value = assignment.substr(equals + 1);
  *row = SettingFind(key.c_str());
  if (*row == nullptr) {
    *error = "unknown setting '" + key + "'; lwmotio3 settings lists them all";
    return 0;
  }
  if (((*row)->flags & kSettingString) == 0 && !IsWholeNumber(value->c_str())) {
    *error = "setting '" + key + "' takes a whole number, not '" + *value + "'";
    return 0;
  }
  return 1;
}

int RenderSetSetting(const std::string& assignment, std::string* error) {
  const SettingRow* row = nullptr;
  std::string value;
  if (!RenderParseSetting(assignment, &row, &value, error)) return 0;
  if ((row->flags & kSettingString) == 0) {
    SettingStore(row, value.c_str());
    return 1;
  }
  std::string text;
  if (!Utf8ToCodePage(value, &text, error)) return 0;
  if (static_cast<int>(text.size()) > kTextLimit) {
    *error = std::string("setting '") + row->name + "' holds at most 260 characters";
    return 0;
  }
  SettingStore(row, text.c_str());
  return 1;
}

int RenderEffectIndex(const std::string& nameOrRow) {
  if (!nameOrRow.empty() && IsWholeNumber(nameOrRow.c_str()) && nameOrRow[0] != '-' && nameOrRow[0] != '+') {
    int row = std::atoi(nameOrRow.c_str());
    return row < kEffectCount ? row : -1;
  }
  for (int row = 0; row < kEffectCount; ++row)
    if (strcasecmp(EffectTable[row].name, nameOrRow.c_str()) == 0) return row;
  return -1;
}

int RenderSetText(const std::string& utf8, std::string* error) {
  std::string text;
  if (!Utf8ToCodePage(utf8, &text, error)) return 0;
  if (text.empty()) {
    *error = "the text is empty";
    return 0;
  }
  if (static_cast<int>(text.size()) > kTextLimit) {
    *error = "the text is longer than 260 characters";
    return 0;
  }
  SettingStore(SettingFind("MainText"), text.c_str());
  return 1;
}

void RenderLoadDialog(ControlsSnapshot* snapshot, unsigned hostFlags, int customPalette, int characterSpace,
                      int useFiles) {
  SnapshotFromSettings(snapshot, hostFlags, useFiles);
  SnapshotSetCheck(snapshot, kCustomPaletteBox, customPalette);
  SnapshotSetNumber(snapshot, kCharacterSpaceEdit, characterSpace);
}
