#include "raster/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

#include "plugin/settings.h"
#include "raster/byte_blocks.h"

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

// Coverage of a picture is its red byte, or its index at 8 bits: the step
// between pixels of a row, 0 for a depth read pixel by pixel.
int CoverageStep(const DibHead* head) {
  switch (head->biBitCount) {
    case 8: return 1;
    case 24: return 3;
    case 32: return 4;
    default: return 0;
  }
}
const std::uint8_t* CoverageRow(const DibHead* head, int y) {
  return DibRow(head, y) + (head->biBitCount > 8 ? 2 : 0);
}
int CoverageAt(const DibHead* head, int step, const std::uint8_t* row, int x, int y) {
  return step != 0 ? row[x * step] : DibGetPixel(head, x, y) & 0xFF;
}

// The coverage of source row y, one byte a column, into line.
void CoverageLine(const DibHead* source, int y, std::uint8_t* line) {
  const int step = CoverageStep(source);
  const std::uint8_t* row = step != 0 ? CoverageRow(source, y) : nullptr;
  if (step == 1) {
    std::memcpy(line, row, static_cast<std::size_t>(source->biWidth));
    return;
  }
  for (int x = 0; x < source->biWidth; ++x) line[x] = static_cast<std::uint8_t>(CoverageAt(source, step, row, x, y));
}

// Each source pixel raises the 3 by 3 square around its place, moved by
// shift (0 or 1), to at least its own value; what falls outside is dropped.
// A row is first spread over three columns, then raises three target rows.
// 0 when there is no memory for the two lines.
int DilateInto(DibHead* target, const DibHead* source, int shift) {
  const int width = target->biWidth;
  const int height = target->biHeight;
  // Source column x sits at line[x + 2], with zeros around it for columns
  // that do not exist.
  const std::size_t lineBytes = static_cast<std::size_t>(std::max(width, source->biWidth)) + 4;
  std::unique_ptr<std::uint8_t[]> line(new (std::nothrow) std::uint8_t[lineBytes]());
  std::unique_ptr<std::uint8_t[]> spread(new (std::nothrow) std::uint8_t[width > 0 ? width : 1]);
  if (line == nullptr || spread == nullptr) return 0;
  for (int y = 0; y < source->biHeight; ++y) {
    CoverageLine(source, y, line.get() + 2);
    const std::uint8_t* columns = line.get() + 2;
    if (std::all_of(columns, columns + source->biWidth, [](std::uint8_t v) { return v == 0; })) continue;
    // Target column tx takes source columns tx - shift - 1 to tx - shift + 1.
    const std::uint8_t* around = columns - 1 - shift;
    StoreBytes(spread.get(), width,
               [around](int tx) { return std::max(std::max(around[tx], around[tx + 1]), around[tx + 2]); });
    const std::uint8_t* raise = spread.get();
    for (int ty = std::max(0, y + shift - 1); ty <= std::min(height - 1, y + shift + 1); ++ty) {
      std::uint8_t* to = DibRow(target, ty);
      StoreBytes(to, width, [to, raise](int tx) { return std::max(to[tx], raise[tx]); });
    }
  }
  return 1;
}

// Where the source has coverage m, the target takes 255 - m: full cover
// clears the ring, a soft edge keeps its complement.
void PunchCoverage(DibHead* target, const DibHead* source, int shift) {
  int step = CoverageStep(source);
  const int first = std::max(0, -shift);
  const int stop = std::min(source->biWidth, target->biWidth - shift);
  for (int y = 0; y < source->biHeight; ++y) {
    int ty = y + shift;
    if (ty < 0 || ty >= target->biHeight) continue;
    const std::uint8_t* row = step != 0 ? CoverageRow(source, y) : nullptr;
    std::uint8_t* to = DibRow(target, ty) + shift;
    if (step == 1) {
      std::uint8_t* from = to + first;
      const std::uint8_t* cover = row + first;
      StoreBytes(from, stop - first, [from, cover](int x) {
        std::uint8_t kept = from[x];
        std::uint8_t value = cover[x];
        return static_cast<std::uint8_t>(value != 0 ? 255 - value : kept);
      });
      continue;
    }
    for (int x = first; x < stop; ++x) {
      int value = CoverageAt(source, step, row, x, y);
      if (value != 0) to[x] = static_cast<std::uint8_t>(255 - value);
    }
  }
}

