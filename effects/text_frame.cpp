#include "effects/text_frame.h"

#include <cstring>

#include "fills/material.h"
#include "raster/blur.h"

int TextFrameMeasure(const Controls* dialog, const PanelLookIds& ids, TextFrame* frame) {
  ReadSharedControls(dialog, &frame->shared);
  ReadPanelLook(dialog, ids, &frame->look);
  frame->place = ShadowPlacementFor(frame->look.direction, frame->look.offset);
  frame->pad = FrameMargin(frame->shared.padding, frame->look.softness, frame->look.outlineOn);
  if (frame->shared.textLength < 1) return 0;

  std::memset(frame->text, 0, sizeof frame->text);
  std::memset(frame->advances, 0, sizeof frame->advances);
  std::memcpy(frame->text, frame->shared.text, frame->shared.textLength);
  frame->text[frame->shared.textLength] = ' ';

  const SharedControls& shared = frame->shared;
  frame->style = TextStyleMake(dialog->window, shared.fontName, shared.fontSize, shared.bold, shared.italic,
                               shared.antialias);
  TextMeasure(dialog->window, frame->text, frame->style, shared.characterSpace, &frame->textWidth,
              &frame->textHeight, frame->advances);
  frame->size = FrameSizeFor(frame->textWidth, frame->textHeight, frame->pad, frame->look.shadowOn,
                             frame->look.offset);
  return 1;
}

DibHandle RenderFillOf(const Controls* dialog, int id, int width, int height) {
  MaterialRecord* record = MaterialLock(dialog, id);
  if (record == nullptr) return nullptr;
  DibHandle fill = MaterialRender(record, width, height);
  MaterialUnlock(dialog, id);
  return fill;
}

DibHandle TextFrameMask(const TextFrame& frame, int x, int y, int level) {
  return TextMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, level, frame.advances);
}

int TextFrameShadow(const Controls* dialog, const TextFrame& frame, int shadowFillId, DibHead* picture, int x,
                    int y) {
  DibOwner fill(RenderFillOf(dialog, shadowFillId, frame.size.width, frame.size.height));
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.shadowLevel));
  if (fill == nullptr || mask == nullptr) return 0;
  if (frame.look.softness > 0) {
    mask.reset(GaussianBlur(mask.get(), frame.look.softness + 2));
    if (mask == nullptr) return 0;
  }
  DibLock fillLock(fill.get());
  DibLock maskLock(mask.get());
  if (fillLock.head == nullptr || maskLock.head == nullptr) return 0;
  CompositeFillFrom(picture, fillLock.head, maskLock.head, x, y);
  return 1;
}

int TextFrameText(const TextFrame& frame, const DibHead* fill, DibHead* picture, int x, int y) {
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.fillLevel));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeFill(picture, fill, maskLock.head);
  return 1;
}

int TextFrameOutline(const TextFrame& frame, DibHead* picture, int x, int y) {
  DibOwner mask(TextOutlineMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, frame.advances));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutlineShiftedLeft(picture, frame.look.outlineColour, maskLock.head);
  return 1;
}
