#include "effects/hot_lead.h"

#include <cstring>

#include "effects/hot_lead_emboss.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kHotLeadLook = {0, 0, 485, 0, 0, 0, 0, 0};
constexpr int kFillId = 483;
constexpr int kBackgroundId = 487;
constexpr int kBlankFrameId = 489;
constexpr int kRadiusId = 490;
constexpr int kDepthId = 492;
constexpr int kBorder = 2;  // round the padded text, room for the relief

// The text with its blank, all of it shown, and the kernel's settings.
void ReadHotLeadExtra(const Controls* dialog, HotLeadExtra* extra) {
  std::memset(extra, 0, sizeof *extra);
  ReadSharedControls(dialog, &extra->shared);
  const SharedControls& shared = extra->shared;
  if (shared.textLength > 0) {
    std::memcpy(extra->fullText, shared.text, shared.textLength);
    extra->fullText[shared.textLength] = ' ';
  }
  std::memcpy(extra->shownText, extra->fullText, sizeof extra->shownText);
  extra->radius = ReadControlInt(dialog, kRadiusId);
  extra->embossSize = ReadControlInt(dialog, kDepthId);
}

}  // namespace

DibHandle HotLeadGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const HotLeadExtra*>(context->extra);
  if (extra->fullText[0] == '\0') return nullptr;
  // The whole line is measured even when part of it shows, so that no
  // letter moves as the line grows.
  TextFrame frame;
  if (TextFrameMeasure(dialog, kHotLeadLook, &frame) == 0) return nullptr;
  const int width = frame.size.width + 2 * kBorder;
  const int height = frame.size.height + 2 * kBorder;

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, width, height));
  DibOwner fill(RenderFillOf(dialog, kFillId, width, height));
  DibOwner relief;
  {
    DibOwner mask(TextMask(frame.style, frame.pad + kBorder, frame.pad + kBorder, extra->shownText, width, height,
                           frame.look.fillLevel, frame.advances));
    if (mask == nullptr) return nullptr;
    const std::vector<double> kernel = HotLeadKernel(extra->radius, extra->embossSize);
    relief.reset(HotLeadConvolve(mask.get(), HotLeadKernelSize(extra->embossSize), kernel.data()));
  }
  DibLock pictureLock(picture.get());
  DibLock fillLock(fill.get());
  DibLock reliefLock(relief.get());
  if (pictureLock.head == nullptr || fillLock.head == nullptr || reliefLock.head == nullptr) return nullptr;
  CompositeFill(pictureLock.head, fillLock.head, reliefLock.head);
  return picture.release();
}

int HotLeadPreview(EffectContext* context) {
  HotLeadExtra extra;
  ReadHotLeadExtra(context->dialog, &extra);
  return RunEffectPreview(context, &extra, HotLeadGenerate);
}

// The whole sequence, whatever the Animated box says: an optional blank
// frame, then one more letter a frame, the last one pausing.
int HotLeadBuild(EffectContext* context) {
  HotLeadExtra extra;
  ReadHotLeadExtra(context->dialog, &extra);
  const auto delay = static_cast<std::uint32_t>(extra.shared.delay);
  const auto pause = static_cast<std::uint32_t>(extra.shared.pause);
  const int blankFrame = ControlChecked(context->dialog, kBlankFrameId);
  context->extra = &extra;
  context->flags |= kEffectFlagStill;

  DibHandle whole = HotLeadGenerate(context);
  if (whole == nullptr) return 0;
  MemFree(whole);

  const int length = static_cast<int>(std::strlen(extra.fullText));
  if (blankFrame != 0) {
    std::memset(extra.shownText, 0, sizeof extra.shownText);
    // Before a single letter the blank frame pauses as well.
    const bool singleLetter = extra.fullText[2] == '\0';
    if (AppendGeneratedFrame(context, HotLeadGenerate, delay + (singleLetter ? pause : 0)) == 0) return 0;
  }
  for (int n = 1; extra.fullText[n] != '\0'; ++n) {
    std::memcpy(extra.shownText, extra.fullText, n);
    extra.shownText[n] = '\0';
    const bool last = extra.fullText[n + 1] == '\0';
    if (AppendGeneratedFrame(context, HotLeadGenerate, delay + (last ? pause : 0)) == 0) return 0;
    HostProgress(context->host, n - 1, length);
  }
  return 1;
}
