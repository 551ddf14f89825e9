// The bitmap store: every image is one block holding a 40-byte information
// head, a colour table at 8 bits or less, and bottom-up rows whose stride is
// rounded to 32 bits. Coordinates in every interface count y from the top.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/global_memory.h"

using DibHandle = MemHandle;
using DibOwner = MemOwner;

// Layout of the Windows BITMAPINFOHEADER; the block starts with it.
struct DibHead {
  std::uint32_t biSize;
  std::int32_t biWidth;
  std::int32_t biHeight;
  std::uint16_t biPlanes;
  std::uint16_t biBitCount;
  std::uint32_t biCompression;
  std::uint32_t biSizeImage;
  std::int32_t biXPelsPerMeter;
  std::int32_t biYPelsPerMeter;
  std::uint32_t biClrUsed;
  std::uint32_t biClrImportant;
};
static_assert(sizeof(DibHead) == 40);
static_assert(offsetof(DibHead, biWidth) == 4 && offsetof(DibHead, biHeight) == 8);
static_assert(offsetof(DibHead, biPlanes) == 12 && offsetof(DibHead, biBitCount) == 14);
static_assert(offsetof(DibHead, biCompression) == 16 && offsetof(DibHead, biSizeImage) == 20);
static_assert(offsetof(DibHead, biXPelsPerMeter) == 24 && offsetof(DibHead, biYPelsPerMeter) == 28);
static_assert(offsetof(DibHead, biClrUsed) == 32 && offsetof(DibHead, biClrImportant) == 36);

// Left, top, right, bottom, as the Windows RECT.
struct DibRect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;
};
static_assert(sizeof(DibRect) == 16);

constexpr int kDibHeadSize = 40;
constexpr int kPaletteBytes = 768;  // 256 triples of red, green, blue

inline int DibStride(int bitCount, int width) { return (bitCount * width + 31) / 32 * 4; }
inline int DibColourTableBytes(int bitCount) { return bitCount < 9 ? 4 << bitCount : 0; }

// Address of the first stored (bottom) row. The head size is assumed, not read.
inline std::uint8_t* DibRows(DibHead* head) {
  return reinterpret_cast<std::uint8_t*>(head) + kDibHeadSize + DibColourTableBytes(head->biBitCount);
}
inline const std::uint8_t* DibRows(const DibHead* head) {
  return reinterpret_cast<const std::uint8_t*>(head) + kDibHeadSize + DibColourTableBytes(head->biBitCount);
}
// Stored row of picture row y (y from the top).
inline const std::uint8_t* DibRow(const DibHead* head, int y) {
  return DibRows(head) + static_cast<std::ptrdiff_t>(head->biHeight - y - 1) * DibStride(head->biBitCount, head->biWidth);
}
inline std::uint8_t* DibRow(DibHead* head, int y) {
  return DibRows(head) + static_cast<std::ptrdiff_t>(head->biHeight - y - 1) * DibStride(head->biBitCount, head->biWidth);
}

// The inner loop of every effect goes through these two, so they are always
// inlined.
// COLORREF-shaped value (red low), the index at 8 bits or less; -1 out of range.
[[gnu::always_inline]] inline std::int32_t DibGetPixel(const DibHead* head, int x, int y) {
  if (x < 0 || y < 0 || x >= head->biWidth || y >= head->biHeight) return -1;
  const std::uint8_t* row = DibRow(head, y);
  switch (head->biBitCount) {
    case 24: {
      const std::uint8_t* p = row + x * 3;
      return p[0] << 16 | p[1] << 8 | p[2];
    }
    case 32: {
      const std::uint8_t* p = row + x * 4;
      return static_cast<std::int32_t>(static_cast<std::uint32_t>(p[3]) << 24 | p[0] << 16 | p[1] << 8 | p[2]);
    }
    case 8:
      return row[x];
    case 1:
      return (row[x >> 3] & (0x80 >> (x & 7))) != 0 ? 1 : 0;
    case 4:
      return (x & 1) != 0 ? row[x >> 1] & 0x0F : row[x >> 1] >> 4;
    default:
      return -1;
  }
}

