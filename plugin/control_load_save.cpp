// ControlsLoad and ControlsSave: one walk over the control table each, by
// kind and flags, through the controls seam.
#include <cstdio>

#include "plugin/control_table.h"
#include "plugin/settings.h"

namespace {

constexpr int kListItemSize = 260;

bool Has(const ControlRow& row, std::uint32_t flag) { return (row.flags & flag) != 0; }

std::uint32_t* NumberOf(const ControlRow& row) { return static_cast<std::uint32_t*>(row.value); }
char* TextOf(const ControlRow& row) { return static_cast<char*>(row.value); }

void Refresh(const Controls* dialog, const ControlRow& row) {
  if (dialog->ops->refresh) dialog->ops->refresh(dialog->impl, row.id, row.limit, row.param);
}

// The item list cut at ";", runs of ";" counting as one; a piece longer than
// an item may be is cut short.
void AddItems(const Controls* dialog, const ControlRow& row) {
  ControlClearList(dialog, row.id);
  const char* cursor = row.paramText;
  while (*cursor != '\0') {
    while (*cursor == ';') ++cursor;
    if (*cursor == '\0') break;
    char item[kListItemSize + 1];
    int length = 0;
    for (; *cursor != '\0' && *cursor != ';'; ++cursor) {
      if (length < kListItemSize) item[length++] = *cursor;
    }
    item[length] = '\0';
    ControlAddItem(dialog, row.id, item);
  }
}

void LoadList(const Controls* dialog, const ControlRow& row) {
  if (Has(row, kRowLoad)) {
    if (dialog->ops->fill) dialog->ops->fill(dialog->impl, row.id, row.init);
    if (Has(row, kRowRefresh)) Refresh(dialog, row);
  }
  if (Has(row, kRowItemList) && row.paramText) AddItems(dialog, row);
  if (Has(row, kRowLoadText) && row.value) ControlSelectText(dialog, row.id, TextOf(row));
  if (Has(row, kRowLoadIndex) && row.value) ControlSetSelection(dialog, row.id, static_cast<int>(*NumberOf(row)));
  if (Has(row, kRowRefresh)) Refresh(dialog, row);
}

void LoadNumber(const Controls* dialog, const ControlRow& row) {
  if (!Has(row, kRowSave) || !row.value) return;
  char range[64];
  ControlText(dialog, row.id + kUpDownIdOffset, range, sizeof range);
  int minimum = 0;
  int maximum = 100;
  int position = 0;
  int found = std::sscanf(range, "%d,%d,%d", &minimum, &maximum, &position);
  if (found > 0 && dialog->ops->setUpDown) {
    dialog->ops->setUpDown(dialog->impl, row.id + kUpDownIdOffset, found, minimum, maximum, position);
  }
  char text[16];
  std::snprintf(text, sizeof text, "%u", *NumberOf(row));
  ControlSetText(dialog, row.id, text);
}

void LoadRow(const Controls* dialog, const ControlRow& row) {
  switch (row.kind) {
    case kControlDropList:
    case kControlListBox:
      LoadList(dialog, row);
      return;
    case kControlCheckBox:
      if (!row.value) return;
      ControlSetCheck(dialog, row.id, static_cast<int>(*NumberOf(row)));
      break;
    case kControlNumber:
      LoadNumber(dialog, row);
      return;
    case kControlTextEdit:
      if (Has(row, kRowSave) && dialog->ops->limitText) dialog->ops->limitText(dialog->impl, row.id, row.limit);
      if (!Has(row, kRowText) || !row.value) return;
      ControlSetText(dialog, row.id, TextOf(row));
      break;
    case kControlCustom: {
      if (!Has(row, kRowLoad) || !row.value) return;
      char text[16];
      std::snprintf(text, sizeof text, "%d", static_cast<std::int32_t>(*NumberOf(row)));
      ControlSetText(dialog, row.id, text);
      break;
    }
    default:
      return;
  }
  if (Has(row, kRowRefresh)) Refresh(dialog, row);
}

// Text to a setting's buffer, at most the row's limit.
void SaveText(const Controls* dialog, const ControlRow& row) {
  std::int64_t limit = row.limit < kSettingStringSize - 1 ? row.limit : kSettingStringSize - 1;
  ControlText(dialog, row.id, TextOf(row), static_cast<int>(limit) + 1);
}

void SaveRow(const Controls* dialog, const ControlRow& row) {
  if (!row.value) return;
  switch (row.kind) {
    case kControlDropList:
    case kControlListBox:
      if (Has(row, kRowSave)) *NumberOf(row) = static_cast<std::uint32_t>(ControlSelection(dialog, row.id));
      if (Has(row, kRowText) && Has(row, kRowSaveText)) SaveText(dialog, row);
      return;
    case kControlCheckBox:
      *NumberOf(row) = static_cast<std::uint32_t>(ControlChecked(dialog, row.id));
      return;
    case kControlNumber:
      if (Has(row, kRowSave)) *NumberOf(row) = static_cast<std::uint32_t>(ReadControlInt(dialog, row.id));
      return;
    case kControlTextEdit:
      if (Has(row, kRowText)) SaveText(dialog, row);
      return;
    case kControlCustom:
      if (Has(row, kRowSave)) *NumberOf(row) = static_cast<std::uint32_t>(ReadControlNumber(dialog, row.id));
      return;
    default:
      return;
  }
}

}  // namespace

void ControlsLoad(const Controls* dialog) {
  for (const ControlRow& row : ControlTable) LoadRow(dialog, row);
}

void ControlsSave(const Controls* dialog) {
  for (const ControlRow& row : ControlTable) SaveRow(dialog, row);
}
