#include "effects/runway.h"

#include <cmath>
#include <cstring>
#include <new>

#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kRunwayLook = {0, 238, 0, 0, 0, 0, 0, 236};
constexpr int kFillId = 226;
constexpr int kBackgroundId = 228;
constexpr int kStepId = 230;
constexpr int kCountId = 232;
constexpr int kMinOpacityId = 234;
constexpr int kSmallestLegible = 4;

// The stage a letter takes in the widest arrangement: the blank at the end
// in the largest stage, the letters before it one stage smaller each.
int WidestStageOf(int index, int length, int count) {
  const int stage = count - (length - index);
  return stage > 0 ? stage : 0;
}

// Each stage's font and advances, the frame's size and the fill at it.
int PrepareStages(const Controls* dialog, RunwayExtra* extra, int pad) {
  const SharedControls& shared = extra->shared;
  for (int s = 0; s < extra->count; ++s) {
    RunwayStage& stage = extra->stages[s];
    stage.fontSize = extra->fontSize - (extra->count - s - 1) * extra->step;
    stage.style = TextStyleMake(dialog->window, shared.fontName, stage.fontSize, shared.bold, shared.italic,
                                shared.antialias);
    int ignoredWidth = 0;
    TextMeasure(dialog->window, extra->text, stage.style, shared.characterSpace, &ignoredWidth, &extra->textHeight,
                stage.advances);
  }
  extra->height = extra->textHeight;
  extra->width = 0;
  for (int i = extra->length - 1; i >= 0; --i)
    extra->width += extra->stages[WidestStageOf(i, extra->length, extra->count)].advances[i];
  extra->fill.reset(RenderFillOf(dialog, kFillId, extra->width + 2 * pad, extra->height + 2 * pad));
  if (extra->fill == nullptr) return 0;
  extra->ready = true;
  return 1;
}

// One letter in its stage's font and level, with its cell at (left, top).
int DrawLetter(const RunwayExtra& extra, const RunwayStage& stage, int index, int left, int top, const PanelLook& look,
               DibHead* picture, const DibHead* fill) {
  const auto character = static_cast<unsigned char>(extra.text[index]);
  DibOwner mask(TextCharMask(stage.style, character, extra.textHeight, stage.level));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  const int x = left + (stage.advances[index] - maskLock.head->biWidth) / 2;
  const int y = top + (extra.textHeight - maskLock.head->biHeight) / 2;
  CompositeFillAt(picture, fill, maskLock.head, x, y);
  if (look.outlineOn == 0) return 1;
  DibOwner ring(CharOutlineMask(stage.style, character, stage.level));
  DibLock ringLock(ring.get());
  if (ringLock.head == nullptr) return 0;
  CompositeLetterOutline(picture, look.outlineColour, ringLock.head, x, y, stage.level);
  return 1;
}

// The panel and the text, the stage count and step made legible, the
// stages measured and their levels set. 0 for an empty text or no memory.
int SetUpRunway(const Controls* dialog, RunwayExtra* extra) {
  ReadSharedControls(dialog, &extra->shared);
  const SharedControls& shared = extra->shared;
  if (shared.textLength < 1) return 0;
  // A count of 0 is allowed by the control; the runway keeps one stage.
  const int count = ReadControlInt(dialog, kCountId);
  const RunwayStages stages = RunwayStagesFor(shared.fontSize, count > 0 ? count : 1, ReadControlInt(dialog, kStepId));
  extra->fontSize = shared.fontSize;
  extra->count = stages.count;
  extra->step = stages.step;
  extra->minOpacity = ReadControlInt(dialog, kMinOpacityId);
  std::memcpy(extra->text, shared.text, shared.textLength);
  extra->text[shared.textLength] = ' ';
  extra->text[shared.textLength + 1] = '\0';
  extra->length = shared.textLength + 1;
  extra->stages.reset(new (std::nothrow) RunwayStage[extra->count]());
  if (extra->stages == nullptr) return 0;
  PanelLook look;
  ReadPanelLook(dialog, kRunwayLook, &look);
  if (PrepareStages(dialog, extra, FrameMargin(shared.padding, 0, look.outlineOn)) == 0) return 0;
  for (int s = 0; s < extra->count; ++s) extra->stages[s].level = RunwayStageLevel(s, extra->count, extra->minOpacity);
  return 1;
}

