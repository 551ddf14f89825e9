#include "effects/zaxis_fountain.h"

#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

// No fill opacity: the text is drawn at full level.
constexpr PanelLookIds kZAxisLook = {124, 143, 0, 131, 133, 135, 137, 141};
constexpr int kGradientId = 125;
constexpr int kShadowFillId = 129;
constexpr int kBackgroundId = 127;
constexpr int kFramesId = 139;
constexpr int kRampWidth = 256;

// The colour at index along the bar's gradient; 0 with nothing to read.
int FlatColour(const Controls* dialog, int index, std::uint32_t* colour) {
  DibOwner strip(GradientStripOf(dialog, kGradientId, kRampWidth, 1));
  DibLock lock(strip.get());
  if (lock.head == nullptr) return 0;
  *colour = static_cast<std::uint32_t>(DibGetPixel(lock.head, index, 0)) & 0xFFFFFF;
  return 1;
}

// The gradient across the whole frame, turned left by the phase in an
// animated frame.
DibHandle TextFill(const EffectContext* context, const ZAxisFountainExtra& extra, const FrameSize& size) {
  DibHandle strip = GradientStripOf(context->dialog, kGradientId, size.width, size.height);
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

}  // namespace

DibHandle ZAxisFountainGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  TextFrame frame;
  if (TextFrameMeasure(dialog, kZAxisLook, &frame) == 0) return nullptr;
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  // The shadow's fill stays fixed to the frame.
  if (TextFrameCompositeRestingShadow(dialog, frame, pictureLock.head, kShadowFillId, kShadowFillFixed) == 0)
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
  FrameSize size{};
  if (MeasureBuildFrame(context, ZAxisFountainGenerate, &size) == 0) return 0;
  if (rolling == 0) return AppendStillFrame(context, ZAxisFountainGenerate, delay);
  const int width = size.width;
  const int count = ZAxisFountainFrameCount(frames, width);
  const double divisor = count > 0.001 ? count : 0.001;
  for (int i = 0; i < count; ++i) {
    extra.phase = static_cast<std::int32_t>(static_cast<double>(i + 1) * width / count);
    extra.rampIndex = static_cast<std::int32_t>(i / divisor * 255.0);
    if (AppendGeneratedFrame(context, ZAxisFountainGenerate, delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
