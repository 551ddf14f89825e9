#include "effects/framework.h"

#include "effects/in_out_build.h"
#include "effects/warped_layers.h"

namespace {

constexpr PanelLookIds kFrameworkLook = {516, 537, 519, 525, 527, 529, 531, 535};
constexpr WarpedFillIds kFills = {517, 523, 521};
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

  // The shadow is cut where its place begins; its fill stays with the frame.
  WarpedLayers layers = {.ids = kFills, .transform = SmearLayer, .parameters = smear,
                         .originX = marginX, .originY = marginY,
                         .layerLevel = smear->level, .outlineLevel = smear->level,
                         .shadowFromPlace = 1, .shadowFillFollows = 0, .keepsSolid = 1};
  return WarpedLayersCompose(dialog, frame, layers);
}

int FrameworkPreview(EffectContext* context) {
  FrameworkExtra smear = kPreviewSmear;
  return RunEffectPreview(context, &smear, FrameworkGenerate);
}

int FrameworkBuild(EffectContext* context) {
  FrameworkExtra smear = kPreviewSmear;
  context->extra = &smear;
  return InOutBuild(context, FrameworkGenerate, SetSmear, kFramesId);
}
