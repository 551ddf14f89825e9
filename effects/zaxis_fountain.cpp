#include "effects/zaxis_fountain.h"

#include "effects/text_frame.h"
#include "fills/fountain_button.h"
#include "plugin/host_call.h"

namespace {

// No fill opacity: the text is drawn at full level.
constexpr PanelLookIds kZAxisLook = {124, 143, 0, 131, 133, 135, 137, 141};
constexpr int kGradientId = 125;
constexpr int kShadowFillId = 129;
constexpr int kBackgroundId = 127;
constexpr int kFramesId = 139;
constexpr int kRampWidth = 256;

// The gradient of the bar at width by height, or null.
DibHandle GradientStrip(const Controls* dialog, int width, int height) {
  const FountainRecord* record = FountainLock(dialog, kGradientId);
  if (record == nullptr) return nullptr;
  DibHandle strip = FountainStrip(record, width, height);
  FountainUnlock(dialog, kGradientId);
  return strip;
}

// The colour at index along the bar's gradient; 0 with nothing to read.
int FlatColour(const Controls* dialog, int index, std::uint32_t* colour) {
  DibOwner strip(GradientStrip(dialog, kRampWidth, 1));
  DibLock lock(strip.get());
  if (lock.head == nullptr) return 0;
  *colour = static_cast<std::uint32_t>(DibGetPixel(lock.head, index, 0)) & 0xFFFFFF;
  return 1;
}

// The gradient across the whole frame, turned left by the phase in an
// animated frame.
DibHandle TextFill(const EffectContext* context, const ZAxisFountainExtra& extra, const FrameSize& size) {
  DibHandle strip = GradientStrip(context->dialog, size.width, size.height);
  if (strip == nullptr || (context->flags & (kEffectFlagPreview | kEffectFlagStill)) != 0) return strip;
  DibHandle turned = DibRotateLeft(strip, extra.phase);
  MemFree(strip);
  return turned;
}

int CompositeText(const EffectContext* context, const TextFrame& frame, DibHead* picture, int x, int y) {
  const auto& extra = *static_cast<const ZAxisFountainExtra*>(context->extra);
  if (extra.flatColour != 0) {
    // A flat frame never shows the turned fill, so it is not made.
    std::uint32_t colour = 0;
    return FlatColour(context->dialog, extra.rampIndex, &colour) != 0 &&
           TextFrameCompositeColour(frame, picture, colour, x, y) != 0;
  }
  DibOwner fill(TextFill(context, extra, frame.size));
  DibLock fillLock(fill.get());
  return TextFrameCompositeText(frame, picture, fillLock.head, x, y);
}

// One frame made and appended; 0 when either fails.
int AppendGenerated(EffectContext* context, std::uint32_t delay) {
  DibHandle image = ZAxisFountainGenerate(context);
  return image != nullptr && AppendEffectFrame(context, image, delay) != 0;
}

}  // namespace

DibHandle ZAxisFountainGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  TextFrame frame;
  if (TextFrameMeasure(dialog, kZAxisLook, &frame) == 0) return nullptr;
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  // The shadow's fill stays fixed to the frame.
  if (frame.look.shadowOn != 0 &&
      TextFrameCompositeShadow(dialog, frame, pictureLock.head, kShadowFillId, frame.pad + frame.place.shadowX,
                               frame.pad + frame.place.shadowY, kShadowFillFixed) == 0)
    return nullptr;
  const int textX = frame.pad + frame.place.textX;
  const int textY = frame.pad + frame.place.textY;
  if (CompositeText(context, frame, pictureLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutline(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int ZAxisFountainFrameCount(int frames, int width) { return frames < width ? frames : width; }

int ZAxisFountainPreview(EffectContext* context) {
  ZAxisFountainExtra extra{};
  return RunEffectPreview(context, &extra, ZAxisFountainGenerate);
}

int ZAxisFountainBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  BuildTiming timing = ReadBuildTiming(dialog);  // the pause is read but this effect never rests
  int rolling = timing.rolling;
  std::uint32_t delay = timing.delay;
  int frames = ReadControlInt(dialog, kFramesId);

  ZAxisFountainExtra extra{};
  extra.flatColour = 1;
  context->extra = &extra;
  context->flags |= kEffectFlagStill;
  DibHandle sizing = ZAxisFountainGenerate(context);
  int width = 0;
  int height = 0;
  int sized = DibSizeOf(sizing, &width, &height);
  MemFree(sizing);
  if (sized == 0) return 0;
  context->flags &= ~kEffectFlagStill;

  if (rolling == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGenerated(context, delay);
  }
  const int count = ZAxisFountainFrameCount(frames, width);
  const double divisor = count > 0.001 ? count : 0.001;
  for (int i = 0; i < count; ++i) {
    extra.phase = static_cast<std::int32_t>(static_cast<double>(i + 1) * width / count);
    extra.rampIndex = static_cast<std::int32_t>(i / divisor * 255.0);
    if (AppendGenerated(context, delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
