#include "effects/mirage.h"

#include "effects/shimmer.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kMirageLook = {0, 420, 0, 0, 0, 0, 0, 418};
constexpr int kFillId = 410;
constexpr int kBackgroundId = 412;
constexpr int kFramesId = 414;
constexpr int kRangeId = 416;
constexpr int kFine = 4;  // the shimmer works at four times the height

constexpr int kPreviewTotal = 255;
constexpr int kPreviewIndex = 128;

// The text's fill through the shimmered text mask; a fill other than a
// solid colour shimmers with the letters.
int CompositeText(const Controls* dialog, const TextFrame& frame, DibHead* picture, const float* table,
                  int amplitude, int level) {
  const int count = kFine * frame.size.height;
  DibOwner fill(RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height));
  if (fill != nullptr && FillIsSolid(dialog, kFillId) == 0) fill.reset(Shimmer(fill.get(), table, amplitude, count));
  DibOwner mask(TextFrameMask(frame, frame.pad + amplitude / 2, frame.pad, level));
  if (mask != nullptr) mask.reset(Shimmer(mask.get(), table, amplitude, count));
  DibLock fillLock(fill.get());
  DibLock maskLock(mask.get());
  if (fillLock.head == nullptr || maskLock.head == nullptr) return 0;
  CompositeFill(picture, fillLock.head, maskLock.head);
  return 1;
}

// The outline shimmers with the text and fades with it.
int CompositeOutlineOf(const TextFrame& frame, DibHead* picture, const float* table, int amplitude, int level) {
  DibOwner mask(TextOutlineMask(frame.style, frame.pad + amplitude / 2, frame.pad, frame.text, frame.size.width,
                                frame.size.height, frame.advances));
  if (mask != nullptr) mask.reset(Shimmer(mask.get(), table, amplitude, kFine * frame.size.height));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutlineFaded(picture, frame.look.outlineColour, maskLock.head, level);
  return 1;
}

}  // namespace

DibHandle MirageGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const MirageExtra*>(context->extra);
  const int amplitude = 2 * ReadControlInt(dialog, kRangeId);
  TextFrame frame;
  TextFrameMeasureText(dialog, kMirageLook, extra->text, &frame);
  frame.size.width += amplitude;  // room for the waves on both sides

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  float fraction = static_cast<float>(extra->index) / static_cast<float>(extra->total);
  std::unique_ptr<float[]> table = MakeMirageTable(kFine * frame.size.height, fraction, extra->strength);
  if (table == nullptr) return nullptr;
  if (CompositeText(dialog, frame, pictureLock.head, table.get(), amplitude, extra->level) == 0) return nullptr;
  if (frame.look.outlineOn != 0 &&
      CompositeOutlineOf(frame, pictureLock.head, table.get(), amplitude, extra->level) == 0)
    return nullptr;
  return picture.release();
}

int MiragePreview(EffectContext* context) {
  MirageExtra extra{};
  extra.total = kPreviewTotal;
  extra.index = kPreviewIndex;
  extra.level = 255;
  extra.strength = 1.0f;
  ReadRecordText(context->dialog, extra.text, 0);
  context->flags |= kEffectFlagPreview;
  context->extra = &extra;
  context->previewBitmap = MirageGenerate(context);
  return 1;
}

// Fades in over n frames, rests on the sharp text, fades out over n frames
// and rests on a blank frame: 2 n + 2 frames for a frames setting of 2 n or
// 2 n + 1. The phase index runs 0 to n - 1 in both fades.
int MirageBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  int rolling = ControlChecked(dialog, 32);
  auto delay = static_cast<std::uint32_t>(ReadControlInt(dialog, 11));
  auto pause = static_cast<std::uint32_t>(ReadControlInt(dialog, 33));
  const int n = ReadControlInt(dialog, kFramesId) / 2;

  MirageExtra extra{};
  ReadRecordText(dialog, extra.text, 1);
  extra.total = n;
  context->extra = &extra;
  if (rolling == 0) {
    context->flags |= kEffectFlagStill;
    extra.level = 255;
    extra.strength = 0.0f;
    return AppendGeneratedFrame(context, MirageGenerate, delay);
  }

  const int progressTotal = 2 * n + 1;
  const auto steps = static_cast<float>(n);
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    extra.level = 255 * i / n;
    extra.strength = static_cast<float>(1.0 - (i + 1.0) / steps);
    if (AppendGeneratedFrame(context, MirageGenerate, delay) == 0) return 0;
    HostProgress(context->host, i, progressTotal);
  }
  extra.level = 255;
  extra.strength = 0.0f;
  if (AppendGeneratedFrame(context, MirageGenerate, pause + delay) == 0) return 0;
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    extra.level = 255 - 255 * (i + 1) / n;
    extra.strength = static_cast<float>((i + 1.0) / steps);
    if (AppendGeneratedFrame(context, MirageGenerate, delay) == 0) return 0;
    HostProgress(context->host, n + 1 + i, progressTotal);
  }
  extra.level = 0;
  extra.strength = 1.0f;
  return AppendGeneratedFrame(context, MirageGenerate, pause + delay);
}
