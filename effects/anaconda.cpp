#include "effects/anaconda.h"

#include "effects/warped_text.h"
#include "effects/wave.h"
#include "plugin/host_call.h"
#include "raster/line_shift.h"

namespace {

constexpr PanelLookIds kAnacondaLook = {0, 459, 0, 0, 0, 0, 0, 457};
constexpr int kFillId = 449;
constexpr int kBackgroundId = 451;
constexpr int kFramesId = 453;
constexpr int kRangeId = 455;

}  // namespace

DibHandle AnacondaGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const WaveExtra*>(context->extra);
  const int amplitude = 2 * ReadControlInt(dialog, kRangeId);
  TextFrame frame;
  TextFrameMeasureText(dialog, kAnacondaLook, extra->text, &frame);
  // The wave moves the columns mostly down, so the room lies below the text.
  frame.size.width += amplitude / 8;
  frame.size.height += amplitude / 2;

  float fraction = static_cast<float>(extra->index) / static_cast<float>(extra->total);
  const int count = kLineShiftFine * frame.size.width;
  std::unique_ptr<float[]> table = MakeWaveTable(count, fraction);
  const WarpedTextPlan plan = {kFillId, kBackgroundId, frame.pad, frame.pad, 255, {Wave, table.get(), amplitude, count}};
  return DrawWarpedText(dialog, frame, plan);
}

int AnacondaPreview(EffectContext* context) {
  WaveExtra extra{};
  extra.total = kWarpPreviewTotal;
  extra.index = kWarpPreviewIndex;
  ReadRecordText(context->dialog, extra.text, 0);
  return RunEffectPreview(context, &extra, AnacondaGenerate);
}

// One turn of the wave in n steps, for a frames setting of 2 n or 2 n + 1;
// the loop has no resting point, so no frame pauses.
int AnacondaBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);
  const int n = ReadControlInt(dialog, kFramesId) / 2;

  WaveExtra extra{};
  ReadRecordText(dialog, extra.text, 1);
  extra.total = n;
  context->extra = &extra;
  if (timing.rolling == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGeneratedFrame(context, AnacondaGenerate, timing.delay);
  }
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    if (AppendGeneratedFrame(context, AnacondaGenerate, timing.delay) == 0) return 0;
    HostProgress(context->host, i, n);
  }
  context->extra = nullptr;  // the record ends with this call
  return 1;
}
