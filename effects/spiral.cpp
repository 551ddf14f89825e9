#include "effects/spiral.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "effects/spiral_turn.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "raster/resample.h"

namespace {

constexpr int kFillId = 241;
constexpr int kFinalFillId = 243;
constexpr int kBackgroundId = 245;
constexpr int kStepId = 247;
constexpr int kMinOpacityId = 249;
constexpr int kStartAngleId = 251;
constexpr int kMinScaleId = 253;
constexpr int kJustifyId = 255;
constexpr int kUseFinalId = 257;
constexpr int kFullScale = 100;
constexpr int kFullLevel = 255;
constexpr std::uint32_t kBackgroundFrameDelay = 1;

constexpr std::array<std::uint8_t, kPaletteBytes> MakeThreeThreeTwo() {
  std::array<std::uint8_t, kPaletteBytes> table{};
  for (int i = 0; i < 256; ++i) {
    table[i * 3] = static_cast<std::uint8_t>((i >> 5 & 7) * 255 / 7);
    table[i * 3 + 1] = static_cast<std::uint8_t>((i >> 2 & 7) * 255 / 7);
    table[i * 3 + 2] = static_cast<std::uint8_t>((i & 3) * 255 / 3);
  }
  return table;
}
// The stamp's colour table; only its pixel values are ever used.
constexpr std::array<std::uint8_t, kPaletteBytes> kThreeThreeTwo = MakeThreeThreeTwo();

int MarginOf(const SpiralExtra& extra) { return extra.shared.padding + 1; }

// The panel and the text, read once per preview or build.
void ReadSpiralExtra(const Controls* dialog, SpiralExtra* extra) {
  ReadSharedControls(dialog, &extra->shared);
  std::memcpy(extra->text, extra->shared.text, extra->shared.textLength);
  extra->text[extra->shared.textLength] = ' ';
  extra->fontSize = extra->shared.fontSize / 2;
  extra->justify = ControlSelection(dialog, kJustifyId);
  extra->useFinal = ControlChecked(dialog, kUseFinalId);
  extra->startSetting = ReadControlInt(dialog, kStartAngleId);
  SpiralAnglesFor(extra->startSetting, ReadControlInt(dialog, kStepId), ReadControlInt(dialog, kMinScaleId),
                  ReadControlInt(dialog, kMinOpacityId), extra);
}

// Where the text stands in the stamp across: ending at the centre,
// centred on it, or starting at it.
int JustifiedLeft(int justify, int side, int textWidth) {
  switch (justify) {
    case 0:
      return side / 2 - textWidth;
    case 2:
      return side / 2;
    default:
      return side / 2 - textWidth / 2;
  }
}

// The text mask in the middle of a square twice the padded text's width,
// and the two fills at the frame's size. 0 for an empty text, for a frame
// too large to be made, or on failure.
int PrepareStamp(const Controls* dialog, SpiralExtra* extra) {
  if (extra->shared.textLength < 1) return 0;
  const SharedControls& shared = extra->shared;
  const int pad = MarginOf(*extra);
  const TextStyle style =
      TextStyleMake(dialog->window, shared.fontName, extra->fontSize, shared.bold, shared.italic, shared.antialias);
  std::int32_t advances[sizeof extra->text] = {};
  TextMeasure(dialog->window, extra->text, style, shared.characterSpace, &extra->textWidth, &extra->textHeight,
              advances);
  // The frame is the largest bitmap: if it cannot be counted, nothing is made.
  const std::int64_t wantedSide = 2 * (static_cast<std::int64_t>(extra->textWidth) + pad);
  if (!DibSizeFits(wantedSide + 2 * pad, wantedSide + 2 * pad, 24)) return 0;
  const int side = static_cast<int>(wantedSide);
  extra->stampWidth = extra->stampHeight = side;
  const int frameSide = side + 2 * pad;

  DibOwner mask(TextMask(style, 0, 0, extra->text, extra->textWidth, extra->textHeight, kFullLevel, advances));
  extra->stamp.reset(DibNew(extra->stampWidth, extra->stampHeight, kThreeThreeTwo.data(), 8));
  DibLock maskLock(mask.get());
  DibLock stampLock(extra->stamp.get());
  if (maskLock.head == nullptr || stampLock.head == nullptr) return 0;
  DibRegionCopy(stampLock.head, JustifiedLeft(extra->justify, side, extra->textWidth), side / 2 - extra->textHeight / 2,
                maskLock.head, 0, 0, extra->textWidth, extra->textHeight);
  extra->fill.reset(RenderFillOf(dialog, kFillId, frameSide, frameSide));
  extra->finalFill.reset(RenderFillOf(dialog, kFinalFillId, frameSide, frameSide));
  if (extra->fill == nullptr || extra->finalFill == nullptr) return 0;
  extra->ready = true;
  return 1;
}

// The fill blended over the frame through the stamp at (left, top), each
// stamp value scaled by alpha / 255; fill and frame are read at one place.
void StampThrough(DibHead* frame, const DibHead* fill, const DibHead* stamp, int left, int top, int alpha) {
  const int firstY = std::max(0, -top);
  const int lastY = std::min({stamp->biHeight, frame->biHeight - top, fill->biHeight - top});
  const int firstX = std::max(0, -left);
  const int lastX = std::min({stamp->biWidth, frame->biWidth - left, fill->biWidth - left});
  for (int y = firstY; y < lastY; ++y) {
    const std::uint8_t* values = DibRow(stamp, y);
    int inkFirst = 0;
    int inkStop = 0;
    DibRowInk(values, stamp->biWidth, &inkFirst, &inkStop);
    for (int x = std::max(firstX, inkFirst); x < std::min(lastX, inkStop); ++x) {
      if (values[x] == 0) continue;
      const int level = values[x] * alpha / kFullLevel;
      const auto colour = static_cast<std::uint32_t>(DibGetPixel(fill, left + x, top + y));
      const auto pixel = static_cast<std::uint32_t>(DibGetPixel(frame, left + x, top + y));
      DibPutPixel(frame, left + x, top + y, BlendPixel(colour, pixel, level));
    }
  }
}

// The k-th stamp, turned and scaled, laid on the frame; its ink joins bounds.
int LayStamp(SpiralExtra* extra, int angle, int k, double slope, int smooth, DibHead* frame) {
  DibOwner stamp(SpiralTurn(extra->stamp.get(), angle, smooth));
  if (stamp != nullptr && extra->minScale != kFullScale) {
    const int scale = k * extra->scaleStep + extra->minScale;
    stamp.reset(DibResize(stamp.get(), scale, scale));
  }
  const bool final = k == extra->stepCount && extra->useFinal != 0;
  DibLock stampLock(stamp.get());
  DibLock fillLock(final ? extra->finalFill.get() : extra->fill.get());
  if (stampLock.head == nullptr || fillLock.head == nullptr) return 0;
  // Centred on the fill, then moved by the margin once: the full-size stamp
  // sits 2 * pad from the top left and flush with the bottom right.
  const int offX = (fillLock.head->biWidth - stampLock.head->biWidth) / 2;
  const int offY = (fillLock.head->biHeight - stampLock.head->biHeight) / 2;
  const int pad = MarginOf(*extra);
  const int alpha = static_cast<int>(k * slope) + extra->minOpacity;
  StampThrough(frame, fillLock.head, stampLock.head, std::max(offX, 0) + pad, std::max(offY, 0) + pad, alpha);
  extra->bounds = SpiralBoundsUnion(extra->bounds, SpiralBounds(stampLock.head, offX, offY));
  return 1;
}

// The rectangle every frame is cropped to: the stamped bounds grown by the
// margin and moved right and down by it. Empty when nothing was stamped.
bool CropRectangle(const SpiralExtra& extra, DibRect* rect) {
  const DibRect& b = extra.bounds;
  if (b.right - b.left <= 0 || b.bottom - b.top <= 0) return false;
  const int pad = MarginOf(extra);
  const DibRect grown = {b.left - pad, b.top - pad, b.right + pad, b.bottom + pad};
  *rect = {grown.left + pad, grown.top + pad, grown.right + pad, grown.bottom + pad};
  return true;
}

// The picture cropped to the stamped bounds, or as it was if there are
// none or the crop fails.
DibHandle CroppedOrKept(DibHandle picture, const SpiralExtra& extra) {
  DibRect rect;
  if (!CropRectangle(extra, &rect)) return picture;
  DibHandle cropped = DibCrop(picture, rect);
  if (cropped == nullptr) return picture;
  MemFree(picture);
  return cropped;
}

// Every frame of the list cropped alike; a failed crop leaves that frame and
// the ones after it as they are.
void CropFrames(FrameList* frames, const SpiralExtra& extra) {
  DibRect rect;
  if (!CropRectangle(extra, &rect)) return;
  for (int i = 0; i < frames->count; ++i) {
    FrameRecord record;
    if (FrameRecordRead(frames, i, &record) == 0) return;
    DibHandle cropped = DibCrop(record.image, rect);
    if (cropped == nullptr) return;
    MemFree(record.image);
    record.image = cropped;
    FrameRecordWrite(frames, i, &record);
  }
}

// The animated build: a background frame, then one more stamp a frame,
// all cropped alike at the end.
int BuildSpiralSequence(EffectContext* context, SpiralExtra* extra, std::uint32_t delay, std::uint32_t pause) {
  context->flags |= kEffectFlagSpiralBuild;
  const int background = AppendGeneratedFrame(context, SpiralGenerate, kBackgroundFrameDelay);
  context->flags &= ~kEffectFlagSpiralBuild;
  if (background == 0) return 0;
  for (int d = 0; d <= extra->startAngle; d += extra->step) {
    extra->endAngle = extra->startAngle - d - extra->step;
    if (AppendGeneratedFrame(context, SpiralGenerate, delay) == 0) return 0;
    HostProgress(context->host, d, extra->startSetting);
  }
  CropFrames(context->frames, *extra);
  FramePatchDelay(context->frames, pause + delay);
  return 1;
}

}  // namespace

