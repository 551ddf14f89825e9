#include "effects/simple.h"

#include <memory>
#include <new>

#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

constexpr PanelLookIds kSimpleLook = {100, 121, 103, 109, 111, 113, 115, 119};
constexpr int kFillId = 101;
constexpr int kShadowFillId = 107;
constexpr int kBackgroundId = 105;
constexpr int kFramesId = 117;
constexpr int kScrollId = 122;

}  // namespace

DibHandle SimpleGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* scroll = static_cast<const SimpleExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kSimpleLook, &frame) == 0) return nullptr;

  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  int baseX = scroll->scrollX + frame.pad;
  int baseY = scroll->scrollY + frame.pad;
  if (frame.look.shadowOn != 0 &&
      TextFrameCompositeShadow(dialog, frame, pictureLock.head, kShadowFillId, baseX + frame.place.shadowX,
                               baseY + frame.place.shadowY, kShadowFillMoves) == 0)
    return nullptr;
  int textX = baseX + frame.place.textX;
  int textY = baseY + frame.place.textY;
  DibOwner fill(RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height));
  DibLock fillLock(fill.get());
  if (fillLock.head == nullptr || TextFrameCompositeText(frame, pictureLock.head, fillLock.head, textX, textY) == 0)
    return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int SimpleScrollPlan(int direction, int width, int height, int frames, ScrollStep* steps) {
  bool vertical = direction == 0 || direction == 3;
  bool decreasing = direction == 0 || direction == 2;
  int size = vertical ? height : width;
  int span = 2 * size;
  int count = frames < span ? frames : span;
  double step = static_cast<double>(span) / count;
  double offset = decreasing ? size : -size;
  for (int i = 0; i < count; ++i) {
    bool last = i == count - 1;
    if (decreasing) {
      offset -= step;
      steps[i].pauses = last || (offset >= 0 && offset - step < 0);
    } else {
      steps[i].pauses = last || (offset < 0 && offset + step >= 0);
      offset += step;
    }
    steps[i].offset = static_cast<int>(offset);
  }
  return count;
}

int SimplePreview(EffectContext* context) {
  SimpleExtra extra{};
  return RunEffectPreview(context, &extra, SimpleGenerate);
}

int SimpleBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);
  int frames = ReadControlInt(dialog, kFramesId);
  int direction = ReadControlNumber(dialog, kScrollId);

  SimpleExtra extra{};
  context->extra = &extra;
  context->flags |= kEffectFlagStill;
  DibHandle still = SimpleGenerate(context);
  if (still == nullptr) return 0;
  if (timing.rolling == 0) return AppendEffectFrame(context, still, timing.delay);

  int width = 0;
  int height = 0;
  int sized = DibSizeOf(still, &width, &height);
  MemFree(still);
  if (sized == 0) return 0;

  std::unique_ptr<ScrollStep[]> steps(new (std::nothrow) ScrollStep[static_cast<std::size_t>(frames)]);
  if (steps == nullptr) return 0;
  int count = SimpleScrollPlan(direction, width, height, frames, steps.get());
  bool vertical = direction == 0 || direction == 3;
  for (int i = 0; i < count; ++i) {
    extra.scrollX = vertical ? 0 : steps[i].offset;
    extra.scrollY = vertical ? steps[i].offset : 0;
    if (AppendGeneratedFrame(context, SimpleGenerate, timing.delay + (steps[i].pauses ? timing.pause : 0)) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
