#include "raster/text.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "plugin/settings.h"

namespace {

constexpr std::array<std::uint8_t, kPaletteBytes> MakeGreyRamp() {
  std::array<std::uint8_t, kPaletteBytes> ramp{};
  for (int i = 0; i < 256; ++i) ramp[i * 3] = ramp[i * 3 + 1] = ramp[i * 3 + 2] = static_cast<std::uint8_t>(i);
  return ramp;
}
constexpr std::array<std::uint8_t, kPaletteBytes> kGreyRamp = MakeGreyRamp();

// Accented codes and the plain letters they measure as, pair by pair.
constexpr char kAccentFrom[] =
    "\xC0\xC1\xC2\xC3\xC4\xC5\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDF"
    "\xE0\xE1\xE2\xE3\xE4\xE5\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD"
    "\xFF";
constexpr char kAccentTo[] = "AAAAAACEEEEIIIINOOOOOOUUUUYBaaaaaaceeeeiiiionoooooouuuuyy";
static_assert(sizeof kAccentFrom == 58 && sizeof kAccentTo == 58);

// An op record for one character in the style, as the text functions send it.
GdiOp CharOp(const TextStyle& style, const char* text, std::uint32_t mode, int level) {
  GdiOp op{};
  op.op = kGdiText;
  op.textMode = mode;
  op.text = text;
  op.level = static_cast<std::uint32_t>(level);
  op.textColour = static_cast<std::uint32_t>(level) * 0x010101u;
  op.antialias = style.antialias;
  op.fontSize = style.fontSize;
  op.fontBold = style.bold;
  op.fontItalic = style.italic;
  op.fontFace = style.face;
  op.fontLogfont = &style.logfont;
  op.depth = 8;
  std::memcpy(op.palette, kGreyRamp.data(), kPaletteBytes);
  return op;
}

// Each source pixel raises the 3 by 3 square around its place, moved by
// shift, to at least its own value; what falls outside is dropped.
void DilateInto(DibHead* target, const DibHead* source, int shift) {
  for (int y = 0; y < source->biHeight; ++y) {
    for (int x = 0; x < source->biWidth; ++x) {
      std::int32_t value = DibGetPixel(source, x, y) & 0xFF;
      if (value == 0) continue;
      for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
          int tx = x + shift + dx;
          int ty = y + shift + dy;
          if (DibGetPixel(target, tx, ty) < value) DibPutPixel(target, tx, ty, static_cast<std::uint32_t>(value));
        }
    }
  }
}

// Where the source has coverage m, the target takes 255 - m: full cover
// clears the ring, a soft edge keeps its complement.
void PunchCoverage(DibHead* target, const DibHead* source, int shift) {
  for (int y = 0; y < source->biHeight; ++y)
    for (int x = 0; x < source->biWidth; ++x) {
      std::int32_t value = DibGetPixel(source, x, y) & 0xFF;
      if (value != 0) DibPutPixel(target, x + shift, y + shift, static_cast<std::uint32_t>(255 - value));
    }
}

// A character picture laid into the mask with its left top at (left, top),
// each pixel keeping the larger of the two values.
void MergeByMaximum(DibHead* mask, const DibHead* picture, int left, int top) {
  for (int j = 0; j < picture->biHeight; ++j)
    for (int i = 0; i < picture->biWidth; ++i) {
      std::int32_t value = DibGetPixel(picture, i, j) & 0xFF;
      std::int32_t there = DibGetPixel(mask, left + i, top + j);
      if (there >= 0 && value > there) DibPutPixel(mask, left + i, top + j, static_cast<std::uint32_t>(value));
    }
}

}  // namespace

unsigned char AccentFold(unsigned char code) {
  const char* found = code >= 0x80 ? std::strchr(kAccentFrom, static_cast<char>(code)) : nullptr;
  return found != nullptr ? static_cast<unsigned char>(kAccentTo[found - kAccentFrom]) : code;
}

