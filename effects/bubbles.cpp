#include "effects/bubbles.h"

#include "effects/bubble_field.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"

namespace {

// The two panels differ only in their ids and in which fill the field takes
// the place of.
struct BubblePanel {
  PanelLookIds look;
  BubbleControlIds field;
  int otherFill;   // the background in Bubbles, the letters' fill in Background Bubbles
  int shadowFill;
  int frames;
  bool fieldIsBackground;
};

constexpr BubblePanel kBubbles = {
    {161, 182, 164, 170, 172, 174, 176, 180}, {162, 183, 185, 187, 189, 191}, 166, 168, 178, false};
constexpr BubblePanel kBackgroundBubbles = {
    {378, 399, 381, 387, 389, 391, 393, 397}, {379, 400, 402, 404, 406, 408}, 383, 385, 395, true};

DibHandle Generate(EffectContext* context, const BubblePanel& panel) {
  const Controls* dialog = context->dialog;
  auto* field = static_cast<BubbleField*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, panel.look, &frame) == 0) return nullptr;
  if (field->ready == 0) {
    int width = frame.textWidth + 2 * frame.pad;
    int height = frame.textHeight + 2 * frame.pad;
    if (InitBubbleField(field, dialog, panel.field, width, height, field->loopFrames) == 0) return nullptr;
    field->ready = 1;
  }

  // Both pictures stop at the field's size where it stands for the canvas.
  DibOwner other(RenderFillOf(dialog, panel.otherFill, frame.size.width, frame.size.height));
  if (other == nullptr) return nullptr;
  DibOwner bubbles(DrawBubbleField(dialog, panel.field, field, field->frame));
  if (bubbles == nullptr) return nullptr;
  DibOwner picture(panel.fieldIsBackground ? bubbles.release() : other.release());
  DibOwner lettersFill(panel.fieldIsBackground ? other.release() : bubbles.release());
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;

  int baseX = field->textOffsetX + frame.pad;
  int baseY = field->textOffsetY + frame.pad;
  if (frame.look.shadowOn != 0 &&
      TextFrameCompositeShadow(dialog, frame, pictureLock.head, panel.shadowFill, baseX + frame.place.shadowX,
                               baseY + frame.place.shadowY, kShadowFillFixed) == 0)
    return nullptr;
  int textX = baseX + frame.place.textX;
  int textY = baseY + frame.place.textY;
  DibLock fillLock(lettersFill.get());
  if (fillLock.head == nullptr || TextFrameCompositeText(frame, pictureLock.head, fillLock.head, textX, textY) == 0)
    return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int Preview(EffectContext* context, EffectGenerator generate) {
  BubbleField field{};
  field.loopFrames = 1;
  int result = RunEffectPreview(context, &field, generate);
  FreeBubbleField(&field);
  return result;
}

// The sizing call has already turned every bubble one step, so frame i shows
// the sway one step further on; and when the height cuts the count below the
// frames setting, the loop does not close.
int BuildFrames(EffectContext* context, const BubblePanel& panel, BubbleField* field,
                EffectGenerator generate) {
  BuildTiming timing = ReadBuildTiming(context->dialog);
  int frames = ReadControlInt(context->dialog, panel.frames);
  field->loopFrames = frames;
  context->extra = field;
  context->flags |= kEffectFlagStill;
  DibHandle first = generate(context);
  if (first == nullptr) return 0;
  if (timing.rolling == 0) return AppendEffectFrame(context, first, timing.delay);

  int width = 0;
  int height = 0;
  int sized = DibSizeOf(first, &width, &height);
  MemFree(first);
  if (sized == 0) return 0;
  int count = frames < 2 * height ? frames : 2 * height;
  for (int i = 0; i < count; ++i) {
    field->frame = i;
    if (AppendGeneratedFrame(context, generate, timing.delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}

int Build(EffectContext* context, const BubblePanel& panel, EffectGenerator generate) {
  BubbleField field{};
  int result = BuildFrames(context, panel, &field, generate);
  FreeBubbleField(&field);
  return result;
}

}  // namespace

DibHandle BubblesGenerate(EffectContext* context) { return Generate(context, kBubbles); }
DibHandle BackgroundBubblesGenerate(EffectContext* context) { return Generate(context, kBackgroundBubbles); }

int BubblesPreview(EffectContext* context) { return Preview(context, BubblesGenerate); }
int BubblesBuild(EffectContext* context) { return Build(context, kBubbles, BubblesGenerate); }
int BackgroundBubblesPreview(EffectContext* context) { return Preview(context, BackgroundBubblesGenerate); }
int BackgroundBubblesBuild(EffectContext* context) {
  return Build(context, kBackgroundBubbles, BackgroundBubblesGenerate);
}
