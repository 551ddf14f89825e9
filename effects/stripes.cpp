#include "effects/stripes.h"

#include "effects/stripe_pattern.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "plugin/platform.h"

namespace {

// The fill opacity 426 is not in the look: the text is always drawn whole.
constexpr PanelLookIds kStripesLook = {421, 444, 0, 432, 434, 436, 438, 442};
constexpr int kFill1Id = 422;
constexpr int kFill2Id = 424;
constexpr int kFramesId = 440;
constexpr int kShadowFillId = 430;
constexpr int kBackgroundId = 428;
constexpr int kTypeId = 445;
constexpr int kDirectionId = 447;
constexpr int kLastType = 7;  // any higher index draws as this, which is vertical

int StripeTypeOf(const Controls* dialog) {
  int type = ControlSelection(dialog, kTypeId);
  if (type < 0) return 0;
  return type > kLastType ? kLastType : type;
}

// The text's fill: both colours at frame size, patterned and moved on by
// the phase.
DibHandle PatternFor(const Controls* dialog, const TextFrame& frame, int band, int phase) {
  int width = frame.size.width;
  int height = frame.size.height;
  DibOwner fill1(SolidBitmap(width, height, static_cast<std::uint32_t>(ReadControlNumber(dialog, kFill1Id))));
  DibOwner fill2(SolidBitmap(width, height, static_cast<std::uint32_t>(ReadControlNumber(dialog, kFill2Id))));
  if (fill1 == nullptr || fill2 == nullptr) return nullptr;
  return StripePattern(fill1.get(), fill2.get(), 2 * phase, band, StripeTypeOf(dialog),
                       ReadControlNumber(dialog, kDirectionId));
}

int BuildFrames(EffectContext* context, StripesExtra* extra, int frames, std::uint32_t delay) {
  for (int phase = 0; phase < frames; ++phase) {
    extra->phase = phase;
    if (AppendGeneratedFrame(context, StripesGenerate, delay) == 0) return 0;
    HostProgress(context->host, phase, frames);
  }
  return 1;
}

}  // namespace

int StripesFrameWidth(int naturalWidth, int band) {
  int period = 2 * band;
  return (naturalWidth + period - 1) / period * period;
}

DibHandle StripesGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const StripesExtra*>(context->extra);
  int band = ReadControlInt(dialog, kFramesId);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kStripesLook, &frame) == 0) return nullptr;
  int naturalWidth = frame.size.width;
  frame.size.width = StripesFrameWidth(naturalWidth, band);
  int centre = (frame.size.width - naturalWidth) / 2;

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibOwner pattern(PatternFor(dialog, frame, band, extra->phase));
  DibLock pictureLock(picture.get());
  DibLock patternLock(pattern.get());
  if (pictureLock.head == nullptr || patternLock.head == nullptr) return nullptr;
  int baseX = frame.pad + centre;
  if (frame.look.shadowOn != 0 &&
      TextFrameCompositeShadow(dialog, frame, pictureLock.head, kShadowFillId, baseX + frame.place.shadowX,
                               frame.pad + frame.place.shadowY, kShadowFillMoves) == 0)
    return nullptr;
  int textX = baseX + frame.place.textX;
  int textY = frame.pad + frame.place.textY;
  if (TextFrameCompositeText(frame, pictureLock.head, patternLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  if (extra->stripesOnly != 0) return pattern.release();
  return picture.release();
}

int StripesPreview(EffectContext* context) {
  StripesExtra extra{};
  return RunEffectPreview(context, &extra, StripesGenerate);
}

int StripesBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  BuildTiming timing = ReadBuildTiming(dialog);  // the pause is read but the bands never rest
  int rolling = timing.rolling;
  std::uint32_t delay = timing.delay;
  int frames = ReadControlInt(dialog, kFramesId);

  StripesExtra extra{};
  context->extra = &extra;
  context->flags |= kEffectFlagStill;
  DibHandle sizing = StripesGenerate(context);
  if (sizing == nullptr) return 0;
  MemFree(sizing);
  context->flags &= ~kEffectFlagStill;
  extra.stripesOnly = PlatformShiftHeld() && PlatformAltHeld() ? 1 : 0;
  if (rolling != 0) return BuildFrames(context, &extra, frames, delay);
  context->flags |= kEffectFlagStill;
  return AppendGeneratedFrame(context, StripesGenerate, delay);
}
