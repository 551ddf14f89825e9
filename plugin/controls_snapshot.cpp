#include "plugin/controls_snapshot.h"

#include <cctype>
#include <cstdio>
#include <cstring>

#include "plugin/control_table.h"

namespace {

ControlsSnapshot* Self(void* impl) { return static_cast<ControlsSnapshot*>(impl); }

int SnapshotText(void* impl, int id, char* buffer, int size) {
  if (size < 1) return 0;
  buffer[0] = '\0';
  auto found = Self(impl)->texts.find(id);
  if (found == Self(impl)->texts.end()) return 0;
  int length = static_cast<int>(found->second.size());
  if (length > size - 1) length = size - 1;
  std::memcpy(buffer, found->second.data(), length);
  buffer[length] = '\0';
  return length;
}

int SnapshotChecked(void* impl, int id) {
  auto found = Self(impl)->checks.find(id);
  return found == Self(impl)->checks.end() ? 0 : found->second;
}

int SnapshotSelection(void* impl, int id) {
  auto found = Self(impl)->selections.find(id);
  return found == Self(impl)->selections.end() ? -1 : found->second;
}

MemHandle SnapshotData(void* impl, int id) {
  auto found = Self(impl)->data.find(id);
  return found == Self(impl)->data.end() ? nullptr : found->second;
}

void SnapshotWriteText(void* impl, int id, const char* text) { Self(impl)->texts[id] = text; }

void SnapshotWriteCheck(void* impl, int id, int checked) { Self(impl)->checks[id] = checked != 0; }

// A list's window text is its selected item's; no selection leaves it empty.
void SnapshotSelectIndex(void* impl, int id, int index) {
  const std::vector<std::string>& items = Self(impl)->items[id];
  bool inRange = index >= 0 && index < static_cast<int>(items.size());
  Self(impl)->selections[id] = inRange ? index : -1;
  Self(impl)->texts[id] = inRange ? items[index] : std::string();
}

bool BeginsWithIgnoringCase(const std::string& item, const char* text) {
  for (std::size_t i = 0; text[i] != '\0'; ++i) {
    if (i >= item.size()) return false;
    if (std::tolower(static_cast<unsigned char>(item[i])) != std::tolower(static_cast<unsigned char>(text[i]))) {
      return false;
    }
  }
  return true;
}

void SnapshotSelectText(void* impl, int id, const char* text) {
  const std::vector<std::string>& items = Self(impl)->items[id];
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (BeginsWithIgnoringCase(items[i], text)) {
      SnapshotSelectIndex(impl, id, static_cast<int>(i));
      return;
    }
  }
}

void SnapshotClearList(void* impl, int id) {
  Self(impl)->items[id].clear();
  SnapshotSelectIndex(impl, id, -1);
}

void SnapshotAddItem(void* impl, int id, const char* text) { Self(impl)->items[id].push_back(text); }

void SnapshotFill(void* impl, int id, int filler) {
  ControlFillList(&Self(impl)->controls, id, static_cast<ControlFiller>(filler));
}

void SnapshotShowMessage(void* impl, const char* text) {
  Self(impl)->messages.push_back(text);
  if (Self(impl)->messagesToStderr) std::fprintf(stderr, "lwmotio3: %s\n", text);
}

// No pointer to show: the wait cursor has nothing to change.
void* SnapshotWaitCursor(void*, int, void*) { return nullptr; }

// No up-downs, text limits or paint: the range stays in the up-down's text.
constexpr ControlsOps kSnapshotOps = {SnapshotText,      SnapshotChecked,    SnapshotSelection, SnapshotData,
                                      SnapshotWriteText, SnapshotWriteCheck, SnapshotSelectIndex,
                                      SnapshotSelectText, SnapshotClearList, SnapshotAddItem,   SnapshotFill,
                                      nullptr,           nullptr,            nullptr,
                                      SnapshotShowMessage, SnapshotWaitCursor};

void ReleaseData(ControlsSnapshot* snapshot, int id, MemHandle block) {
  auto release = snapshot->releases.find(id);
  if (release != snapshot->releases.end())
    release->second(block);
  else
    MemFree(block);
}

}  // namespace

void SnapshotInit(ControlsSnapshot* snapshot) { snapshot->controls = {&kSnapshotOps, snapshot, nullptr}; }

void SnapshotClear(ControlsSnapshot* snapshot) {
  for (auto& entry : snapshot->data) ReleaseData(snapshot, entry.first, entry.second);
  snapshot->data.clear();
  snapshot->releases.clear();
  snapshot->texts.clear();
  snapshot->checks.clear();
  snapshot->selections.clear();
  snapshot->items.clear();
  snapshot->messages.clear();
}

void SnapshotSetText(ControlsSnapshot* snapshot, int id, const std::string& text) { snapshot->texts[id] = text; }

void SnapshotSetNumber(ControlsSnapshot* snapshot, int id, long long value) {
  snapshot->texts[id] = std::to_string(value);
}

void SnapshotSetCheck(ControlsSnapshot* snapshot, int id, int checked) { snapshot->checks[id] = checked; }

void SnapshotSetSelection(ControlsSnapshot* snapshot, int id, int index) { snapshot->selections[id] = index; }

void SnapshotSetData(ControlsSnapshot* snapshot, int id, MemHandle block) {
  MemHandle& slot = snapshot->data[id];
  if (slot != block) ReleaseData(snapshot, id, slot);
  snapshot->releases.erase(id);
  slot = block;
}

void SnapshotSetOwningData(ControlsSnapshot* snapshot, int id, MemHandle block, void (*release)(MemHandle)) {
  SnapshotSetData(snapshot, id, block);
  snapshot->releases[id] = release;
}
