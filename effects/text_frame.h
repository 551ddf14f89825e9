// The first steps every text generator takes: read the shared controls and
// the panel's look, place text and shadow, measure the text (with its one
// appended blank) and size the frame; and the rendering of a fill control at
// the frame's size.
#pragma once

#include <cstdint>

#include "effects/generator_common.h"
#include "raster/text.h"

struct TextFrame {
  SharedControls shared;
  PanelLook look;
  ShadowPlacement place;
  int pad;                                    // margin on every side
  char text[kEffectTextLimit + 16];           // the text and one blank
  std::int32_t advances[kEffectTextLimit + 16];  // one per byte of text
  TextStyle style;
  int textWidth;
  int textHeight;  // the font's cell height
  FrameSize size;
};

// Fills the record from the controls. 0 for an empty text.
int TextFrameMeasure(const Controls* dialog, const PanelLookIds& ids, TextFrame* frame);

// The fill of control id rendered at width by height: a new 24-bit bitmap,
// or null if the control holds no fill or the render fails.
DibHandle RenderFillOf(const Controls* dialog, int id, int width, int height);

// A text mask of the frame's size with the text's left top at (x, y).
DibHandle TextFrameMask(const TextFrame& frame, int x, int y, int level);

// The shadow: the fill of control shadowFillId, read relative to the
// shadow's place (x, y) so that it moves with the letters, through the
// shadow mask, blurred when the look is soft. 1, or 0 on a failure.
int TextFrameShadow(const Controls* dialog, const TextFrame& frame, int shadowFillId, DibHead* picture, int x,
                    int y);
// The text: fill, fixed to the frame, through the text mask at (x, y) with
// the look's fill level. 1, or 0 on a failure.
int TextFrameText(const TextFrame& frame, const DibHead* fill, DibHead* picture, int x, int y);
// The outline colour through the outline mask at (x, y), one pixel to the
// left. 1, or 0 on a failure.
int TextFrameOutline(const TextFrame& frame, DibHead* picture, int x, int y);
