#include "effects/framework.h"

#include "effects/in_out_build.h"
#include "effects/warped_layers.h"

namespace {

constexpr PanelLookIds kFrameworkLook = {516, 537, 519, 525, 527, 529, 531, 535};
constexpr int kFillId = 517;
constexpr int kBackgroundId = 521;
constexpr int kShadowFillId = 523;
constexpr int kFramesId = 533;
constexpr int kFullFrameId = 538;

constexpr FrameworkExtra kPreviewSmear = {8, 240, 255};  // the preview and a still build
constexpr int kFullFramePercent = 38;  // "Full frame" widens each margin by this part of the text

DibHandle SmearLayer(DibHandle source, const void* parameters) {
  return ZoomSmear(source, *static_cast<const FrameworkExtra*>(parameters));
}

// Coming in the smear falls from 700 to just above 100, going out it runs
// from just below -100 to -700; the hold frame is sharp. The text fades in
// and out with it.
void SetSmear(void* extra, int position, int half) {
  auto* smear = static_cast<FrameworkExtra*>(extra);
  smear->samples = 8;
  if (position == 0) {
    smear->strength = 0;
    smear->level = 255;
    return;
  }
  double t = static_cast<double>(position < 0 ? -position : position) / half;
  int reach = static_cast<int>(600.0 * t);
  smear->strength = position < 0 ? 100 + reach : -100 - reach;
  smear->level = 255 - static_cast<int>(255.0 * t);
}

}  // namespace

DibHandle FrameworkGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* smear = static_cast<const FrameworkExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kFrameworkLook, &frame) == 0) return nullptr;
  frame.pad += SpreadMargin(frame.shared.fontSize);
  int marginX = frame.pad;
  int marginY = frame.pad;
  if (ControlChecked(dialog, kFullFrameId) != 0) {
    marginX += frame.textWidth * kFullFramePercent / 100;
    marginY += frame.textHeight * kFullFramePercent / 100;
  }
  int shadowGrowth = frame.look.shadowOn != 0 ? frame.look.offset : 0;
  frame.size = {frame.textWidth + 2 * marginX + shadowGrowth, frame.textHeight + 2 * marginY + shadowGrowth};

  WarpedLayers layers{};
  layers.fillId = kFillId;
  layers.shadowFillId = kShadowFillId;
  layers.backgroundId = kBackgroundId;
  layers.transform = SmearLayer;
  layers.parameters = smear;
  layers.originX = marginX;
  layers.originY = marginY;
  layers.layerLevel = smear->level;
  layers.outlineLevel = smear->level;
  layers.shadowFromPlace = 1;  // the shadow is cut where its place begins
  return WarpedLayersCompose(dialog, frame, layers);
}

int FrameworkPreview(EffectContext* context) {
  FrameworkExtra smear = kPreviewSmear;
  context->flags |= kEffectFlagPreview;
  context->extra = &smear;
  context->previewBitmap = FrameworkGenerate(context);
  return 1;
}

int FrameworkBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  int rolling = ControlChecked(dialog, 32);
  auto delay = static_cast<std::uint32_t>(ReadControlInt(dialog, 11));
  auto pause = static_cast<std::uint32_t>(ReadControlInt(dialog, 33));
  int frames = ReadControlInt(dialog, kFramesId);
  FrameworkExtra smear = kPreviewSmear;
  context->extra = &smear;
  if (rolling != 0) return InOutBuild(context, FrameworkGenerate, SetSmear, frames, delay, pause);

  context->flags |= kEffectFlagStill;
  return AppendGeneratedFrame(context, FrameworkGenerate, delay);
}