// Out of range, or at a depth the store does not have, nothing happens.
[[gnu::always_inline]] inline void DibPutPixel(DibHead* head, int x, int y, std::uint32_t value) {
  if (x < 0 || y < 0 || x >= head->biWidth || y >= head->biHeight) return;
  std::uint8_t* row = DibRow(head, y);
  switch (head->biBitCount) {
    case 24: {
      std::uint8_t* p = row + x * 3;
      p[0] = static_cast<std::uint8_t>(value >> 16);
      p[1] = static_cast<std::uint8_t>(value >> 8);
      p[2] = static_cast<std::uint8_t>(value);
      return;
    }
    case 32: {
      std::uint8_t* p = row + x * 4;
      p[0] = static_cast<std::uint8_t>(value >> 16);
      p[1] = static_cast<std::uint8_t>(value >> 8);
      p[2] = static_cast<std::uint8_t>(value);
      p[3] = static_cast<std::uint8_t>(value >> 24);
      return;
    }
    case 8:
      row[x] = static_cast<std::uint8_t>(value);
      return;
    case 1: {
      std::uint8_t bit = static_cast<std::uint8_t>(0x80 >> (x & 7));
      row[x >> 3] = (value & 1) != 0 ? row[x >> 3] | bit : row[x >> 3] & ~bit;
      return;
    }
    case 4: {
      std::uint8_t& cell = row[x >> 1];
      cell = (x & 1) != 0 ? (cell & 0xF0) | (value & 0x0F) : (cell & 0x0F) | (value & 0x0F) << 4;
      return;
    }
    default:
      return;
  }
}

// Locks a block for the life of a scope. head is null when the lock failed.
struct DibLock {
  explicit DibLock(DibHandle block) : dib(block), head(static_cast<DibHead*>(MemLock(block))) {}
  ~DibLock() {
    if (head != nullptr) MemUnlock(dib);
  }
  DibLock(const DibLock&) = delete;
  DibLock& operator=(const DibLock&) = delete;
  DibHandle dib;
  DibHead* head;
};

// Width and height of a block; 0 with both 0 if it will not lock.
inline int DibSizeOf(DibHandle dib, int* width, int* height) {
  DibLock lock(dib);
  *width = lock.head != nullptr ? lock.head->biWidth : 0;
  *height = lock.head != nullptr ? lock.head->biHeight : 0;
  return lock.head != nullptr ? 1 : 0;
}

// Whether a bitmap of this size and bit count can be made at all: its pixel
// bytes must be countable in the head's 32-bit size field.
bool DibSizeFits(std::int64_t width, std::int64_t height, int bitCount);

// Constructors: each returns a new block owned by the caller, or null with
// nothing left allocated.
// Depth wish: 0 and above 24 give 32 bits, 1 gives 1, 2-4 give 4, 5-8 give 8,
// 9-24 give 24. A null palette leaves the colour table black.
DibHandle DibNew(int width, int height, const std::uint8_t* palette, int depthWish);
// A zeroed bitmap of the given size with the depth and colour table of source.
DibHandle DibNewLike(const DibHead* source, int width, int height);
DibHandle DibClone(DibHandle dib);
DibHandle DibCrop(DibHandle dib, const DibRect& rect);
DibHandle DibRotateRight(DibHandle dib, int shift);
DibHandle DibRotateLeft(DibHandle dib, int shift);
DibHandle DibTurnRight(DibHandle dib);
DibHandle DibTurnAround(DibHandle dib);
DibHandle DibTurnLeft(DibHandle dib);
DibHandle DibToTrueColour(DibHandle dib);
DibHandle DibAdjustHsv(DibHandle dib, float hueAdd, float saturationFactor, float valueFactor);
// A 24-bit bitmap from a whole BMP file (14-byte file head, information head,
// 24- or 32-bit bottom-up rows), its alpha flattened onto background
// (COLORREF). Null if the bytes do not hold such a file.
DibHandle DibFromBmpFile(const std::uint8_t* bytes, std::size_t size, std::int32_t background);

// Copies the pixels that lie inside both bitmaps. Always 1.
int DibRegionCopy(DibHead* destination, int destinationX, int destinationY, const DibHead* source, int sourceX,
                  int sourceY, int width, int height);
// 1 when both bitmaps lock and have the same width, height, depth and
// pixels; 0 otherwise.
int DibSamePicture(DibHandle first, DibHandle second);
// The bytes of a row from its first to its last non-zero one: first and stop
// (exclusive), equal when the row is all zero.
void DibRowInk(const std::uint8_t* row, int bytes, int* first, int* stop);
// Clears the 768-byte palette and copies the colour table out, red first.
// Returns the number of colours, 0 above 8 bits.
int DibPaletteOf(const DibHead* head, std::uint8_t* palette);
