#include "effects/liquid_metal.h"

#include <algorithm>

#include "effects/warped_layers.h"
#include "plugin/host_call.h"
#include "raster/crt_random.h"

namespace {

constexpr PanelLookIds kLiquidMetalLook = {460, 481, 463, 469, 471, 473, 475, 479};
constexpr WarpedFillIds kFills = {461, 467, 465};
constexpr int kFramesId = 477;

constexpr unsigned kDelaySeed = 13204;
constexpr int kFallingDamping = 4;  // added after the rise: the decay is a little stronger

DibHandle RippleLayer(DibHandle source, const void* parameters) {
  return Ripple(source, *static_cast<const RippleExtra*>(parameters));
}

// The waves grow with t from 0 to 1: longer and higher.
void SetSwell(RippleExtra* ripple, double t) {
  ripple->wavelength = 400 + static_cast<int>(t * 4600.0);
  ripple->amplitude = 70 + static_cast<int>(t * 5930.0);
}

}  // namespace

RippleExtra LiquidMetalRestingRipple() { return {255, 100, 100, 2500, 1200, 180, 15, 1, 0}; }

DibHandle LiquidMetalGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* ripple = static_cast<const RippleExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kLiquidMetalLook, &frame) == 0) return nullptr;
  // A strip below the text gives the waves room to push it down.
  frame.size.height += std::max(2 * (frame.shared.fontSize / 10), 8);

  WarpedLayers layers = {.ids = kFills, .transform = RippleLayer, .parameters = ripple,
                         .originX = frame.pad, .originY = frame.pad,
                         .layerLevel = 255, .outlineLevel = ripple->level,
                         .shadowFromPlace = 0, .shadowFillFollows = 0, .keepsSolid = 0};
  return WarpedLayersCompose(dialog, frame, layers);
}

int LiquidMetalPreview(EffectContext* context) {
  RippleExtra ripple = LiquidMetalRestingRipple();
  return RunEffectPreview(context, &ripple, LiquidMetalGenerate);
}

// A plain frame, the rise over k frames, the fall over the rest with
// irregular delays from a fixed seed, and a plain frame that pauses.
int LiquidMetalBuild(EffectContext* context) {
  const BuildTiming timing = ReadBuildTiming(context->dialog);
  const int delay = static_cast<int>(timing.delay);
  const int n = ReadControlInt(context->dialog, kFramesId);
  CrtSrand(kDelaySeed);
  bool trueColourHost = context->host != nullptr && (context->host->hostFlags & kHostFlagTrueColour) != 0;
  int jitter = trueColourHost ? 40 : 4;  // the two kinds of delay unit
  RippleExtra ripple = LiquidMetalRestingRipple();
  context->extra = &ripple;

  if (timing.rolling == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGeneratedFrame(context, LiquidMetalGenerate, delay);
  }

  int k = std::max(delay / 8, 6);
  int rest = n - k - 1;
  ripple.plain = 1;
  if (AppendGeneratedFrame(context, LiquidMetalGenerate, delay) == 0) return 0;
  ripple.plain = 0;
  HostProgress(context->host, 0, n);
  for (int i = 0; i < k; ++i) {
    SetSwell(&ripple, static_cast<double>(i) / k);
    if (AppendGeneratedFrame(context, LiquidMetalGenerate, delay) == 0) return 0;
    HostProgress(context->host, 1 + i, n);
  }
  ripple.damping += kFallingDamping;
  for (int j = 0; j < rest; ++j) {
    SetSwell(&ripple, static_cast<double>(rest - j) / rest);
    DibHandle image = LiquidMetalGenerate(context);
    if (image == nullptr) return 0;
    if (AppendEffectFrame(context, image, delay + CrtRand() % jitter) == 0) return 0;
    HostProgress(context->host, 1 + k + j, n);
  }
  ripple.plain = 1;
  return AppendGeneratedFrame(context, LiquidMetalGenerate, timing.pause + delay);
}
