// The cells of the direction wells: grids of 25-pixel cells whose numbers are
// the direction values the effects read. The eight-way grid has no centre cell.
#pragma once

#include "raster/dib.h"

struct WellLayout {
  int cellCount;
  DibRect cells[8];  // in pixels of the control, in cell order
  int iconResource;  // RT_RCDATA strip of square icons, in cell order
};

extern const WellLayout kEightWayWell;  // shadow directions
extern const WellLayout kFourWayWell;   // scroll directions: up, right, left, down
extern const WellLayout kTwoWayWell;    // left, right

// The cell that holds the point, or -1 if none does.
int WellCellAt(const WellLayout& layout, int x, int y);
