#include "effects/doppler.h"

#include <cstring>

#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "raster/resample.h"

namespace {

constexpr PanelLookIds kNoLook = {};
constexpr int kFillId = 324;
constexpr int kBackgroundId = 326;
constexpr int kFramesId = 328;
constexpr int kRangeId = 332;
constexpr int kPaddingId = 31;  // the plain margin alone: no shadow, no outline

// The text's mask at its own size and the fill at the frame's, once.
int MakeTextAndFill(const Controls* dialog, ZoomExtra* zoom) {
  TextFrame frame;
  TextFrameMeasureText(dialog, kNoLook, zoom->text, &frame);
  zoom->width = frame.textWidth;
  zoom->height = frame.textHeight;
  zoom->mask = TextMask(frame.style, 0, 0, frame.text, zoom->width, zoom->height, 255, frame.advances);
  zoom->fill = RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height);
  zoom->ready = zoom->mask != nullptr && zoom->fill != nullptr ? 1 : 0;
  return zoom->ready;
}

// The picture of this frame: the mask itself at its own size, else resized.
DibHandle ScaledMask(const ZoomExtra* zoom, int scale, int asIs) {
  return asIs != 0 ? DibClone(zoom->mask) : DibResize(zoom->mask, scale, scale);
}

// Centres the picture on the frame and blends the fill through it at level;
// what overhangs the frame is lost.
void CompositeCentred(DibHead* frame, const DibHead* fill, const DibHead* picture, int level) {
  const int x0 = (fill->biWidth - picture->biWidth) / 2;
  const int y0 = (fill->biHeight - picture->biHeight) / 2;
  for (int j = 0; j < picture->biHeight; ++j) {
    const int y = y0 + j;
    if (y < 0 || y >= frame->biHeight) continue;
    for (int i = 0; i < picture->biWidth; ++i) {
      const int x = x0 + i;
      const int value = DibGetPixel(picture, i, j) & 0xFF;
      if (value == 0 || x < 0 || x >= frame->biWidth) continue;
      auto colour = static_cast<std::uint32_t>(DibGetPixel(fill, x, y));
      auto pixel = static_cast<std::uint32_t>(DibGetPixel(frame, x, y));
      DibPutPixel(frame, x, y, BlendPixel(colour, pixel, value * level / 255));
    }
  }
}

// Frees what the generator made, whichever way the callback ends.
struct ZoomRecordGuard {
  ZoomExtra* zoom;
  ~ZoomRecordGuard() {
    MemFree(zoom->fill);
    MemFree(zoom->mask);
  }
};

// The record as both callbacks begin it. Returns the text's length without
// its blank.
int StartRecord(EffectContext* context, ZoomExtra* zoom) {
  const Controls* dialog = context->dialog;
  int length = ReadRecordText(dialog, zoom->text, 1);
  const int range = ReadControlInt(dialog, kRangeId);
  const int frames = ReadControlInt(dialog, kFramesId);
  zoom->low = 100 - range;
  zoom->high = 2 * range - 2 * range % frames;
  context->extra = zoom;
  return length;
}

}  // namespace

ZoomStep DopplerStep(int index, int frames, int low, int high) {
  const int half = frames / 2;
  // With half 0 the one frame is the text at its own size and strength.
  if (half == 0) return {100, 255};
  if (index < half)
    return {low + static_cast<int>((100 - low) / static_cast<double>(half) * index),
            static_cast<int>(index / static_cast<double>(half) * 255)};
  const int t = index - half;
  return {100 + static_cast<int>((high - 100) / static_cast<double>(half) * t),
          static_cast<int>((1 - t / static_cast<double>(half)) * 255)};
}

DibHandle DopplerGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* zoom = static_cast<ZoomExtra*>(context->extra);
  if (zoom->ready == 0 && MakeTextAndFill(dialog, zoom) == 0) return nullptr;

  const int pad = ReadControlInt(dialog, kPaddingId);
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, zoom->width + 2 * pad, zoom->height + 2 * pad));
  ZoomStep step{100, 255};
  if ((context->flags & kEffectFlagPreview) == 0)
    step = DopplerStep(zoom->index, zoom->frames, zoom->low, zoom->high);
  const int asIs = (context->flags & kEffectFlagPreview) != 0 || zoom->index == zoom->frames / 2;
  DibOwner scaled(ScaledMask(zoom, step.scale, asIs));
  DibLock pictureLock(picture.get());
  DibLock fillLock(zoom->fill);
  DibLock scaledLock(scaled.get());
  if (pictureLock.head == nullptr || fillLock.head == nullptr || scaledLock.head == nullptr) return nullptr;
  CompositeCentred(pictureLock.head, fillLock.head, scaledLock.head, step.level);
  return picture.release();
}

int DopplerPreview(EffectContext* context) {
  ZoomExtra zoom{};
  ZoomRecordGuard guard{&zoom};
  context->previewBitmap = nullptr;
  if (StartRecord(context, &zoom) == 0) return 1;  // no text: a blank preview
  zoom.frames = 1;
  context->flags |= kEffectFlagPreview;
  MemFree(DopplerGenerate(context));  // makes the mask and the fill
  return RunEffectPreview(context, &zoom, DopplerGenerate);
}

// Frames frames without pause; the text stands at its own size and full
// strength in the frame at index Frames / 2.
int DopplerBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const BuildTiming timing = ReadBuildTiming(dialog);
  ZoomExtra zoom{};
  ZoomRecordGuard guard{&zoom};
  const int length = StartRecord(context, &zoom);
  DibHandle first = length > 0 ? DopplerGenerate(context) : nullptr;
  if (first == nullptr) return 0;
  MemFree(first);

  if (timing.rolling == 0) {
    context->flags |= kEffectFlagPreview;
    zoom.frames = 1;
    zoom.index = 0;
    return AppendGeneratedFrame(context, DopplerGenerate, timing.delay);
  }
  zoom.frames = ReadControlInt(dialog, kFramesId);
  for (int i = 0; i < zoom.frames; ++i) {
    zoom.index = i;
    if (AppendGeneratedFrame(context, DopplerGenerate, timing.delay) == 0) return 0;
    // The progress stays where it is in this effect.
    HostProgress(context->host, 0, static_cast<int>(std::strlen(zoom.text)));
  }
  context->extra = nullptr;  // the record ends with this call
  return 1;
}
