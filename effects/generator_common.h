// What every text generator shares: the reading of the common controls and
// of a panel's look, the placement of text and shadow, the frame geometry,
// and the blend and compositing loops that lay fills and outlines through
// 8-bit masks onto a 24-bit frame.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "plugin/controls.h"
#include "raster/dib.h"

constexpr int kEffectTextLimit = 260;  // the text edit holds at most this many bytes
constexpr int kFontNameLimit = 63;

// The controls outside the panels, read at the moment of the call.
struct SharedControls {
  char text[kEffectTextLimit + 1];
  int textLength;
  char fontName[kFontNameLimit + 1];
  int fontSize;        // 4 to 144
  int bold;            // 1 or 0
  int italic;
  int antialias;
  int characterSpace;  // per cent, 50 to 150
  int padding;         // MainPadding, 0 to 512
  int delay;
  int pause;
  int rolling;         // MainRolling: 1 animates, 0 makes one still frame
};

void ReadSharedControls(const Controls* dialog, SharedControls* shared);

// The text control into text (room for kEffectTextLimit + 2 bytes), for an
// effect that keeps its text in its record. A blank is appended if always is
// set or there is any text. Returns the length without that blank.
int ReadRecordText(const Controls* dialog, char* text, int always);

// Ids of an effect's look controls; 0 where the panel has no such control.
struct PanelLookIds {
  int shadowEnable;
  int outlineEnable;
  int fillOpacity;
  int shadowOpacity;
  int shadowSoftness;
  int shadowOffset;
  int shadowDirection;
  int outlineColour;
};

// The look as the generator uses it. Opacities 1 to 256 become mask levels
// 0 to 255; a panel without a fill opacity draws its text at level 255.
struct PanelLook {
  int shadowOn;
  int outlineOn;
  int fillLevel;
  int shadowLevel;
  int softness;
  int offset;
  int direction;
  std::uint32_t outlineColour;
};

void ReadPanelLook(const Controls* dialog, const PanelLookIds& ids, PanelLook* look);

// Where the text and the shadow are displaced for a shadow direction.
// One of the two stays at 0, so the picture only grows right and down.
struct ShadowPlacement {
  int textX;
  int textY;
  int shadowX;
  int shadowY;
};

ShadowPlacement ShadowPlacementFor(int direction, int offset);

// The frame's margin on every side.
int FrameMargin(int padding, int softness, int outlineOn);

struct FrameSize {
  int width;
  int height;
};

// The further margin of the effects whose layers spread beyond the letters:
// a fifth of the font size, at least 2.
int SpreadMargin(int fontSize);

// The offset counts only with the shadow on.
FrameSize FrameSizeFor(int textWidth, int textHeight, int pad, int shadowOn, int offset);

// Colour over pixel through mask level, per channel c*m/255 + b*(255-m)/255
// with each product truncated by itself. Values are red-low, as pixel values;
// a pixel read of -1 counts as 255 in each channel.
std::uint32_t BlendPixel(std::uint32_t colour, std::uint32_t pixel, int level);

// Walks the whole mask and blends the fill, read at the same coordinates,
// into the frame.
void CompositeFill(DibHead* frame, const DibHead* fill, const DibHead* mask);
// As CompositeFill, but the fill is read relative to (placeX, placeY), so it
// moves with what the mask holds.
void CompositeFillFrom(DibHead* frame, const DibHead* fill, const DibHead* mask, int placeX, int placeY);
// As CompositeFillFrom with a fill of one colour, fillWidth by fillHeight:
// a place past it reads as white, as a read past a bitmap does.
void CompositeColourFrom(DibHead* frame, std::uint32_t colour, int fillWidth, int fillHeight, const DibHead* mask,
                         int placeX, int placeY);
// As CompositeFill, but only where (x, y) lies inside the fill as well: a
// fill smaller than the mask leaves the rest unpainted.
void CompositeFillWithin(DibHead* frame, const DibHead* fill, const DibHead* mask);
// Which part of a mask a fill goes through and how: the loop starts at mask
// column firstX and row firstY, reads the fill at (x - fillX, y - fillY), and
// scales each mask value by level / 255 (truncating) before the blend.
struct FillWalk {
  int firstX;
  int firstY;
  int fillX;
  int fillY;
  int level;
};
void CompositeFillScaled(DibHead* frame, const DibHead* fill, const DibHead* mask, const FillWalk& walk);
// Blends the fill, read at the frame's own coordinates, through a mask laid
// with its left top at (left, top).
void CompositeFillAt(DibHead* frame, const DibHead* fill, const DibHead* mask, int left, int top);
// Blends one colour through the mask at its own coordinates.
void CompositeOutline(DibHead* frame, std::uint32_t colour, const DibHead* mask);
// As CompositeOutline, with each mask value first scaled to m * level / 255:
// the outline fades with the text.
void CompositeOutlineFaded(DibHead* frame, std::uint32_t colour, const DibHead* mask, int level);
// Blends one colour with the outline one pixel to the left: the mask at
// (x, y), x from 1, goes into the frame at (x - 1, y).
void CompositeOutlineShiftedLeft(DibHead* frame, std::uint32_t colour, const DibHead* mask);
// Blends one colour through a single letter's outline ring, laid as the
// letter's mask at (left, top) is: the ring's value at (i + 1, j + 1), times
// level / 255, lands at (left + i, top + j). The ring's top row and left
// column go unused, so the outline shows only right of and below the glyph.
void CompositeLetterOutline(DibHead* frame, std::uint32_t colour, const DibHead* ring, int left, int top, int level);

// Appends a frame with its delay (transparent index -1); the list owns it from
// then on. On failure the frame is freed and 0 returned.
int AppendEffectFrame(EffectContext* context, DibHandle image, std::uint32_t delay);

// What every build callback reads first.
struct BuildTiming {
  int rolling;          // MainRolling: 1 animates, 0 makes one still frame
  std::uint32_t delay;  // MainDelay, of every frame
  std::uint32_t pause;  // MainPause, added where the animation rests
};
BuildTiming ReadBuildTiming(const Controls* dialog);

// An effect's generator: one new 24-bit frame for the context, or null.
using EffectGenerator = DibHandle (*)(EffectContext* context);

// The preview's one call: sets the preview bit and the record (already
// holding the preview's values), and leaves the generator's picture in
// previewBitmap. Always 1.
int RunEffectPreview(EffectContext* context, void* extra, EffectGenerator generate);

// Calls the generator and appends its frame with the delay: 0 if either fails.
int AppendGeneratedFrame(EffectContext* context, EffectGenerator generate, std::uint32_t delay);
// A build's first call, only to learn the frame's size: the generator with
// the still bit, its frame freed and the bit cleared again. 0 if it fails.
int MeasureBuildFrame(EffectContext* context, EffectGenerator generate, FrameSize* size);
// The one frame of a build without MainRolling, made with the still bit and
// appended: 0 if either fails.
int AppendStillFrame(EffectContext* context, EffectGenerator generate, std::uint32_t delay);
