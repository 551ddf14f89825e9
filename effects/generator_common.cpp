#include "effects/generator_common.h"

namespace {

constexpr int kIdDelay = 11;
constexpr int kIdAntialias = 22;
constexpr int kIdText = 23;
constexpr int kIdBold = 25;
constexpr int kIdItalic = 26;
constexpr int kIdFontName = 27;
constexpr int kIdFontSize = 28;
constexpr int kIdPadding = 31;
constexpr int kIdRolling = 32;
constexpr int kIdPause = 33;
constexpr int kIdCharacterSpace = 34;

constexpr int kFullLevel = 255;

// An absent control reads as nothing rather than through its missing range.
int CheckedOrOff(const Controls* dialog, int id) { return id != 0 ? ControlChecked(dialog, id) : 0; }
int IntOrZero(const Controls* dialog, int id) { return id != 0 ? ReadControlInt(dialog, id) : 0; }

std::uint32_t BlendChannel(std::uint32_t colour, std::uint32_t pixel, std::uint32_t level) {
  return (colour * level / 255 + pixel * (255 - level) / 255) & 0xFF;
}

// Where a compositing loop starts in the mask, where its values land, and
// the level that scales each mask value first (255 keeps it).
struct MaskWalk {
  int firstX;
  int firstY;
  int moveX;  // a mask value at (x, y) lands in the frame at (x + moveX, y + moveY)
  int moveY;
  int scale;
};

// Walks the mask's rows and columns from walk's first row and column, with
// the colour that colourAt gives for mask place (x, y). A pixel that falls
// outside the frame is left out. The usual case, an 8-bit mask over a 24-bit
// frame from inside the mask, walks the stored rows directly.
template <typename ColourAt>
void CompositeThroughMask(DibHead* frame, const DibHead* mask, const MaskWalk& walk, ColourAt colourAt) {
  bool direct = mask->biBitCount == 8 && frame->biBitCount == 24 && walk.firstX >= 0 && walk.firstY >= 0;
  for (int y = walk.firstY; y < mask->biHeight; ++y) {
    int frameY = y + walk.moveY;
    if (direct && (frameY < 0 || frameY >= frame->biHeight)) continue;
    const std::uint8_t* levels = direct ? DibRow(mask, y) : nullptr;
    std::uint8_t* row = direct ? DibRow(frame, frameY) : nullptr;
    for (int x = walk.firstX; x < mask->biWidth; ++x) {
      int value = direct ? levels[x] : DibGetPixel(mask, x, y) & 0xFF;
      int level = value * walk.scale / kFullLevel;
      if (level == 0) continue;  // blending at level 0 gives the pixel back
      int frameX = x + walk.moveX;
      if (!direct) {
        std::uint32_t pixel = static_cast<std::uint32_t>(DibGetPixel(frame, frameX, frameY));
        DibPutPixel(frame, frameX, frameY, BlendPixel(colourAt(x, y), pixel, level));
        continue;
      }
      if (frameX < 0 || frameX >= frame->biWidth) continue;
      std::uint8_t* p = row + frameX * 3;  // blue, green, red
      std::uint32_t blended = BlendPixel(colourAt(x, y), static_cast<std::uint32_t>(p[0] << 16 | p[1] << 8 | p[2]), level);
      p[0] = static_cast<std::uint8_t>(blended >> 16);
      p[1] = static_cast<std::uint8_t>(blended >> 8);
      p[2] = static_cast<std::uint8_t>(blended);
    }
  }
}

}  // namespace

void ReadSharedControls(const Controls* dialog, SharedControls* shared) {
  shared->textLength = ControlText(dialog, kIdText, shared->text, sizeof shared->text);
  ControlText(dialog, kIdFontName, shared->fontName, sizeof shared->fontName);
  shared->fontSize = ReadControlInt(dialog, kIdFontSize);
  shared->bold = ControlChecked(dialog, kIdBold);
  shared->italic = ControlChecked(dialog, kIdItalic);
  shared->antialias = ControlChecked(dialog, kIdAntialias);
  shared->characterSpace = ReadControlInt(dialog, kIdCharacterSpace);
  shared->padding = ReadControlInt(dialog, kIdPadding);
  shared->delay = ReadControlInt(dialog, kIdDelay);
  shared->pause = ReadControlInt(dialog, kIdPause);
  shared->rolling = ControlChecked(dialog, kIdRolling);
}

int ReadRecordText(const Controls* dialog, char* text, int always) {
  int length = ControlText(dialog, kIdText, text, kEffectTextLimit + 1);
  int end = length;
  if (always != 0 || length > 0) text[end++] = ' ';
  text[end] = 0;
  return length;
}

void ReadPanelLook(const Controls* dialog, const PanelLookIds& ids, PanelLook* look) {
  look->shadowOn = CheckedOrOff(dialog, ids.shadowEnable);
  look->outlineOn = CheckedOrOff(dialog, ids.outlineEnable);
  look->fillLevel = ids.fillOpacity != 0 ? ReadControlInt(dialog, ids.fillOpacity) - 1 : kFullLevel;
  look->shadowLevel = ids.shadowOpacity != 0 ? ReadControlInt(dialog, ids.shadowOpacity) - 1 : kFullLevel;
  look->softness = IntOrZero(dialog, ids.shadowSoftness);
  look->offset = IntOrZero(dialog, ids.shadowOffset);
  look->direction = ids.shadowDirection != 0 ? ReadControlNumber(dialog, ids.shadowDirection) : 0;
  look->outlineColour =
      ids.outlineColour != 0 ? static_cast<std::uint32_t>(ReadControlNumber(dialog, ids.outlineColour)) : 0;
}

