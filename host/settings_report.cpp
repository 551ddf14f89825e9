#include "host/settings_report.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "effects/effect.h"
#include "plugin/control_table.h"
#include "plugin/settings.h"

namespace {

constexpr int kEffectListId = 30;

const char* SettingNameOf(const void* value) {
  for (const SettingRow& row : SettingTable)
    if (row.value == value) return row.name;
  return "?";
}

std::string Format(const char* format, const char* key, long long given, long long used, long long low,
                   long long high) {
  char line[200];
  std::snprintf(line, sizeof line, format, key, given, low, high, used);
  return line;
}

// A number edit shows the setting unsigned and reads it back clamped; below
// zero a range reads the text signed.
void ReportNumber(const Controls* dialog, const ControlRow& row, std::vector<std::string>* lines) {
  char range[64];
  int minimum = 0, maximum = 100, start = 0;
  ControlText(dialog, static_cast<int>(row.id) + kUpDownIdOffset, range, sizeof range);
  std::sscanf(range, "%d,%d,%d", &minimum, &maximum, &start);
  std::uint32_t stored = *static_cast<const std::uint32_t*>(row.value);
  long long given = static_cast<long long>(stored);
  if (minimum < 0 || stored > INT32_MAX) given = static_cast<std::int32_t>(stored);  // written as a negative
  long long used = ReadControlInt(dialog, static_cast<int>(row.id));
  if (given != used)
    lines->push_back(Format("%s = %lld is outside %lld to %lld; %lld is used", SettingNameOf(row.value), given,
                            used, minimum, maximum));
}

int CellCount(ControlClass kind) {
  switch (kind) {
    case kClassDirectionWell: return 8;
    case kClassScrollWell: return 4;
    case kClassTwoWayWell: return 2;
    default: return 0;
  }
}

// A direction control takes any number as its cell; the effect then gets a
// direction that no cell shows.
void ReportDirection(const Controls* dialog, const ControlRow& row, std::vector<std::string>* lines) {
  int cells = CellCount(row.subclass);
  int used = ReadControlNumber(dialog, static_cast<int>(row.id));
  if (cells == 0 || (used >= 0 && used < cells)) return;
  auto given = static_cast<std::int32_t>(*static_cast<const std::uint32_t*>(row.value));
  lines->push_back(Format("%s = %lld is not a direction of its control (%lld to %lld); %lld is used as it stands",
                          SettingNameOf(row.value), given, used, 0, cells - 1));
}

void ReportEffect(const Controls* dialog, std::vector<std::string>* lines) {
  int selection = ControlSelection(dialog, kEffectListId);
  if (selection >= 0 && selection < kEffectCount) return;
  int used = EffectRowOfSelection(selection);
  char line[200];
  std::snprintf(line, sizeof line, "MainEffect = %d is not an effect row (0 to %d); row %d, %s, is used",
                static_cast<std::int32_t>(MainEffect), kEffectCount - 1, used, EffectTable[used].name);
  lines->push_back(line);
}

}  // namespace

int EffectRowOfSelection(int selection) {
  if (selection < 0) return 0;
  return selection < kEffectCount ? selection : kEffectCount - 1;
}

std::vector<std::string> SettingsAdjustments(const Controls* dialog, int effect) {
  std::vector<std::string> lines;
  ReportEffect(dialog, &lines);
  for (const ControlRow& row : ControlTable) {
    if (row.value == nullptr) continue;
    int id = static_cast<int>(row.id);
    if (EffectPanelVisibility(id, effect) == kPanelHide) continue;  // another effect's panel
    if (row.kind == kControlNumber) ReportNumber(dialog, row, &lines);
    if (row.kind == kControlCustom) ReportDirection(dialog, row, &lines);
  }
  return lines;
}

const char* FrameCountSetting(int effect) {
  for (const ControlRow& row : ControlTable) {
    if (row.kind != kControlNumber || row.value == nullptr) continue;
    if (EffectPanelVisibility(static_cast<int>(row.id), effect) != kPanelShow) continue;
    const char* key = SettingNameOf(row.value);
    std::size_t length = std::strlen(key);
    if (length > 6 && std::strcmp(key + length - 6, "Frames") == 0) return key;
  }
  return nullptr;
}
