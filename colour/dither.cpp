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

// Each share is a 32-bit product shifted right by 4, added to a 16-bit
// cell. An error is at most 255 either way, so no cell, nor a cell plus its
// pixel and the share from the left, ever leaves a few hundred: sums are
// taken in int and the cells never wrap.
std::int16_t Cell16(int value) { return static_cast<std::int16_t>(value); }

// One stored row's walk: its pixels, the cells of the row under it and of
// the row above, all in the row's own channel order, and what passes from
// pixel to pixel. The search's fields are read once, since the index bytes
// written could alias them.
struct RowWalk {
  const std::uint8_t* row;
  const std::int16_t* below;  // the shares the row under this one left
  std::int16_t* above;        // the shares this row leaves, every cell written
  std::uint8_t* indexes;
  ColourSearch* search;
  bool fast;
  ColourTable* table;
  int right[3];  // 7/16 of the last error, for the pixel to the right
  std::int32_t lastColour;
  ColourChoice lastChoice;
};

// One pixel. The share for the right-hand neighbour, which the next pixel
// waits for, stays in registers; the row above gets its first share for the
// cell at x + 1 and adds to those at x and, from column 2 on, x - 1.
template <bool kStoredBgr, bool kLowerLeft>
[[gnu::always_inline]] inline void DiffusePixel(RowWalk& walk, int x) {
  constexpr int kAt[3] = {kStoredBgr ? 2 : 0, 1, kStoredBgr ? 0 : 2};  // cell of red, green, blue
  const int cell = x * 3;
  int clamped[3];
#pragma GCC unroll 3
  for (int c = 0; c < 3; ++c) {
    int k = cell + kAt[c];
    clamped[c] = std::clamp<int>(walk.row[k] + walk.below[k] + walk.right[c], 0, 255);
  }
  std::int32_t colour = ColourPack(clamped[0], clamped[1], clamped[2]);
  if (colour != walk.lastColour) {
    walk.lastColour = colour;
    walk.lastChoice = walk.fast ? ColourTableChoose(walk.table, clamped[0], clamped[1], clamped[2])
                                : ColourSearchNearest(walk.search, clamped[0], clamped[1], clamped[2]);
  }
  walk.indexes[x] = static_cast<std::uint8_t>(ChoiceIndex(walk.lastChoice));
  std::int16_t* above = walk.above;
#pragma GCC unroll 3
  for (int c = 0; c < 3; ++c) {
    int e = clamped[c] - ChoiceComponent(walk.lastChoice, c);
    int k = cell + kAt[c];
    walk.right[c] = 7 * e >> 4;
    above[k + 3] = Cell16(e >> 4);
    above[k] = Cell16(above[k] + (5 * e >> 4));
    if (kLowerLeft) above[k - 3] = Cell16(above[k - 3] + (3 * e >> 4));
  }
}

// Columns 0 and 1 give up the lower-left share.
template <bool kStoredBgr>
void DiffuseRow(RowWalk walk, int width) {
  for (int c = 0; c < 3; ++c) walk.above[c] = 0;
  int x = 0;
  for (; x < width && x < 2; ++x) DiffusePixel<kStoredBgr, false>(walk, x);
  for (; x < width; ++x) DiffusePixel<kStoredBgr, true>(walk, x);
}

// Indexes into a 4-bit row, high nibble first.
void PackNibbles(const std::uint8_t* indexes, int width, std::uint8_t* row) {
  auto nibble = [indexes](int x) { return indexes[x] & 0x0F; };
  for (int x = 0; x + 1 < width; x += 2) row[x >> 1] = static_cast<std::uint8_t>(nibble(x) << 4 | nibble(x + 1));
  if (width % 2 != 0) row[width >> 1] = static_cast<std::uint8_t>(nibble(width - 1) << 4 | (row[width >> 1] & 0x0F));
}

// Two rows of error cells, three per pixel and one pixel more; a row of
// indexes for a 4-bit target.
struct DiffusionBuffers {
  std::unique_ptr<std::int16_t[]> errors[2];
  std::unique_ptr<std::uint8_t[]> indexes;
};

// rows is 24-bit: the source itself, stored blue, green, red, or the work
// copy in red, green, blue.
void DiffuseMultiBit(const DibHead* rows, bool storedBgr, DibHead* target, ColourSearch* search,
                     DiffusionBuffers* buffers) {
  int width = rows->biWidth;
  int targetStride = DibStride(target->biBitCount, width);
  std::int16_t* below = buffers->errors[0].get();
  std::int16_t* above = buffers->errors[1].get();
  for (int stored = 0; stored < rows->biHeight; ++stored) {
    const std::uint8_t* row = DibRows(rows) + static_cast<std::ptrdiff_t>(stored) * DibStride(24, width);
    std::uint8_t* targetRow = DibRows(target) + static_cast<std::ptrdiff_t>(stored) * targetStride;
    bool bytes = target->biBitCount == 8;
    std::uint8_t* indexes = bytes ? targetRow : buffers->indexes.get();
    RowWalk walk{row, below, above, indexes, search, search->fastRemap != 0, search->table, {0, 0, 0}, -1, 0};
    if (storedBgr) DiffuseRow<true>(walk, width);
    else DiffuseRow<false>(walk, width);
    if (!bytes) PackNibbles(indexes, width, targetRow);
    std::swap(below, above);
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
  std::size_t cells = (static_cast<std::size_t>(source->biWidth) + 1) * 3;
  DiffusionBuffers buffers;
  for (auto& errors : buffers.errors) errors.reset(new (std::nothrow) std::int16_t[cells]());
  buffers.indexes.reset(new (std::nothrow) std::uint8_t[source->biWidth]);
  if (buffers.errors[0] == nullptr || buffers.errors[1] == nullptr || buffers.indexes == nullptr) return nullptr;
  DibOwner target(DibNew(source->biWidth, source->biHeight, palette, depth));
  DibLock targetLock(target.get());
  if (targetLock.head == nullptr) return nullptr;
  DiffuseMultiBit(direct ? source : workLock.head, direct, targetLock.head, &search, &buffers);
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
