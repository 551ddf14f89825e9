// Remapping with error diffusion: a brightness-curve dither of its own at
// 1 bit, Floyd-Steinberg with 16-bit error cells above it. Both walk the
// stored rows, bottom row of the picture first, left to right.
#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "colour/palette.h"
#include "colour/remap.h"

namespace {

// The source pixel as red, green, blue, through its colour table where it has one.
void SourceRgb(const DibHead* head, const std::uint8_t* sourcePalette, int x, int y, std::uint8_t* rgb) {
  std::int32_t value = DibGetPixel(head, x, y);
  if (head->biBitCount <= 8) {
    std::memcpy(rgb, sourcePalette + value * 3, 3);
    return;
  }
  rgb[0] = static_cast<std::uint8_t>(value);
  rgb[1] = static_cast<std::uint8_t>(value >> 8);
  rgb[2] = static_cast<std::uint8_t>(value >> 16);
}

void AddClamped(std::uint8_t* cell, int amount) { *cell = static_cast<std::uint8_t>(std::clamp(*cell + amount, 0, 255)); }

struct LuminanceRange {
  int lowest;
  int highest;
};

// Fills the 8-bit work bitmap with the luminance of every source pixel.
LuminanceRange FillLuminance(const DibHead* source, DibHead* work) {
  std::uint8_t sourcePalette[kPaletteBytes];
  DibPaletteOf(source, sourcePalette);
  LuminanceRange range{255, 0};
  for (int y = 0; y < source->biHeight; ++y) {
    for (int x = 0; x < source->biWidth; ++x) {
      std::uint8_t rgb[3];
      SourceRgb(source, sourcePalette, x, y, rgb);
      int luminance = Luminance(rgb[0], rgb[1], rgb[2]);
      range.lowest = std::min(range.lowest, luminance);
      range.highest = std::max(range.highest, luminance);
      DibPutPixel(work, x, y, static_cast<std::uint32_t>(luminance));
    }
  }
  return range;
}

// The threshold sits midway in the frame's own range; each pixel's error is
// measured against the range's end on its side.
void DiffuseOneBit(DibHead* work, DibHead* target, const std::uint8_t* curve, LuminanceRange range) {
  int width = work->biWidth;
  int height = work->biHeight;
  int stride = DibStride(8, width);
  int threshold = (range.lowest + range.highest) >> 1;
  for (int stored = 0; stored < height; ++stored) {
    std::uint8_t* row = DibRows(work) + static_cast<std::ptrdiff_t>(stored) * stride;
    std::uint8_t* next = stored + 1 < height ? row + stride : nullptr;
    for (int x = 0; x < width; ++x) {
      int v = curve[row[x]];
      int bit = v > threshold ? 1 : 0;
      int e = (bit != 0 ? v - range.highest : v - range.lowest) >> 4;
      bool right = x + 1 < width;
      if (next != nullptr && right) AddClamped(&next[x + 1], e);
      // At x = 0 this lands one byte before the next row: the last byte of
      // this row's storage. Column 1 gives the share up instead.
      if (next != nullptr && x != 1) AddClamped(next + x - 1, 3 * e);
      if (next != nullptr) AddClamped(&next[x], 5 * e);
      if (right) AddClamped(&row[x + 1], 7 * e);
      DibPutPixel(target, x, height - 1 - stored, static_cast<std::uint32_t>(bit));
    }
  }
}

DibHandle DitherOneBit(const DibHead* source, const std::uint8_t* palette, const RemapOptions& options) {
  DibOwner work(DibNew(source->biWidth, source->biHeight, nullptr, 8));
  DibLock workLock(work.get());
  if (workLock.head == nullptr) return nullptr;
  LuminanceRange range = FillLuminance(source, workLock.head);
  std::uint8_t curve[256];
  DitherCurve(options.ditherBrightness, options.ditherContrast, curve);
  DibOwner target(DibNew(source->biWidth, source->biHeight, palette, 1));
  DibLock targetLock(target.get());
  if (targetLock.head == nullptr) return nullptr;
  DiffuseOneBit(workLock.head, targetLock.head, curve, range);
  return target.release();
}

// Red, green, blue bytes per pixel, in the source's stored row order.
void FillTrueColour(const DibHead* source, DibHead* work) {
  std::uint8_t sourcePalette[kPaletteBytes];
  DibPaletteOf(source, sourcePalette);
  for (int y = 0; y < source->biHeight; ++y) {
    std::uint8_t* row = DibRow(work, y);
    for (int x = 0; x < source->biWidth; ++x) SourceRgb(source, sourcePalette, x, y, row + x * 3);
  }
}

void AddShare(std::int16_t* cell, int product) { *cell = static_cast<std::int16_t>(*cell + (product >> 4)); }

struct ErrorRows {
  std::unique_ptr<std::int16_t[]> current;
  std::unique_ptr<std::int16_t[]> next;
};

constexpr int kErrorSlackCells = 512;  // 1024 bytes

// rows is 24-bit: the source itself, stored blue, green, red, or the work
// copy in red, green, blue. The error cells keep the rows' channel order.
void DiffuseMultiBit(const DibHead* rows, bool storedBgr, DibHead* target, ColourSearch* search, ErrorRows* errors) {
  int width = rows->biWidth;
  int height = rows->biHeight;
  int cells = width * 3;
  const int at[3] = {storedBgr ? 2 : 0, 1, storedBgr ? 0 : 2};  // cell of red, green, blue
  std::int16_t* current = errors->current.get();
  std::int16_t* next = errors->next.get();
  for (int stored = 0; stored < height; ++stored) {
    const std::uint8_t* row = DibRows(rows) + static_cast<std::ptrdiff_t>(stored) * DibStride(24, width);
    std::uint8_t* bytes = target->biBitCount == 8 ? DibRows(target) + static_cast<std::ptrdiff_t>(stored) * DibStride(8, width) : nullptr;
    for (int i = 0; i < cells; ++i) current[i] = static_cast<std::int16_t>(current[i] + row[i]);
    for (int x = 0; x < width; ++x) {
      std::int16_t* here = current + x * 3;
      std::int16_t* below = next + x * 3;
      int wanted[3];
      for (int c = 0; c < 3; ++c) wanted[c] = std::clamp<int>(here[at[c]], 0, 255);
      int index = ColourSearchFind(search, wanted[0], wanted[1], wanted[2]);
      if (bytes != nullptr) bytes[x] = static_cast<std::uint8_t>(index);
      else DibPutPixel(target, x, height - 1 - stored, static_cast<std::uint32_t>(index));
      // Shares that fall past the last column or below the last row land in
      // the rows' slack or in a row never read, so only the lower-left share
      // is tested: columns 0 and 1 both give it up.
      const std::uint8_t* entry = search->palette + index * 3;
      for (int c = 0; c < 3; ++c) {
        int e = wanted[c] - entry[c];
        int k = at[c];
        AddShare(&here[k + 3], 7 * e);
        if (x >= 2) AddShare(&below[k - 3], 3 * e);
        AddShare(&below[k + 3], e);
        AddShare(&below[k], 5 * e);
      }
    }
    std::memcpy(current, next, sizeof(std::int16_t) * cells);
    std::memset(next, 0, sizeof(std::int16_t) * cells);
  }
}

DibHandle DitherMultiBit(const DibHead* source, const std::uint8_t* palette, int depth, int colours,
                         const RemapOptions& options) {
  ColourSearch search;
  ColourSearchInit(&search, palette, colours, options.fastRemap);
  // A 24-bit source is read as it is stored; others through a work copy.
  bool direct = source->biBitCount == 24;
  DibOwner work(direct ? nullptr : DibNew(source->biWidth, source->biHeight, nullptr, 24));
  DibLock workLock(work.get());
  if (!direct && workLock.head == nullptr) return nullptr;
  if (!direct) FillTrueColour(source, workLock.head);
  std::size_t cells = static_cast<std::size_t>(source->biWidth) * 3 + kErrorSlackCells;
  ErrorRows errors{std::unique_ptr<std::int16_t[]>(new (std::nothrow) std::int16_t[cells]()),
                   std::unique_ptr<std::int16_t[]>(new (std::nothrow) std::int16_t[cells]())};
  if (errors.current == nullptr || errors.next == nullptr) return nullptr;
  DibOwner target(DibNew(source->biWidth, source->biHeight, palette, depth));
  DibLock targetLock(target.get());
  if (targetLock.head == nullptr) return nullptr;
  DiffuseMultiBit(direct ? source : workLock.head, direct, targetLock.head, &search, &errors);
  return target.release();
}

}  // namespace

void DitherCurve(int brightness, int contrast, std::uint8_t* curve) {
  double step = 256.0 / (256.0 - 2.0 * contrast);
  double value = static_cast<double>(brightness) - static_cast<double>(contrast);
  for (int i = 0; i < 256; ++i) {
    if (value > 254.0) {
      curve[i] = 254;
    } else if (value < 1.0) {
      curve[i] = 1;
    } else {
      curve[i] = static_cast<std::uint8_t>(value);
    }
    value += step;
  }
}

DibHandle RemapDithered(DibHandle source, const std::uint8_t* palette, int depth, int colours,
                        const RemapOptions& options) {
  if (depth < 1 || depth > 8) return nullptr;
  DibLock sourceLock(source);
  if (sourceLock.head == nullptr || sourceLock.head->biBitCount == 1) return nullptr;
  if (depth == 1) return DitherOneBit(sourceLock.head, palette, options);
  return DitherMultiBit(sourceLock.head, palette, depth, colours, options);
}