// A character picture laid into the mask with its left top at (left, top),
// each pixel keeping the larger of the two values; what falls outside is
// dropped.
void MergeByMaximum(DibHead* mask, const DibHead* picture, int left, int top) {
  int step = CoverageStep(picture);
  int firstI = std::max(0, -left);
  int endI = std::min(picture->biWidth, mask->biWidth - left);
  for (int j = std::max(0, -top); j < std::min(picture->biHeight, mask->biHeight - top); ++j) {
    const std::uint8_t* from = step != 0 ? CoverageRow(picture, j) : nullptr;
    std::uint8_t* to = DibRow(mask, top + j);
    for (int i = firstI; i < endI; ++i)
      to[left + i] = static_cast<std::uint8_t>(std::max<int>(to[left + i], CoverageAt(picture, step, from, i, j)));
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
  LaidText laid{};
  return TextLay(style, text, level, advances, &laid) != 0 ? LaidTextPart(laid, x, y, width, height) : nullptr;
}

int TextLay(const TextStyle& style, const char* text, int level, const std::int32_t* advances, LaidText* laid) {
  std::size_t length = std::strlen(text);
  std::unique_ptr<DibOwner[]> pictures(new (std::nothrow) DibOwner[length + 1]);
  if (pictures == nullptr) return 0;
  // The box of all the pictures, the text's pen starting at 0 and at least
  // one pixel for an empty text.
  int left = 0;
  int right = 1;
  int bottom = 1;
  int pen = 0;
  for (std::size_t i = 0; i < length; ++i) {
    pictures[i].reset(TextCharMask(style, static_cast<unsigned char>(text[i]), 0, level));
    DibLock source(pictures[i].get());
    if (source.head == nullptr) return 0;
    left = std::min(left, pen);
    right = std::max(right, pen + source.head->biWidth);
    bottom = std::max(bottom, source.head->biHeight);
    pen += advances[i];
  }
  laid->mask.reset(MaskNew(right - left, bottom));
  DibLock target(laid->mask.get());
  if (target.head == nullptr) return 0;
  laid->originX = -left;
  laid->originY = 0;
  pen = laid->originX;
  for (std::size_t i = 0; i < length; ++i) {
    DibLock source(pictures[i].get());
    if (source.head == nullptr) return 0;
    MergeByMaximum(target.head, source.head, pen, laid->originY);
    pen += advances[i];
  }
  return 1;
}

DibHandle LaidTextPart(const LaidText& laid, int x, int y, int width, int height) {
  DibLock source(laid.mask.get());
  DibOwner part(MaskNew(width, height));
  DibLock target(part.get());
  if (source.head == nullptr || target.head == nullptr) return nullptr;
  // Mask column c of the part shows column c + shiftX of the laid text.
  const int shiftX = laid.originX - x;
  const int shiftY = laid.originY - y;
  const int first = std::max(0, -shiftX);
  const int stop = std::min(width, source.head->biWidth - shiftX);
  for (int row = std::max(0, -shiftY); row < std::min(height, source.head->biHeight - shiftY) && first < stop; ++row)
    std::memcpy(DibRow(target.head, row) + first, DibRow(source.head, row + shiftY) + first + shiftX,
                static_cast<std::size_t>(stop - first));
  return part.release();
}

DibHandle MaskDilate(DibHandle mask) {
  DibLock source(mask);
  if (source.head == nullptr) return nullptr;
  DibOwner dilated(MaskNew(source.head->biWidth, source.head->biHeight));
  DibLock target(dilated.get());
  if (target.head == nullptr) return nullptr;
  return DilateInto(target.head, source.head, 0) != 0 ? dilated.release() : nullptr;
}

DibHandle TextOutlineMask(const TextStyle& style, int x, int y, const char* text, int width, int height,
                          const std::int32_t* advances) {
  DibOwner cover(TextMask(style, x, y, text, width, height, 255, advances));
  return cover != nullptr ? MaskRing(cover.get()) : nullptr;
}

DibHandle MaskRing(DibHandle cover) {
  // The full-cover mask is both what grows into the ring and what is punched
  // out of it.
  DibOwner dilated(MaskDilate(cover));
  DibLock target(dilated.get());
  DibLock source(cover);
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
  if (DilateInto(target.head, grown.head, 1) == 0) return nullptr;
  PunchCoverage(target.head, cover.head, 1);
  return ring.release();
}
