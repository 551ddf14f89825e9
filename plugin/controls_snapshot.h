// Headless stand-in for the dialog: a snapshot of control values. Texts,
// check states, list selections and custom-control data blocks are set by
// id; reads go through the same Controls seam as the live dialog.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "plugin/controls.h"

struct ControlsSnapshot {
  std::map<int, std::string> texts;
  std::map<int, int> checks;
  std::map<int, int> selections;
  std::map<int, MemHandle> data;  // owned by the snapshot
  std::map<int, void (*)(MemHandle)> releases;  // how a block that owns more is freed
  std::map<int, std::vector<std::string>> items;  // the items of lists
  std::vector<std::string> messages;  // every message shown, in order
  bool messagesToStderr = false;      // also print each as one line on stderr
  Controls controls;
};

void SnapshotInit(ControlsSnapshot* snapshot);
// Frees the data blocks the snapshot owns.
void SnapshotClear(ControlsSnapshot* snapshot);
void SnapshotSetText(ControlsSnapshot* snapshot, int id, const std::string& text);
void SnapshotSetNumber(ControlsSnapshot* snapshot, int id, long long value);
void SnapshotSetCheck(ControlsSnapshot* snapshot, int id, int checked);
void SnapshotSetSelection(ControlsSnapshot* snapshot, int id, int index);
// Takes over the block; a block already held for the id is freed.
void SnapshotSetData(ControlsSnapshot* snapshot, int id, MemHandle block);
// As SnapshotSetData, for a block that owns other blocks: release frees it
// with them.
void SnapshotSetOwningData(ControlsSnapshot* snapshot, int id, MemHandle block, void (*release)(MemHandle));
