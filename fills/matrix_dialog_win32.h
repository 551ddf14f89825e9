// The tile dialog: the tiles of a group in a list of cells, the group's
// combo box, "+" and "-" to add a picture or remove a tile (with Shift: save
// the list as a new group, or delete the group), and a preview of the chosen
// tile repeated.
#pragma once

#include <windows.h>

#include "fills/matrix_record.h"

constexpr int kMatrixDialogTemplate = 9981;

// Runs the dialog, owned by owner, on a copy of record with its own tile.
// Confirmed (1): the caller's tile is freed and the working record copied
// over it. Cancelled (0): the record stays as it was.
int MatrixDialogRun(HWND owner, MatrixRecord* record);

// Fills the dialog's list from the current group. A group not there yet
// leaves the list as it was: 1, no error. 0 if the file is not a whole group.
int MatrixFileRead(HWND dialog);
// Writes the dialog's list to the current group, keeping the last version
// as .bak. 1, or 0.
int MatrixFileWrite(HWND dialog);
