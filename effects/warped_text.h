// Text drawn through a table-driven warp (Mirage's Shimmer, Anaconda's
// Wave): the mask is warped, and so is a fill other than a solid colour, so
// that a patterned fill moves with the letters.
#pragma once

#include "effects/text_frame.h"

// A warp of a picture by a table of count entries at an amplitude: a new
// bitmap of the argument's size, or null.
using TableWarp = DibHandle (*)(DibHandle bitmap, const float* table, int amplitude, int count);

struct WarpSpec {
  TableWarp warp;
  const float* table;
  int amplitude;
  int count;
};

// The fill of fillId through the warped text mask at (x, y) and level.
int CompositeWarpedText(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x, int y,
                        int level, const WarpSpec& spec);
// The outline colour through the warped outline mask at (x, y), each mask
// value scaled by fade / 255.
int CompositeWarpedOutline(const TextFrame& frame, DibHead* picture, int x, int y, int fade, const WarpSpec& spec);

// The phase both warped effects preview at: index 128 of 255.
constexpr int kWarpPreviewTotal = 255;
constexpr int kWarpPreviewIndex = 128;

// Where and how a warped text is drawn.
struct WarpedTextPlan {
  int fillId;
  int backgroundId;
  int x;  // the text's left top
  int y;
  int level;  // of the text, and the fade of the outline
  WarpSpec spec;
};

// The frame: the background fill, the warped text and, with the outline on,
// the warped outline. A new 24-bit bitmap of the frame's size, or null.
DibHandle DrawWarpedText(const Controls* dialog, const TextFrame& frame, const WarpedTextPlan& plan);