void SpiralAnglesFor(int startAngle, int step, int minScale, int minOpacity, SpiralExtra* extra) {
  extra->step = step;
  extra->startAngle = startAngle - startAngle % step;
  extra->stepCount = startAngle / step;
  extra->minScale = minScale;
  extra->minOpacity = minOpacity;
  extra->maxOpacity = kFullLevel;
  // A step larger than the start leaves one stamp, at angle 0: it is the
  // final one and stands at full size and strength.
  if (extra->stepCount == 0) {
    extra->minScale = kFullScale;
    extra->minOpacity = extra->maxOpacity;
  }
  const int shrink = kFullScale - extra->minScale;
  extra->scaleStep = shrink == 0 ? 0 : (shrink - shrink % extra->stepCount) / extra->stepCount;
}

DibHandle SpiralGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* extra = static_cast<SpiralExtra*>(context->extra);
  if (!extra->ready && PrepareStamp(dialog, extra) == 0) return nullptr;
  const int frameSide = extra->stampWidth + 2 * MarginOf(*extra);
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frameSide, frameSide));
  if (picture == nullptr) return nullptr;
  if ((context->flags & kEffectFlagSpiralBuild) != 0) return picture.release();

  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  const int smooth = (context->flags & kEffectFlagPreview) != 0 ? 0 : 1;
  const double slope =
      extra->stepCount > 0 ? static_cast<double>(extra->maxOpacity - extra->minOpacity) / extra->stepCount : 0.0;
  for (int angle = extra->startAngle, k = 0; angle > extra->endAngle; angle -= extra->step, ++k) {
    if (LayStamp(extra, angle, k, slope, smooth, pictureLock.head) == 0) return nullptr;
  }
  return picture.release();
}