TextStyle TextStyleMake(void* dialog, const char* face, int fontSize, int bold, int italic, int antialias) {
  return TextStyle{dialog, antialias, fontSize, bold, italic, face, FontSpecMake(face, fontSize, bold, italic)};
}

DibHandle MaskNew(int width, int height) { return DibNew(width, height, kGreyRamp.data(), 8); }

int TextMeasure(void* dialog, const char* text, const TextStyle& style, int characterSpace, int* width, int* height,
                std::int32_t* advances) {
  FontMetrics metrics{};
  FontMetricsOf(&style.logfont, &metrics);
  *width = 0;
  *height = metrics.height;
  for (std::size_t i = 0; text[i] != '\0'; ++i) {
    unsigned char code = static_cast<unsigned char>(text[i]);
    if (AccentCompensation != 0) code = AccentFold(code);
    const char single[2] = {static_cast<char>(code), '\0'};
    GdiOp op = CharOp(style, single, kTextMeasure, 255);
    op.owner = dialog;
    op.textColour = 0xFFFFFF;
    if (GdiCommand(&op) != 1) continue;
    std::int32_t advance = op.textWidth * characterSpace / 100;
    *width += advance;
    if (advances != nullptr) advances[i] = advance;
  }
  return 1;
}

DibHandle TextCharMask(const TextStyle& style, unsigned char character, int cellHeight, int level) {
  const char single[2] = {static_cast<char>(character), '\0'};
  GdiOp op = CharOp(style, single, kTextRaster, level);
  op.owner = style.dialog;
  return reinterpret_cast<DibHandle>(GdiCommand(&op));
}

DibHandle TextMask(const TextStyle& style, int x, int y, const char* text, int width, int height, int level,
                   const std::int32_t* advances) {
  DibOwner mask(MaskNew(width, height));
  DibLock target(mask.get());
  if (target.head == nullptr) return nullptr;
  int pen = x;
  for (std::size_t i = 0; text[i] != '\0'; ++i) {
    DibOwner picture(TextCharMask(style, static_cast<unsigned char>(text[i]), 0, level));
    DibLock source(picture.get());
    if (source.head == nullptr) return nullptr;
    MergeByMaximum(target.head, source.head, pen, y);
    pen += advances[i];
  }
  return mask.release();
}

DibHandle MaskDilate(DibHandle mask) {
  DibLock source(mask);
  if (source.head == nullptr) return nullptr;
  DibOwner dilated(MaskNew(source.head->biWidth, source.head->biHeight));
  DibLock target(dilated.get());
  if (target.head == nullptr) return nullptr;
  DilateInto(target.head, source.head, 0);
  return dilated.release();
}

DibHandle TextOutlineMask(const TextStyle& style, int x, int y, const char* text, int width, int height,
                          const std::int32_t* advances) {
  DibOwner dilated;
  {
    DibOwner text255(TextMask(style, x, y, text, width, height, 255, advances));
    if (text255 == nullptr) return nullptr;
    dilated.reset(MaskDilate(text255.get()));
  }
  DibOwner cover(TextMask(style, x, y, text, width, height, 255, advances));
  DibLock target(dilated.get());
  DibLock source(cover.get());
  if (target.head == nullptr || source.head == nullptr) return nullptr;
  PunchCoverage(target.head, source.head, 0);
  return dilated.release();
}

DibHandle CharOutlineMask(const TextStyle& style, unsigned char character, int level) {
  DibOwner atLevel(TextCharMask(style, character, 0, level));
  DibOwner full(TextCharMask(style, character, 0, 255));
  DibLock grown(atLevel.get());
  DibLock cover(full.get());
  if (grown.head == nullptr || cover.head == nullptr) return nullptr;
  DibOwner ring(MaskNew(grown.head->biWidth + 2, grown.head->biHeight + 2));
  DibLock target(ring.get());
  if (target.head == nullptr) return nullptr;
  DilateInto(target.head, grown.head, 1);
  PunchCoverage(target.head, cover.head, 1);
  return ring.release();
}
