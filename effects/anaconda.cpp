#include "effects/anaconda.h"

#include "effects/warped_text.h"
#include "effects/wave.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kAnacondaLook = {0, 459, 0, 0, 0, 0, 0, 457};
constexpr int kFillId = 449;
constexpr int kBackgroundId = 451;
constexpr int kFramesId = 453;
constexpr int kRangeId = 455;
constexpr int kFine = 4;  // the wave works at four times the width

constexpr int kPreviewTotal = 255;
constexpr int kPreviewIndex = 128;

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

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  float fraction = static_cast<float>(extra->index) / static_cast<float>(extra->total);
  const int count = kFine * frame.size.width;
  std::unique_ptr<float[]> table = MakeWaveTable(count, fraction);
  if (table == nullptr) return nullptr;
  const WarpSpec spec = {Wave, table.get(), amplitude, count};
  if (CompositeWarpedText(dialog, frame, pictureLock.head, kFillId, frame.pad, frame.pad, 255, spec) == 0)
    return nullptr;
  if (frame.look.outlineOn != 0 && CompositeWarpedOutline(frame, pictureLock.head, frame.pad, frame.pad, 255, spec) == 0)
    return nullptr;
  return picture.release();
}

int AnacondaPreview(EffectContext* context) {
  WaveExtra extra{};
  extra.total = kPreviewTotal;
  extra.index = kPreviewIndex;
  ReadRecordText(context->dialog, extra.text, 0);
  context->flags |= kEffectFlagPreview;
  context->extra = &extra;
  context->previewBitmap = AnacondaGenerate(context);
  return 1;
}

// One turn of the wave in n steps, for a frames setting of 2 n or 2 n + 1;
// the loop has no resting point, so no frame pauses.
int AnacondaBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  int rolling = ControlChecked(dialog, 32);
  auto delay = static_cast<std::uint32_t>(ReadControlInt(dialog, 11));
  const int n = ReadControlInt(dialog, kFramesId) / 2;

  WaveExtra extra{};
  ReadRecordText(dialog, extra.text, 1);
  extra.total = n;
  context->extra = &extra;
  if (rolling == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGeneratedFrame(context, AnacondaGenerate, delay);
  }
  for (int i = 0; i < n; ++i) {
    extra.index = i;
    if (AppendGeneratedFrame(context, AnacondaGenerate, delay) == 0) return 0;
    HostProgress(context->host, i, n);
  }
  context->extra = nullptr;  // the record ends with this call
  return 1;
}
