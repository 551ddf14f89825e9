// The first steps every text generator takes: read the shared controls and
// the panel's look, place text and shadow, measure the text (with its one
// appended blank) and size the frame; and the rendering of a fill control at
// the frame's size.
#pragma once

#include <cstdint>

#include "effects/generator_common.h"
#include "raster/text.h"

// The text laid once for a whole build at each level its frames ask for
// (shadow, fill, full cover for the outline). An effect whose frames only
// move the text keeps one for its build and lends it to each frame's
// TextFrame; every text mask of the frame is then a part of it.
struct LaidTextLevels {
  static constexpr int kMost = 3;
  int count;
  int levels[kMost];
  LaidText laid[kMost];
};

struct TextFrame {
  LaidTextLevels* laidLevels;  // null: each mask lays the text anew
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

// Fills the record from the controls, without laid levels. 0 for an empty
// text.
int TextFrameMeasure(const Controls* dialog, const PanelLookIds& ids, TextFrame* frame);

// As TextFrameMeasure, but for an effect that keeps its text in its record:
// the text is measured as it stands, its blank already appended, and an
// empty text is measured too.
void TextFrameMeasureText(const Controls* dialog, const PanelLookIds& ids, const char* text, TextFrame* frame);

// The fill of control id rendered at width by height: a new 24-bit bitmap,
// or null if the control holds no fill or the render fails.
DibHandle RenderFillOf(const Controls* dialog, int id, int width, int height);

// The gradient of bar control id painted left to right at width by height:
// a new 24-bit bitmap, or null if the bar holds no gradient or the paint fails.
DibHandle GradientStripOf(const Controls* dialog, int id, int width, int height);

// Whether control id holds a solid colour; such a fill looks the same
// however it is moved.
int FillIsSolid(const Controls* dialog, int id);

// A text mask of the frame's size with the text's left top at (x, y).
DibHandle TextFrameMask(const TextFrame& frame, int x, int y, int level);

// Blurs a shadow mask in place with softness + 2 when softness is above 0.
// 0 if the mask is missing or the blur fails.
int SoftenShadowMask(DibOwner* mask, int softness);

// How a shadow's fill lies under it: fixed to the frame, or read relative to
// the shadow's place so that it moves with the letters.
enum ShadowFillPlace { kShadowFillFixed, kShadowFillMoves };

// The shadow step: the fill of control fillId at frame size through the
// shadow mask at (x, y) at the shadow's level, blurred by softness + 2 when
// soft. 0 on failure.
int TextFrameCompositeShadow(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x,
                             int y, ShadowFillPlace place);
// The shadow step where the text rests: at (pad, pad) moved by the shadow's
// displacement, and only when the look has the shadow on. 0 on failure.
int TextFrameCompositeRestingShadow(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId,
                                    ShadowFillPlace place);
// The text step: fill (fixed to the frame) through the text mask at (x, y)
// at the fill's level, only where the fill reaches: a fill smaller than the
// frame leaves the letters beyond it unpainted. 0 on failure.
int TextFrameCompositeText(const TextFrame& frame, DibHead* picture, const DibHead* fill, int x, int y);
// The text step with the fill of control fillId at frame size, fixed to the
// frame. 0 on failure.
int TextFrameCompositeFillOf(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x, int y);
// The text step in one colour through the text mask at (x, y) at the fill's
// level. 0 on failure.
int TextFrameCompositeColour(const TextFrame& frame, DibHead* picture, std::uint32_t colour, int x, int y);
// The outline step, the outline colour one pixel to the left of its mask
// with the text's left top at (x, y). 0 on failure.
int TextFrameCompositeOutlineLeft(const TextFrame& frame, DibHead* picture, int x, int y);
// The outline step with the outline where its mask lies. 0 on failure.
int TextFrameCompositeOutline(const TextFrame& frame, DibHead* picture, int x, int y);
