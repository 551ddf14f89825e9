#include "effects/generator_common.h"

#include <cstring>

#include "raster/byte_blocks.h"

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

// Where a compositing loop starts and stops in the mask, where its values
// land, and the level that scales each mask value first (255 keeps it).
struct MaskWalk {
  int firstX;
  int firstY;
  int moveX;  // a mask value at (x, y) lands in the frame at (x + moveX, y + moveY)
  int moveY;
  int scale;
  int stopX;  // the walk ends before this column and row
  int stopY;
};

MaskWalk WalkWholeMask(const DibHead* mask, int firstX, int firstY, int moveX, int moveY, int scale) {
  return {firstX, firstY, moveX, moveY, scale, mask->biWidth, mask->biHeight};
}

// Stores n colours from column x on, as colourAt gives them, in the byte
// order of a 24-bit row: blue, green, red. Each pixel is stored as four
// bytes, the fourth overwritten by the next pixel: bytes has one spare byte.
template <typename ColourAt>
void StoreColourBytes(const ColourAt& colourAt, int x, int n, std::uint8_t* bytes) {
  for (int k = 0; k < n; ++k) {
    std::uint32_t colour = colourAt(x + k);
    const std::uint8_t pixel[4] = {static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
                                   static_cast<std::uint8_t>(colour), 0};
    std::memcpy(bytes + 3 * k, pixel, sizeof pixel);
  }
}

// Stores n pixels of one colour in the byte order of a 24-bit row: the first
// pixel, then ever longer copies of what is already stored.
void StoreSamePixels(std::uint32_t colour, int n, std::uint8_t* bytes) {
  if (n < 1) return;
  bytes[0] = static_cast<std::uint8_t>(colour >> 16);
  bytes[1] = static_cast<std::uint8_t>(colour >> 8);
  bytes[2] = static_cast<std::uint8_t>(colour);
  for (int done = 1; done < n; done *= 2) {
    const int more = done < n - done ? done : n - done;
    std::memcpy(bytes + 3 * done, bytes, static_cast<std::size_t>(3 * more));
  }
}

// The colours of one mask row: a fill read at (x - shiftX, y - shiftY),
// straight from its stored row when it is 24-bit and the place lies inside
// it, otherwise through DibGetPixel (a place outside reads as -1).
struct FillRowColours {
  const DibHead* fill;
  int fillY;
  int shiftX;
  const std::uint8_t* row;  // null where the row cannot be read directly

  FillRowColours(const DibHead* source, int y, int shiftX_, int shiftY)
      : fill(source), fillY(y - shiftY), shiftX(shiftX_), row(nullptr) {
    if (source->biBitCount == 24 && fillY >= 0 && fillY < source->biHeight) row = DibRow(source, fillY);
  }
  std::uint32_t operator()(int x) const {
    int fillX = x - shiftX;
    if (row != nullptr && fillX >= 0 && fillX < fill->biWidth) {
      const std::uint8_t* p = row + fillX * 3;
      return static_cast<std::uint32_t>(p[0] << 16 | p[1] << 8 | p[2]);
    }
    return static_cast<std::uint32_t>(DibGetPixel(fill, fillX, fillY));
  }
  void Bytes(int x, int n, std::uint8_t* bytes) const {
    int fillX = x - shiftX;
    if (row != nullptr && fillX >= 0 && fillX + n <= fill->biWidth)
      std::memcpy(bytes, row + fillX * 3, static_cast<std::size_t>(3 * n));
    else
      StoreColourBytes(*this, x, n, bytes);
  }
};

// One colour for every mask place.
struct SolidRowColours {
  std::uint32_t colour;
  std::uint32_t operator()(int) const { return colour; }
  void Bytes(int, int n, std::uint8_t* bytes) const { StoreSamePixels(colour, n, bytes); }
};

