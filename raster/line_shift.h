// Moving whole lines of a picture by whole pixels, smoothly: the picture is
// enlarged to four times its size, each row (or column) of the enlargement
// is moved along itself by its own offset, and the result is shrunk back, so
// that the moved edges come out antialiased at quarter-pixel steps.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// The enlargement the lines are moved at: a table for a picture of n lines
// has kLineShiftFine * n entries.
constexpr int kLineShiftFine = 4;

enum class LineAxis {
  kRows,     // row y of the enlargement moves right by shifts[y]
  kColumns,  // column x of the enlargement moves down by shifts[x]
};

// shifts holds one offset for each row (kRows) or column (kColumns) of the
// enlargement, that is four times the bitmap's height or width. Pixels moved
// outside are dropped; what nothing lands on stays 0. A new bitmap of the
// argument's size, depth and colour table, or null.
DibHandle DibShiftLinesFine(DibHandle bitmap, const std::int32_t* shifts, LineAxis axis);

// Line i of the enlargement moves by amplitude * table[i], multiplied in
// single precision and truncated toward zero; lines from count on take the
// table's last entry. Null also for an empty table.
DibHandle DibShiftLinesByTable(DibHandle bitmap, const float* table, int count, int amplitude, LineAxis axis);