// The resting line: the last letters before the blank in the larger
// stages, from count - 1 down to 1, the rest in stage 0.
void SetRestingStages(RunwayExtra* extra) {
  for (int i = 0; i < extra->length; ++i) extra->letterStage[i] = 0;
  int stage = extra->count - 1;
  for (int i = extra->length - 2; i >= 0 && stage >= 1; --i, --stage) extra->letterStage[i] = stage;
}

// One round of the runway: letters already on it shrink a stage, and the
// first letter not yet on it enters at the largest. False when nothing moved.
bool AdvanceRunway(RunwayExtra* extra) {
  bool moved = false;
  for (int i = 0; i < extra->length; ++i) {
    if (extra->letterStage[i] > 0) {
      --extra->letterStage[i];
      moved = true;
    } else if (extra->letterStage[i] == kRunwayOffStage) {
      extra->letterStage[i] = extra->count - 1;
      moved = true;
      break;
    }
  }
  return moved;
}

int FirstLetterOffTheRunway(const RunwayExtra& extra) {
  for (int i = 0; i < extra.length; ++i)
    if (extra.letterStage[i] == kRunwayOffStage) return i;
  return extra.length;
}

}  // namespace

RunwayStages RunwayStagesFor(int fontSize, int count, int step) {
  while (fontSize - count * step < kSmallestLegible && (count >= 2 || step >= 2)) {
    if (count > 1) --count;
    if (step > 1) --step;
  }
  return {count, step};
}

int RunwayStageLevel(int stage, int count, int minOpacity) {
  const int i = count - 1 - stage;
  const double level = std::ceil(static_cast<double>(255 - minOpacity) / count * i + minOpacity);
  return level > 255 ? 255 : static_cast<int>(level);
}

DibHandle RunwayGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* extra = static_cast<RunwayExtra*>(context->extra);
  PanelLook look;
  ReadPanelLook(dialog, kRunwayLook, &look);
  const int pad = FrameMargin(extra->shared.padding, 0, look.outlineOn);
  if (extra->length < 2) return nullptr;
  if (!extra->ready && PrepareStages(dialog, extra, pad) == 0) return nullptr;

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, extra->width + 2 * pad, extra->height + 2 * pad));
  DibLock pictureLock(picture.get());
  DibLock fillLock(extra->fill.get());
  if (pictureLock.head == nullptr || fillLock.head == nullptr) return nullptr;
  int pen = pad;
  for (int i = 0; i < extra->length; ++i) {
    if (extra->letterStage[i] == kRunwayOffStage) continue;
    const RunwayStage& stage = extra->stages[extra->letterStage[i]];
    if (DrawLetter(*extra, stage, i, pen, pad, look, pictureLock.head, fillLock.head) == 0) return nullptr;
    pen += stage.advances[i];
  }
  return picture.release();
}

int RunwayPreview(EffectContext* context) {
  auto extra = std::unique_ptr<RunwayExtra>(new (std::nothrow) RunwayExtra());
  context->flags |= kEffectFlagPreview;
  if (extra == nullptr || SetUpRunway(context->dialog, extra.get()) == 0) return 1;
  SetRestingStages(extra.get());
  context->extra = extra.get();
  context->previewBitmap = RunwayGenerate(context);
  context->extra = nullptr;
  return 1;
}

// With Animated on, one letter enters each frame until a round moves
// nothing; that round's frame repeats the one before and stays, and it
// pauses.
int RunwayBuild(EffectContext* context) {
  auto extra = std::unique_ptr<RunwayExtra>(new (std::nothrow) RunwayExtra());
  if (extra == nullptr || SetUpRunway(context->dialog, extra.get()) == 0) return 0;
  const auto delay = static_cast<std::uint32_t>(extra->shared.delay);
  const auto pause = static_cast<std::uint32_t>(extra->shared.pause);
  context->extra = extra.get();
  for (int i = 0; i < extra->length; ++i) extra->letterStage[i] = kRunwayOffStage;

  int result = 1;
  if (extra->shared.rolling == 0) {
    SetRestingStages(extra.get());
    result = AppendGeneratedFrame(context, RunwayGenerate, delay);
  } else {
    for (bool moved = true; moved;) {
      moved = AdvanceRunway(extra.get());
      if (AppendGeneratedFrame(context, RunwayGenerate, delay) == 0) {
        result = 0;
        break;
      }
      HostProgress(context->host, FirstLetterOffTheRunway(*extra), extra->length);
    }
    if (result == 1) FramePatchDelay(context->frames, pause + delay);
  }
  context->extra = nullptr;
  return result;
}
