#include "plugin/controls_snapshot.h"

#include <cstring>

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

constexpr ControlsOps kSnapshotOps = {SnapshotText, SnapshotChecked, SnapshotSelection, SnapshotData};

}  // namespace

void SnapshotInit(ControlsSnapshot* snapshot) { snapshot->controls = {&kSnapshotOps, snapshot, nullptr}; }

void SnapshotClear(ControlsSnapshot* snapshot) {
  for (auto& entry : snapshot->data) MemFree(entry.second);
  snapshot->data.clear();
  snapshot->texts.clear();
  snapshot->checks.clear();
  snapshot->selections.clear();
}

void SnapshotSetText(ControlsSnapshot* snapshot, int id, const std::string& text) { snapshot->texts[id] = text; }

void SnapshotSetNumber(ControlsSnapshot* snapshot, int id, long long value) {
  snapshot->texts[id] = std::to_string(value);
}

void SnapshotSetCheck(ControlsSnapshot* snapshot, int id, int checked) { snapshot->checks[id] = checked; }

void SnapshotSetSelection(ControlsSnapshot* snapshot, int id, int index) { snapshot->selections[id] = index; }

void SnapshotSetData(ControlsSnapshot* snapshot, int id, MemHandle block) {
  MemHandle& slot = snapshot->data[id];
  if (slot != block) MemFree(slot);
  slot = block;
}