// The cells of the direction well: 0 up-left, 1 up, 2 up-right, 3 right,
// 4 left, 5 down-left, 6 down, 7 down-right (where the shadow lies).
ShadowPlacement ShadowPlacementFor(int direction, int offset) {
  const int o = offset;
  switch (direction) {
    case 0: return {o, o, 0, 0};
    case 1: return {0, o, 0, 0};
    case 2: return {0, o, o, 0};
    case 3: return {0, 0, o, 0};
    case 4: return {o, 0, 0, 0};
    case 5: return {o, 0, 0, o};
    case 6: return {0, 0, 0, o};
    case 7: return {0, 0, o, o};
    default: return {0, 0, 0, 0};
  }
}

int FrameMargin(int padding, int softness, int outlineOn) {
  int pad = padding;
  if (softness > 0) pad += 1 + softness / 10;
  if (outlineOn != 0 && pad < 1) pad = 1;
  return pad;
}

int SpreadMargin(int fontSize) { return fontSize / 5 > 2 ? fontSize / 5 : 2; }

FrameSize FrameSizeFor(int textWidth, int textHeight, int pad, int shadowOn, int offset) {
  const int shadowGrowth = shadowOn != 0 ? offset : 0;
  return {textWidth + 2 * pad + shadowGrowth, textHeight + 2 * pad + shadowGrowth};
}

std::uint32_t BlendPixel(std::uint32_t colour, std::uint32_t pixel, int level) {
  const auto m = static_cast<std::uint32_t>(level);
  std::uint32_t result = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    result |= BlendChannel(colour >> shift & 0xFF, pixel >> shift & 0xFF, m) << shift;
  }
  return result;
}

void CompositeFill(DibHead* frame, const DibHead* fill, const DibHead* mask) {
  CompositeFillFrom(frame, fill, mask, 0, 0);
}

void CompositeFillFrom(DibHead* frame, const DibHead* fill, const DibHead* mask, int placeX, int placeY) {
  CompositeFillScaled(frame, fill, mask, {0, 0, placeX, placeY, kFullLevel});
}

void CompositeFillScaled(DibHead* frame, const DibHead* fill, const DibHead* mask, const FillWalk& walk) {
  CompositeThroughMask(frame, mask, {walk.firstX, walk.firstY, 0, 0, walk.level}, [&](int x, int y) {
    return static_cast<std::uint32_t>(DibGetPixel(fill, x - walk.fillX, y - walk.fillY));
  });
}

void CompositeFillWithin(DibHead* frame, const DibHead* fill, const DibHead* mask) {
  int width = mask->biWidth < fill->biWidth ? mask->biWidth : fill->biWidth;
  int height = mask->biHeight < fill->biHeight ? mask->biHeight : fill->biHeight;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      int level = DibGetPixel(mask, x, y) & 0xFF;
      if (level == 0) continue;
      std::int32_t pixel = DibGetPixel(frame, x, y);
      if (pixel == -1) continue;
      auto colour = static_cast<std::uint32_t>(DibGetPixel(fill, x, y));
      DibPutPixel(frame, x, y, BlendPixel(colour, static_cast<std::uint32_t>(pixel), level));
    }
  }
}

void CompositeOutline(DibHead* frame, std::uint32_t colour, const DibHead* mask) {
  CompositeOutlineFaded(frame, colour, mask, kFullLevel);
}

void CompositeOutlineFaded(DibHead* frame, std::uint32_t colour, const DibHead* mask, int level) {
  CompositeThroughMask(frame, mask, {0, 0, 0, 0, level}, [colour](int, int) { return colour; });
}

void CompositeOutlineShiftedLeft(DibHead* frame, std::uint32_t colour, const DibHead* mask) {
  CompositeThroughMask(frame, mask, {1, 0, -1, 0, kFullLevel}, [colour](int, int) { return colour; });
}

void CompositeFillAt(DibHead* frame, const DibHead* fill, const DibHead* mask, int left, int top) {
  CompositeThroughMask(frame, mask, {0, 0, left, top, kFullLevel}, [&](int x, int y) {
    return static_cast<std::uint32_t>(DibGetPixel(fill, x + left, y + top));
  });
}

void CompositeLetterOutline(DibHead* frame, std::uint32_t colour, const DibHead* ring, int left, int top, int level) {
  CompositeThroughMask(frame, ring, {1, 1, left - 1, top - 1, level}, [colour](int, int) { return colour; });
}

int AppendEffectFrame(EffectContext* context, DibHandle image, std::uint32_t delay) {
  FrameRecord record{};
  record.image = image;
  record.delay = delay;
  record.transparentIndex = -1;
  if (FrameListAppend(context->frames, &record) == 1) return 1;
  MemFree(image);
  return 0;
}

int AppendGeneratedFrame(EffectContext* context, EffectGenerator generate, std::uint32_t delay) {
  DibHandle image = generate(context);
  return image != nullptr ? AppendEffectFrame(context, image, delay) : 0;
}

BuildTiming ReadBuildTiming(const Controls* dialog) {
  return {ControlChecked(dialog, kIdRolling), static_cast<std::uint32_t>(ReadControlInt(dialog, kIdDelay)),
          static_cast<std::uint32_t>(ReadControlInt(dialog, kIdPause))};
}

int RunEffectPreview(EffectContext* context, void* extra, EffectGenerator generate) {
  context->flags |= kEffectFlagPreview;
  context->extra = extra;
  context->previewBitmap = generate(context);
  return 1;
}