// The colours of one mask row of a fill of one colour, fillWidth by
// fillHeight, read at (x - placeX, y - placeY): white past the fill.
struct PlacedColourRowColours {
  std::uint32_t colour;
  int first;  // the columns inside the fill; none when the row is outside
  int stop;
  std::uint32_t operator()(int x) const { return x >= first && x < stop ? colour : 0xFFFFFFFFu; }
  void Bytes(int x, int n, std::uint8_t* bytes) const {
    // White, then the colour inside the fill, then white again.
    const int end = x + n;
    const int inFirst = first < x ? x : first > end ? end : first;
    const int inStop = stop > end ? end : stop < inFirst ? inFirst : stop;
    StoreSamePixels(0xFFFFFFFFu, inFirst - x, bytes);
    StoreSamePixels(colour, inStop - inFirst, bytes + 3 * (inFirst - x));
    StoreSamePixels(0xFFFFFFFFu, end - inStop, bytes + 3 * (inStop - x));
  }
};

// Blends n colours into the 24-bit pixels through mask values from column x
// on, each value scaled first. Byte by byte this is BlendPixel, a level of 0
// included: it gives the pixel back.
template <typename Colours>
void BlendRun(std::uint8_t* pixels, const std::uint8_t* values, int x, int n, int scale, const Colours& colours) {
  constexpr int kChunk = 128;  // pixels a time, so that the working rows stay on the stack
  for (int done = 0; done < n; done += kChunk) {
    const int count = n - done < kChunk ? n - done : kChunk;
    std::uint8_t scaled[kChunk];
    const std::uint8_t* from = values + done;
    StoreBytes(scaled, count, [from, scale](int k) { return static_cast<std::uint8_t>(from[k] * scale / kFullLevel); });
    // Each level goes to its pixel's three bytes as four equal bytes, the
    // fourth overwritten by the next pixel.
    std::uint8_t levels[3 * kChunk + 1];
    for (int k = 0; k < count; ++k) {
      const std::uint8_t level[4] = {scaled[k], scaled[k], scaled[k], scaled[k]};
      std::memcpy(levels + 3 * k, level, sizeof level);
    }
    std::uint8_t colourBytes[3 * kChunk + 1];
    colours.Bytes(x + done, count, colourBytes);
    std::uint8_t* run = pixels + 3 * done;
    StoreBytes(run, 3 * count, [run, &levels, &colourBytes](int i) {
      const unsigned level = levels[i];
      return static_cast<std::uint8_t>(colourBytes[i] * level / 255 + run[i] * (255 - level) / 255);
    });
  }
}

// Walks the mask's rows and columns as walk says, with the colours that
// rowColours(y) gives for mask row y, called with each column x. A pixel that
// falls outside the frame is left out. The usual case, an 8-bit mask over a
// 24-bit frame from inside the mask, blends each row's inked run of stored
// bytes at once.
template <typename RowColours>
void CompositeThroughMask(DibHead* frame, const DibHead* mask, const MaskWalk& walk, RowColours rowColours) {
  bool direct = mask->biBitCount == 8 && frame->biBitCount == 24 && walk.firstX >= 0 && walk.firstY >= 0;
  // The columns of the mask that land inside the frame.
  const int firstX = direct && -walk.moveX > walk.firstX ? -walk.moveX : walk.firstX;
  const int stopX = direct && frame->biWidth - walk.moveX < walk.stopX ? frame->biWidth - walk.moveX : walk.stopX;
  for (int y = walk.firstY; y < walk.stopY; ++y) {
    int frameY = y + walk.moveY;
    if (direct) {
      if (frameY < 0 || frameY >= frame->biHeight || firstX >= stopX) continue;
      const std::uint8_t* values = DibRow(mask, y) + firstX;
      int first = 0;
      int stop = 0;
      DibRowInk(values, stopX - firstX, &first, &stop);
      std::uint8_t* pixels = DibRow(frame, frameY) + 3 * (firstX + first + walk.moveX);
      BlendRun(pixels, values + first, firstX + first, stop - first, walk.scale, rowColours(y));
      continue;
    }
    const auto colourAt = rowColours(y);
    for (int x = walk.firstX; x < walk.stopX; ++x) {
      int level = (DibGetPixel(mask, x, y) & 0xFF) * walk.scale / kFullLevel;
      if (level == 0) continue;  // blending at level 0 gives the pixel back
      int frameX = x + walk.moveX;
      std::int32_t pixel = DibGetPixel(frame, frameX, frameY);
      if (pixel != -1) DibPutPixel(frame, frameX, frameY, BlendPixel(colourAt(x), static_cast<std::uint32_t>(pixel), level));
    }
  }
}

