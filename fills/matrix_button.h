// The tile of Background Mural: a control that owns one MatrixRecord, set up
// from the current tile group by the tile number the settings keep.
#pragma once

#include "fills/matrix_record.h"
#include "plugin/controls.h"

// A new block holding a MatrixRecord for tile index of the current group
// (the setting MatrixLibrary in the data folder). Its tile is null when the
// group or the tile cannot be had, so the built-in tile stands in. Null if
// the block cannot be made.
MemHandle MatrixButtonSetUp(int index);
// Frees the record's tile and the block.
void MatrixButtonRelease(MemHandle block);
