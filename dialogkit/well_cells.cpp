#include "dialogkit/well_cells.h"

const WellLayout kEightWayWell = {8,
                                  {{0, 0, 25, 25},
                                   {25, 0, 50, 25},
                                   {50, 0, 75, 25},
                                   {50, 25, 75, 50},
                                   {0, 25, 25, 50},
                                   {0, 50, 25, 75},
                                   {25, 50, 50, 75},
                                   {50, 50, 75, 75}},
                                  7104};

const WellLayout kFourWayWell = {4, {{25, 0, 50, 25}, {50, 25, 75, 50}, {0, 25, 25, 50}, {25, 50, 50, 75}}, 7105};

const WellLayout kTwoWayWell = {2, {{0, 0, 25, 25}, {25, 0, 50, 25}}, 7106};

int WellCellAt(const WellLayout& layout, int x, int y) {
  for (int i = 0; i < layout.cellCount; ++i) {
    const DibRect& cell = layout.cells[i];
    if (x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom) return i;
  }
  return -1;
}
