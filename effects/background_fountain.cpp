#include "effects/background_fountain.h"

#include <algorithm>

#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

// No fill opacity: the text is drawn at full level.
constexpr PanelLookIds kFountBackLook = {334, 353, 0, 341, 343, 345, 347, 351};
constexpr int kGradientId = 335;
constexpr int kFillId = 337;
constexpr int kShadowFillId = 339;
constexpr int kFramesId = 349;
constexpr int kScrollId = 354;
constexpr int kScrollRight = 1;

// The gradient across the whole frame; in an animated frame turned by the
// phase with wrap-around, to the right or else to the left.
DibHandle RunningGradient(const EffectContext* context, const FrameSize& size) {
  DibHandle strip = GradientStripOf(context->dialog, kGradientId, size.width, size.height);
  if (strip == nullptr || (context->flags & (kEffectFlagPreview | kEffectFlagStill)) != 0) return strip;
  const int phase = static_cast<const BackgroundFountainExtra*>(context->extra)->phase;
  DibHandle turned = ReadControlNumber(context->dialog, kScrollId) == kScrollRight ? DibRotateRight(strip, phase)
                                                                                   : DibRotateLeft(strip, phase);
  MemFree(strip);
  return turned;
}

}  // namespace

DibHandle BackgroundFountainGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  TextFrame frame;
  if (TextFrameMeasure(dialog, kFountBackLook, &frame) == 0) return nullptr;
  DibOwner fill(RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height));
  DibOwner picture(RunningGradient(context, frame.size));
  DibLock fillLock(fill.get());
  DibLock pictureLock(picture.get());
  if (fillLock.head == nullptr || pictureLock.head == nullptr) return nullptr;
  // The shadow's fill moves with the shadow.
  if (TextFrameCompositeRestingShadow(dialog, frame, pictureLock.head, kShadowFillId, kShadowFillMoves) == 0)
    return nullptr;
  const int textX = frame.pad + frame.place.textX;
  const int textY = frame.pad + frame.place.textY;
  if (TextFrameCompositeText(frame, pictureLock.head, fillLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int BackgroundFountainPreview(EffectContext* context) {
  BackgroundFountainExtra extra{};
  return RunEffectPreview(context, &extra, BackgroundFountainGenerate);
}

int BackgroundFountainBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);  // the pause is unused: the gradient never rests
  const int frames = ReadControlInt(dialog, kFramesId);

  BackgroundFountainExtra extra{};
  context->extra = &extra;
  FrameSize size{};
  if (MeasureBuildFrame(context, BackgroundFountainGenerate, &size) == 0) return 0;
  if (timing.rolling == 0) return AppendStillFrame(context, BackgroundFountainGenerate, timing.delay);
  // The phase ends at the full width, a whole turn, so the last frame shows
  // the gradient as it started and the loop closes.
  const int count = std::min(frames, size.width);  // a column a frame at the most
  const double step = static_cast<double>(size.width) / count;
  double acc = 0;
  for (int i = 0; i < count; ++i) {
    acc += step;
    extra.phase = static_cast<std::int32_t>(acc);
    if (AppendGeneratedFrame(context, BackgroundFountainGenerate, timing.delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
