#include "effects/dragon_skin.h"

#include "effects/text_frame.h"
#include "fills/noise_record.h"
#include "plugin/host_call.h"

namespace {

// The panel has no fill opacity: the letters are drawn at full strength.
constexpr PanelLookIds kDragonLook = {258, 279, 0, 267, 269, 271, 273, 277};
constexpr int kGradientId = 259;
constexpr int kNoiseId = 261;
constexpr int kBackgroundId = 263;
constexpr int kShadowFillId = 265;
constexpr int kFramesId = 275;
constexpr int kPhasesMin = 16;

// The map and the gradient's colours, once for a build. A gradient that
// cannot be read leaves the palette black.
int PrepareMap(const Controls* dialog, const FrameSize& size, DragonExtra* extra) {
  MemHandle block = ControlData(dialog, kNoiseId);
  auto* record = static_cast<NoiseRecord*>(block != nullptr ? MemLock(block) : nullptr);
  if (record == nullptr) return 0;
  extra->map = MakeNoise(size.width, size.height, *record);
  MemUnlock(block);
  if (extra->map == nullptr) return 0;
  NoisePaletteFromGradient(dialog, kGradientId, extra->palette);
  extra->ready = 1;
  return 1;
}

void FreeMap(DragonExtra* extra) {
  MemFree(extra->map);
  extra->map = nullptr;
}

}  // namespace

DibHandle DragonSkinGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* extra = static_cast<DragonExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kDragonLook, &frame) == 0) return nullptr;
  if (extra->ready == 0 && PrepareMap(dialog, frame.size, extra) == 0) return nullptr;

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibOwner fill(NoisePaletteMap(extra->map, extra->palette, extra->phase));
  DibLock pictureLock(picture.get());
  DibLock fillLock(fill.get());
  if (pictureLock.head == nullptr || fillLock.head == nullptr) return nullptr;
  if (TextFrameCompositeRestingShadow(dialog, frame, pictureLock.head, kShadowFillId, kShadowFillFixed) == 0)
    return nullptr;
  int textX = frame.pad + frame.place.textX;
  int textY = frame.pad + frame.place.textY;
  if (TextFrameCompositeText(frame, pictureLock.head, fillLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int DragonSkinPhases(int frames, std::int32_t phases[kDragonPhasesMax]) {
  int n = frames < kPhasesMin ? kPhasesMin : frames > kDragonPhasesMax ? kDragonPhasesMax : frames;
  double step = n == kDragonPhasesMax ? 1.0 : 256.0 / n;
  double t = 0.0;
  for (int i = 0; i < n; ++i) {
    t += step;
    phases[i] = static_cast<std::int32_t>(t);
  }
  return n;
}

int DragonSkinPreview(EffectContext* context) {
  DragonExtra extra{};
  RunEffectPreview(context, &extra, DragonSkinGenerate);
  FreeMap(&extra);
  return 1;
}

int DragonSkinBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);
  int frames = ReadControlInt(dialog, kFramesId);

  DragonExtra extra{};
  context->extra = &extra;
  context->flags |= kEffectFlagStill;
  DibHandle first = DragonSkinGenerate(context);
  if (first == nullptr) {
    FreeMap(&extra);
    return 0;
  }
  MemFree(first);
  context->flags &= ~kEffectFlagStill;

  int result = 1;
  if (timing.rolling == 0) {
    context->flags |= kEffectFlagStill;
    result = AppendGeneratedFrame(context, DragonSkinGenerate, timing.delay);
  } else {
    std::int32_t phases[kDragonPhasesMax];
    int count = DragonSkinPhases(frames, phases);
    for (int i = 0; i < count && result != 0; ++i) {
      extra.phase = phases[i];
      result = AppendGeneratedFrame(context, DragonSkinGenerate, timing.delay);
      if (result != 0) HostProgress(context->host, i, count);
    }
  }
  FreeMap(&extra);
  return result;
}