int SpiralPreview(EffectContext* context) {
  const Controls* dialog = context->dialog;
  void* cursor = ControlWaitCursor(dialog, 1, nullptr);
  SpiralExtra extra{};
  ReadSpiralExtra(dialog, &extra);
  extra.endAngle = -extra.step;
  context->flags |= kEffectFlagPreview;
  context->extra = &extra;
  DibHandle picture = SpiralGenerate(context);
  context->previewBitmap = picture != nullptr ? CroppedOrKept(picture, extra) : nullptr;
  context->extra = nullptr;
  ControlWaitCursor(dialog, 0, cursor);
  return picture != nullptr ? 1 : 0;
}

int SpiralBuild(EffectContext* context) {
  SpiralExtra extra{};
  ReadSpiralExtra(context->dialog, &extra);
  const auto delay = static_cast<std::uint32_t>(extra.shared.delay);
  const auto pause = static_cast<std::uint32_t>(extra.shared.pause);
  context->extra = &extra;
  int result = 0;
  if (extra.shared.rolling == 0) {
    extra.endAngle = -extra.step;
    DibHandle still = SpiralGenerate(context);
    result = still != nullptr ? AppendEffectFrame(context, CroppedOrKept(still, extra), delay) : 0;
  } else {
    result = BuildSpiralSequence(context, &extra, delay, pause);
  }
  context->extra = nullptr;
  return result;
}
