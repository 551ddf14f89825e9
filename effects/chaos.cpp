#include "effects/chaos.h"

#include "effects/in_out_build.h"
#include "effects/warped_layers.h"

namespace {

constexpr PanelLookIds kChaosLook = {494, 515, 497, 503, 505, 507, 509, 513};
constexpr WarpedFillIds kFills = {495, 501, 499};
constexpr int kFramesId = 511;

constexpr ChaosExtra kLightScatter = {255, 6};  // the preview and a still build

DibHandle ScatterLayer(DibHandle source, const void* parameters) {
  return PixelScatter(source, *static_cast<const ChaosExtra*>(parameters));
}

// The scatter grows from 1 at the hold to 64 at either end, while the
// outline fades out.
void SetScatter(void* extra, int position, int half) {
  auto* chaos = static_cast<ChaosExtra*>(extra);
  if (position == 0) {
    *chaos = {255, 0};
    return;
  }
  float t = static_cast<float>(position < 0 ? -position : position) / static_cast<float>(half);
  chaos->scatter = 1 + static_cast<int>(63.0 * t);
  chaos->outlineLevel = 255 - static_cast<int>(255.0 * t);
}

}  // namespace

DibHandle ChaosGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* chaos = static_cast<const ChaosExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kChaosLook, &frame) == 0) return nullptr;
  frame.pad += SpreadMargin(frame.shared.fontSize);
  frame.size = FrameSizeFor(frame.textWidth, frame.textHeight, frame.pad, frame.look.shadowOn, frame.look.offset);

  // The shadow is cut where its place begins and carries its fill with it.
  WarpedLayers layers = {.ids = kFills, .transform = ScatterLayer, .parameters = chaos,
                         .originX = frame.pad, .originY = frame.pad,
                         .layerLevel = 255, .outlineLevel = chaos->outlineLevel,
                         .shadowFromPlace = 1, .shadowFillFollows = 1, .keepsSolid = 1};
  return WarpedLayersCompose(dialog, frame, layers);
}

int ChaosPreview(EffectContext* context) {
  ChaosExtra chaos = kLightScatter;
  return RunEffectPreview(context, &chaos, ChaosGenerate);
}

int ChaosBuild(EffectContext* context) {
  ChaosExtra chaos = kLightScatter;
  context->extra = &chaos;
  return InOutBuild(context, ChaosGenerate, SetScatter, kFramesId);
}
