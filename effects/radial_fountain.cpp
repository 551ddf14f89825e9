#include "effects/radial_fountain.h"

#include <cmath>

#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "raster/gdi_command.h"
#include "raster/resample.h"

namespace {

// No fill opacity: the text is drawn at full level.
constexpr PanelLookIds kRadialLook = {280, 299, 0, 287, 289, 291, 293, 297};
constexpr int kGradientId = 281;
constexpr int kShadowFillId = 285;
constexpr int kBackgroundId = 283;
constexpr int kFramesId = 295;
constexpr int kFewestFrames = 16;
constexpr int kMostFrames = 256;

// The bar's gradient as 256 triples. 0 if it cannot be read.
int ReadRamp(RadialExtra* extra) {
  DibOwner strip(GradientStripOf(extra->dialog, kGradientId, kRadialRampColours, 1));
  DibLock lock(strip.get());
  if (lock.head == nullptr) return 0;
  for (int i = 0; i < kRadialRampColours; ++i) {
    auto colour = static_cast<std::uint32_t>(DibGetPixel(lock.head, i, 0));
    extra->ramp[3 * i] = static_cast<std::uint8_t>(colour);
    extra->ramp[3 * i + 1] = static_cast<std::uint8_t>(colour >> 8);
    extra->ramp[3 * i + 2] = static_cast<std::uint8_t>(colour >> 16);
  }
  extra->rampReady = 1;
  return 1;
}

std::uint32_t RampColour(const RadialExtra* extra, int index) {
  const std::uint8_t* triple = extra->ramp + 3 * index;
  return triple[0] | triple[1] << 8 | static_cast<std::uint32_t>(triple[2]) << 16;
}

}  // namespace

DibHandle RadialRings(const RadialExtra* extra, int width, int height) {
  const int w = 2 * width;
  const int h = 2 * height;
  GdiCanvas* canvas = GdiCanvasOpen(w, h);
  if (canvas == nullptr) return nullptr;
  // The height is added twice, not squared: the reach follows the width.
  const float hw = static_cast<float>(w) * 0.5f;
  const float hh = static_cast<float>(h) * 0.5f;
  const int reach = static_cast<int>(std::ceil(std::sqrt(hw * hw + hh + hh))) / 2;
  if (reach > 1) {
    const float step = 256.0f / static_cast<float>(reach);
    float acc = 0;
    for (int k = reach - 1; k >= 1; --k) {
      const int index = (static_cast<int>(acc) + extra->phase) % kRadialRampColours;
      const DibRect box{w / 2 - 2 * k, h / 2 - 2 * k, w / 2 + 2 * k, h / 2 + 2 * k};
      GdiCanvasEllipse(canvas, box, RampColour(extra, index));
      acc += step;
    }
  }
  DibHandle large = GdiCanvasClose(canvas);
  if (large == nullptr) return nullptr;
  // Halving smooths the rings' edges.
  DibHandle halved = DibResize(large, 50, 50);
  if (halved == nullptr) return large;
  MemFree(large);
  return halved;
}

DibHandle RadialFountainGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* extra = static_cast<RadialExtra*>(context->extra);
  if (extra->rampReady == 0 && ReadRamp(extra) == 0) return nullptr;
  TextFrame frame;
  if (TextFrameMeasure(dialog, kRadialLook, &frame) == 0) return nullptr;
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  if (TextFrameCompositeRestingShadow(dialog, frame, pictureLock.head, kShadowFillId, kShadowFillMoves) == 0)
    return nullptr;
  const int textX = frame.pad + frame.place.textX;
  const int textY = frame.pad + frame.place.textY;
  DibOwner rings(RadialRings(extra, frame.size.width, frame.size.height));
  DibLock ringsLock(rings.get());
  if (TextFrameCompositeText(frame, pictureLock.head, ringsLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int RadialFountainFrameCount(int frames) {
  return frames < kFewestFrames ? kFewestFrames : (frames > kMostFrames ? kMostFrames : frames);
}

int RadialFountainPreview(EffectContext* context) {
  RadialExtra extra{};
  extra.dialog = context->dialog;
  return RunEffectPreview(context, &extra, RadialFountainGenerate);
}

int RadialFountainBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  BuildTiming timing = ReadBuildTiming(dialog);  // the pause is read but this effect never rests
  int rolling = timing.rolling;
  std::uint32_t delay = timing.delay;
  int frames = ReadControlInt(dialog, kFramesId);

  RadialExtra extra{};
  extra.dialog = dialog;
  context->extra = &extra;
  FrameSize size{};  // the call checks the generator works and fills the ramp
  if (MeasureBuildFrame(context, RadialFountainGenerate, &size) == 0) return 0;
  if (rolling == 0) return AppendStillFrame(context, RadialFountainGenerate, delay);
  const int count = RadialFountainFrameCount(frames);
  const double step = count == kMostFrames ? 1.0 : 256.0 / count;
  double acc = 0;
  for (int i = 0; i < count; ++i) {
    acc += step;
    extra.phase = static_cast<std::int32_t>(acc);
    if (AppendGeneratedFrame(context, RadialFountainGenerate, delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
