#include "effects/mirage.h"

#include "effects/shimmer.h"
#include "effects/warped_text.h"
#include "plugin/host_call.h"
#include "raster/line_shift.h"

namespace {

constexpr PanelLookIds kMirageLook = {0, 420, 0, 0, 0, 0, 0, 418};
constexpr int kFillId = 410;
constexpr int kBackgroundId = 412;
constexpr int kFramesId = 414;
constexpr int kRangeId = 416;

}  // namespace

DibHandle MirageGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const MirageExtra*>(context->extra);
  const int amplitude = 2 * ReadControlInt(dialog, kRangeId);
  TextFrame frame;
  TextFrameMeasureText(dialog, kMirageLook, extra->text, &frame);
  frame.size.width += amplitude;  // room for the waves on both sides

  float fraction = static_cast<float>(extra->index) / static_cast<float>(extra->total);
  const int count = kLineShiftFine * frame.size.height;
  std::unique_ptr<float[]> table = MakeMirageTable(count, fraction, extra->strength);
  // The text stands in the middle of its room; the outline fades with it.
  const WarpedTextPlan plan = {kFillId,     kBackgroundId, frame.pad + amplitude / 2,
                               frame.pad,   extra->level,  {Shimmer, table.get(), amplitude, count}};
  return DrawWarpedText(dialog, frame, plan);
}

int MiragePreview(EffectContext* context) {
  MirageExtra extra{};
  extra.total = kWarpPreviewTotal;
  extra.index = kWarpPreviewIndex;
  extra.level = 255;
  extra.strength = 1.0f;
  ReadRecordText(context->dialog, extra.text, 0);
  return RunEffectPreview(context, &extra, MirageGenerate);
}

// Fades in over n frames, rests on the sharp text, fades out over n frames
// and rests on a blank frame: 2 n + 2 frames for a frames setting of 2 n or
// 2 n + 1. The phase index runs 0 to n - 1 in both fades.
int MirageBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);
  const int n = ReadControlInt(dialog, kFramesId) / 2;

  MirageExtra extra{};
  ReadRecordText(dialog, extra.text, 1);
  extra.total = n;
  context->extra = &extra;
  if (timing.rolling == 0) {
    context->flags |= kEffectFlagStill;
    extra.level = 255;
    extra.strength = 0.0f;
    return AppendGeneratedFrame(context, MirageGenerate, timing.delay);
  }

  const int progressTotal = 2 * n + 1;
  const auto steps = static_cast<float>(n);
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    extra.level = 255 * i / n;
    extra.strength = static_cast<float>(1.0 - (i + 1.0) / steps);
    if (AppendGeneratedFrame(context, MirageGenerate, timing.delay) == 0) return 0;
    HostProgress(context->host, i, progressTotal);
  }
  extra.level = 255;
  extra.strength = 0.0f;
  if (AppendGeneratedFrame(context, MirageGenerate, timing.pause + timing.delay) == 0) return 0;
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    extra.level = 255 - 255 * (i + 1) / n;
    extra.strength = static_cast<float>((i + 1.0) / steps);
    if (AppendGeneratedFrame(context, MirageGenerate, timing.delay) == 0) return 0;
    HostProgress(context->host, n + 1 + i, progressTotal);
  }
  extra.level = 0;
  extra.strength = 1.0f;
  return AppendGeneratedFrame(context, MirageGenerate, timing.pause + timing.delay);
}
