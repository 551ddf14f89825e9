#include "effects/text_frame.h"

#include <cstring>

#include "fills/fountain_button.h"
#include "fills/material.h"
#include "raster/blur.h"

namespace {

// Measures frame->text in the style of the shared controls and sizes the frame.
void MeasureLaidText(const Controls* dialog, TextFrame* frame) {
  const SharedControls& shared = frame->shared;
  std::memset(frame->advances, 0, sizeof frame->advances);
  frame->style = TextStyleMake(dialog->window, shared.fontName, shared.fontSize, shared.bold, shared.italic,
                               shared.antialias);
  TextMeasure(dialog->window, frame->text, frame->style, shared.characterSpace, &frame->textWidth,
              &frame->textHeight, frame->advances);
  frame->size = FrameSizeFor(frame->textWidth, frame->textHeight, frame->pad, frame->look.shadowOn,
                             frame->look.offset);
}

void ReadLook(const Controls* dialog, const PanelLookIds& ids, TextFrame* frame) {
  frame->laidLevels = nullptr;
  ReadSharedControls(dialog, &frame->shared);
  ReadPanelLook(dialog, ids, &frame->look);
  frame->place = ShadowPlacementFor(frame->look.direction, frame->look.offset);
  frame->pad = FrameMargin(frame->shared.padding, frame->look.softness, frame->look.outlineOn);
}

// The colour every pixel of control id's fill holds once rendered, or -1
// for a fill that is not solid: a solid fill need not be rendered to be laid.
std::int32_t SolidColourOf(const Controls* dialog, int id) {
  std::int32_t colour = EffectBackgroundColourOf(dialog, id);
  return colour != -1 ? colour & 0xFFFFFF : -1;
}

// The text laid at level in the frame's laid levels, laid there on first
// use; null when there are none, no room is left or the laying fails.
const LaidText* LaidAtLevel(const TextFrame& frame, int level) {
  LaidTextLevels* levels = frame.laidLevels;
  if (levels == nullptr) return nullptr;
  for (int i = 0; i < levels->count; ++i)
    if (levels->levels[i] == level) return &levels->laid[i];
  if (levels->count == LaidTextLevels::kMost) return nullptr;
  LaidText* laid = &levels->laid[levels->count];
  if (TextLay(frame.style, frame.text, level, frame.advances, laid) == 0) return nullptr;
  levels->levels[levels->count++] = level;
  return laid;
}

}  // namespace

int TextFrameMeasure(const Controls* dialog, const PanelLookIds& ids, TextFrame* frame) {
  ReadLook(dialog, ids, frame);
  if (frame->shared.textLength < 1) return 0;
  std::memset(frame->text, 0, sizeof frame->text);
  std::memcpy(frame->text, frame->shared.text, frame->shared.textLength);
  frame->text[frame->shared.textLength] = ' ';
  MeasureLaidText(dialog, frame);
  return 1;
}

void TextFrameMeasureText(const Controls* dialog, const PanelLookIds& ids, const char* text, TextFrame* frame) {
  ReadLook(dialog, ids, frame);
  std::memset(frame->text, 0, sizeof frame->text);
  std::strncpy(frame->text, text, kEffectTextLimit + 1);
  MeasureLaidText(dialog, frame);
}

DibHandle RenderFillOf(const Controls* dialog, int id, int width, int height) {
  MaterialRecord* record = MaterialLock(dialog, id);
  if (record == nullptr) return nullptr;
  DibHandle fill = MaterialRender(record, width, height);
  MaterialUnlock(dialog, id);
  return fill;
}

DibHandle GradientStripOf(const Controls* dialog, int id, int width, int height) {
  const FountainRecord* record = FountainLock(dialog, id);
  if (record == nullptr) return nullptr;
  DibHandle strip = FountainStrip(record, width, height);
  FountainUnlock(dialog, id);
  return strip;
}

int FillIsSolid(const Controls* dialog, int id) { return SolidColourOf(dialog, id) != -1 ? 1 : 0; }

DibHandle TextFrameMask(const TextFrame& frame, int x, int y, int level) {
  if (const LaidText* laid = LaidAtLevel(frame, level))
    return LaidTextPart(*laid, x, y, frame.size.width, frame.size.height);
  return TextMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, level, frame.advances);
}

int SoftenShadowMask(DibOwner* mask, int softness) {
  if (*mask == nullptr) return 0;
  if (softness > 0) mask->reset(GaussianBlur(mask->get(), softness + 2));
  return *mask != nullptr ? 1 : 0;
}

int TextFrameCompositeShadow(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x,
                             int y, ShadowFillPlace place) {
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.shadowLevel));
  if (SoftenShadowMask(&mask, frame.look.softness) == 0) return 0;
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  const int fillX = place == kShadowFillMoves ? x : 0;
  const int fillY = place == kShadowFillMoves ? y : 0;
  const std::int32_t solid = SolidColourOf(dialog, fillId);
  if (solid != -1) {
    CompositeColourFrom(picture, static_cast<std::uint32_t>(solid), frame.size.width, frame.size.height, maskLock.head,
                        fillX, fillY);
    return 1;
  }
  DibOwner fill(RenderFillOf(dialog, fillId, frame.size.width, frame.size.height));
  DibLock fillLock(fill.get());
  if (fillLock.head == nullptr) return 0;
  CompositeFillFrom(picture, fillLock.head, maskLock.head, fillX, fillY);
  return 1;
}

int TextFrameCompositeRestingShadow(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId,
                                    ShadowFillPlace place) {
  if (frame.look.shadowOn == 0) return 1;
  return TextFrameCompositeShadow(dialog, frame, picture, fillId, frame.pad + frame.place.shadowX,
                                  frame.pad + frame.place.shadowY, place);
}

int TextFrameCompositeText(const TextFrame& frame, DibHead* picture, const DibHead* fill, int x, int y) {
  if (fill == nullptr) return 0;
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.fillLevel));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeFillWithin(picture, fill, maskLock.head);
  return 1;
}

int TextFrameCompositeFillOf(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x,
                             int y) {
  const std::int32_t solid = SolidColourOf(dialog, fillId);
  if (solid != -1) return TextFrameCompositeColour(frame, picture, static_cast<std::uint32_t>(solid), x, y);
  DibOwner fill(RenderFillOf(dialog, fillId, frame.size.width, frame.size.height));
  DibLock fillLock(fill.get());
  return TextFrameCompositeText(frame, picture, fillLock.head, x, y);
}

int TextFrameCompositeColour(const TextFrame& frame, DibHead* picture, std::uint32_t colour, int x, int y) {
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.fillLevel));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutline(picture, colour, maskLock.head);
  return 1;
}

namespace {

constexpr int kCoverLevel = 255;  // the outline grows from the text at full cover

int CompositeOutlineMask(const TextFrame& frame, DibHead* picture, int x, int y, int shiftLeft) {
  DibOwner cover(TextFrameMask(frame, x, y, kCoverLevel));
  DibOwner mask(cover != nullptr ? MaskRing(cover.get()) : nullptr);
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  if (shiftLeft != 0)
    CompositeOutlineShiftedLeft(picture, frame.look.outlineColour, maskLock.head);
  else
    CompositeOutline(picture, frame.look.outlineColour, maskLock.head);
  return 1;
}

}  // namespace

int TextFrameCompositeOutlineLeft(const TextFrame& frame, DibHead* picture, int x, int y) {
  return CompositeOutlineMask(frame, picture, x, y, 1);
}

int TextFrameCompositeOutline(const TextFrame& frame, DibHead* picture, int x, int y) {
  return CompositeOutlineMask(frame, picture, x, y, 0);
}
