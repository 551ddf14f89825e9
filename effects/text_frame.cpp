#include "effects/text_frame.h"

#include <cstring>

#include "fills/material.h"

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
  ReadSharedControls(dialog, &frame->shared);
  ReadPanelLook(dialog, ids, &frame->look);
  frame->place = ShadowPlacementFor(frame->look.direction, frame->look.offset);
  frame->pad = FrameMargin(frame->shared.padding, frame->look.softness, frame->look.outlineOn);
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

int FillIsSolid(const Controls* dialog, int id) { return EffectBackgroundColourOf(dialog, id) != -1 ? 1 : 0; }

DibHandle TextFrameMask(const TextFrame& frame, int x, int y, int level) {
  return TextMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, level, frame.advances);
}