// The row colours of a fill read relative to (shiftX, shiftY).
auto FillRows(const DibHead* fill, int shiftX, int shiftY) {
  return [fill, shiftX, shiftY](int y) { return FillRowColours(fill, y, shiftX, shiftY); };
}

auto SolidRows(std::uint32_t colour) {
  return [colour](int) { return SolidRowColours{colour}; };
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
  CompositeThroughMask(frame, mask, WalkWholeMask(mask, walk.firstX, walk.firstY, 0, 0, walk.level),
                       FillRows(fill, walk.fillX, walk.fillY));
}

void CompositeColourFrom(DibHead* frame, std::uint32_t colour, int fillWidth, int fillHeight, const DibHead* mask,
                         int placeX, int placeY) {
  CompositeThroughMask(frame, mask, WalkWholeMask(mask, 0, 0, 0, 0, kFullLevel), [=](int y) {
    bool inside = y >= placeY && y - placeY < fillHeight;
    return PlacedColourRowColours{colour, inside ? placeX : 0, inside ? placeX + fillWidth : 0};
  });
}

void CompositeFillWithin(DibHead* frame, const DibHead* fill, const DibHead* mask) {
  int width = mask->biWidth < fill->biWidth ? mask->biWidth : fill->biWidth;
  int height = mask->biHeight < fill->biHeight ? mask->biHeight : fill->biHeight;
  CompositeThroughMask(frame, mask, {0, 0, 0, 0, kFullLevel, width, height}, FillRows(fill, 0, 0));
}

void CompositeOutline(DibHead* frame, std::uint32_t colour, const DibHead* mask) {
  CompositeOutlineFaded(frame, colour, mask, kFullLevel);
}

void CompositeOutlineFaded(DibHead* frame, std::uint32_t colour, const DibHead* mask, int level) {
  CompositeThroughMask(frame, mask, WalkWholeMask(mask, 0, 0, 0, 0, level), SolidRows(colour));
}

void CompositeOutlineShiftedLeft(DibHead* frame, std::uint32_t colour, const DibHead* mask) {
  CompositeThroughMask(frame, mask, WalkWholeMask(mask, 1, 0, -1, 0, kFullLevel), SolidRows(colour));
}

void CompositeFillAt(DibHead* frame, const DibHead* fill, const DibHead* mask, int left, int top) {
  CompositeThroughMask(frame, mask, WalkWholeMask(mask, 0, 0, left, top, kFullLevel), FillRows(fill, -left, -top));
}

void CompositeLetterOutline(DibHead* frame, std::uint32_t colour, const DibHead* ring, int left, int top, int level) {
  CompositeThroughMask(frame, ring, WalkWholeMask(ring, 1, 1, left - 1, top - 1, level), SolidRows(colour));
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

int MeasureBuildFrame(EffectContext* context, EffectGenerator generate, FrameSize* size) {
  context->flags |= kEffectFlagStill;
  DibHandle sizing = generate(context);
  int sized = DibSizeOf(sizing, &size->width, &size->height);
  MemFree(sizing);
  context->flags &= ~kEffectFlagStill;
  return sized;
}

int AppendStillFrame(EffectContext* context, EffectGenerator generate, std::uint32_t delay) {
  context->flags |= kEffectFlagStill;
  return AppendGeneratedFrame(context, generate, delay);
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
