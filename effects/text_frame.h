// The first steps every text generator takes: read the shared controls and
// the panel's look, place text and shadow, measure the text (with its one
// appended blank) and size the frame; and the rendering of a fill control at
// the frame's size.
#pragma once

#include <cstdint>

#include "effects/effect.h"
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

// Where a shadow's fill is read: at the frame's own coordinates, or relative
// to the shadow's place so that it moves with the letters.
enum ShadowFillPlace { kShadowFillFixed, kShadowFillFollows };

// The shadow at (x, y): the fill of control fillId through the text mask at
// the look's shadow level, blurred by the look's softness. 1, or 0 when
// something could not be made.
int TextFrameShadow(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x, int y,
                    ShadowFillPlace place);
// The text at (x, y) at level: the fill, read at the frame's coordinates,
// through the text mask. 1 or 0.
int TextFrameFill(const TextFrame& frame, DibHead* picture, const DibHead* fill, int x, int y, int level);
// The text at (x, y) at level in one colour. 1 or 0.
int TextFrameColour(const TextFrame& frame, DibHead* picture, std::uint32_t colour, int x, int y, int level);

// The outline at the text's place in the look's colour, blended where its
// mask lies or one pixel to the left of it.
enum OutlinePlace { kOutlineInPlace, kOutlineShiftedLeft };
int TextFrameOutline(const TextFrame& frame, DibHead* picture, int x, int y, OutlinePlace place);

// Appends a frame with the given delay and no transparency; a frame that
// cannot be appended is freed. 1 or 0.
int EffectAppendFrame(EffectContext* context, DibHandle image, std::uint32_t delay);
// A frame from the generator, appended as above. 1, or 0 when either fails.
int EffectAppendGenerated(EffectContext* context, DibHandle (*generate)(EffectContext*), std::uint32_t delay);
