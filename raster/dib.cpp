// Making, copying and converting store bitmaps.
#include "raster/dib.h"

#include <algorithm>
#include <cstring>

namespace {

struct DepthChoice {
  int bitCount;
  int colours;
};

DepthChoice DepthForWish(int wish) {
  if (wish == 0) return {32, 0};
  if (wish == 1) return {1, 2};
  if (wish <= 4) return {4, 16};
  if (wish <= 8) return {8, 256};
  if (wish <= 24) return {24, 0};
  return {32, 0};
}

void WriteHead(DibHead* head, int width, int height, DepthChoice depth) {
  head->biSize = kDibHeadSize;
  head->biWidth = width;
  head->biHeight = height;
  head->biPlanes = 1;
  head->biBitCount = static_cast<std::uint16_t>(depth.bitCount);
  head->biSizeImage = static_cast<std::uint32_t>(DibStride(depth.bitCount, width) * height);
  head->biClrUsed = static_cast<std::uint32_t>(depth.colours);
  head->biClrImportant = static_cast<std::uint32_t>(depth.colours);
}

// Red, green, blue triples into blue, green, red, 0 entries.
void WriteColourTable(DibHead* head, const std::uint8_t* palette, int colours) {
  std::uint8_t* table = reinterpret_cast<std::uint8_t*>(head) + kDibHeadSize;
  for (int i = 0; i < colours; ++i) {
    table[i * 4] = palette[i * 3 + 2];
    table[i * 4 + 1] = palette[i * 3 + 1];
    table[i * 4 + 2] = palette[i * 3];
  }
}

// Column range [first, end) of a copy of count pixels that lies inside both
// bitmaps, given the offsets at which it starts in each.
struct Span {
  int first;
  int end;
};

Span ClipSpan(int count, int destinationStart, int destinationSize, int sourceStart, int sourceSize) {
  int first = std::max({0, -destinationStart, -sourceStart});
  int end = std::min({count, destinationSize - destinationStart, sourceSize - sourceStart});
  return {first, end};
}

}  // namespace

bool DibSizeFits(std::int64_t width, std::int64_t height, int bitCount) {
  if (width < 0 || height < 0 || width > INT32_MAX / 32) return false;
  const std::int64_t stride = (bitCount * width + 31) / 32 * 4;
  return stride * height <= INT32_MAX;
}

DibHandle DibNew(int width, int height, const std::uint8_t* palette, int depthWish) {
  DepthChoice depth = DepthForWish(depthWish);
  if (!DibSizeFits(width, height, depth.bitCount)) return nullptr;
  std::size_t size = kDibHeadSize + static_cast<std::size_t>(DibColourTableBytes(depth.bitCount)) +
                     static_cast<std::size_t>(DibStride(depth.bitCount, width)) * static_cast<std::size_t>(height);
  DibOwner block(MemAlloc(kMemMoveableZeroed, size));
  if (block == nullptr) return nullptr;
  DibLock lock(block.get());
  if (lock.head == nullptr) return nullptr;
  WriteHead(lock.head, width, height, depth);
  if (palette != nullptr) WriteColourTable(lock.head, palette, depth.colours);
  return block.release();
}

DibHandle DibNewLike(const DibHead* source, int width, int height) {
  std::uint8_t palette[kPaletteBytes];
  DibPaletteOf(source, palette);
  return DibNew(width, height, palette, source->biBitCount);
}

DibHandle DibClone(DibHandle dib) {
  std::size_t size = MemSize(dib);
  if (size < 1) return nullptr;
  DibOwner copy(MemAlloc(kMemMoveableZeroed, size));
  if (copy == nullptr) return nullptr;
  DibLock source(dib);
  DibLock target(copy.get());
  if (source.head == nullptr || target.head == nullptr) return nullptr;
  std::memcpy(target.head, source.head, size);
  return copy.release();
}

int DibPaletteOf(const DibHead* head, std::uint8_t* palette) {
  std::memset(palette, 0, kPaletteBytes);
  if (head->biBitCount > 8) return 0;
  int colours = std::min(1 << head->biBitCount, 256);
  const std::uint8_t* table = reinterpret_cast<const std::uint8_t*>(head) + kDibHeadSize;
  for (int i = 0; i < colours; ++i) {
    palette[i * 3] = table[i * 4 + 2];
    palette[i * 3 + 1] = table[i * 4 + 1];
    palette[i * 3 + 2] = table[i * 4];
  }
  return colours;
}

int DibRegionCopy(DibHead* destination, int destinationX, int destinationY, const DibHead* source, int sourceX,
                  int sourceY, int width, int height) {
  if (height < 1) return 1;
  Span columns = ClipSpan(width, destinationX, destination->biWidth, sourceX, source->biWidth);
  Span rows = ClipSpan(height, destinationY, destination->biHeight, sourceY, source->biHeight);
  int bitCount = source->biBitCount;
  bool wholeBytes = bitCount == destination->biBitCount && (bitCount == 8 || bitCount == 24 || bitCount == 32) &&
                    destination != source;
  for (int j = rows.first; j < rows.end; ++j) {
    if (wholeBytes && columns.first < columns.end) {
      int bytesPerPixel = bitCount / 8;
      std::memcpy(DibRow(destination, destinationY + j) + (destinationX + columns.first) * bytesPerPixel,
                  DibRow(source, sourceY + j) + (sourceX + columns.first) * bytesPerPixel,
                  static_cast<std::size_t>(columns.end - columns.first) * bytesPerPixel);
      continue;
    }
    for (int i = columns.first; i < columns.end; ++i) {
      DibPutPixel(destination, destinationX + i, destinationY + j,
                  static_cast<std::uint32_t>(DibGetPixel(source, sourceX + i, sourceY + j)));
    }
  }
  return 1;
}

DibHandle DibCrop(DibHandle dib, const DibRect& rect) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  int width = rect.right - rect.left;
  int height = rect.bottom - rect.top;
  DibOwner crop(DibNewLike(source.head, width, height));
  DibLock target(crop.get());
  if (target.head == nullptr) return nullptr;
  DibRegionCopy(target.head, 0, 0, source.head, rect.left, rect.top, width, height);
  return crop.release();
}

// The last shift columns go to column 0 and the rest follow at column shift.
// Turning left by s moves the same columns as turning right by width - s.
DibHandle DibRotateRight(DibHandle dib, int shift) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  DibOwner rotated(DibNewLike(source.head, width, height));
  DibLock target(rotated.get());
  if (target.head == nullptr) return nullptr;
  DibRegionCopy(target.head, 0, 0, source.head, width - shift, 0, shift, height);
  DibRegionCopy(target.head, shift, 0, source.head, 0, 0, width - shift, height);
  return rotated.release();
}

DibHandle DibRotateLeft(DibHandle dib, int shift) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  return DibRotateRight(dib, width - shift);
}

DibHandle DibToTrueColour(DibHandle dib) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  std::uint8_t palette[kPaletteBytes];
  DibPaletteOf(source.head, palette);
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  int bitCount = source.head->biBitCount;
  DibOwner colour(DibNew(width, height, nullptr, 24));
  DibLock target(colour.get());
  if (target.head == nullptr) return nullptr;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::int32_t value = DibGetPixel(source.head, x, y);
      std::uint32_t rgb;
      if (bitCount == 1) {
        rgb = value != 0 ? 0xFFFFFFu : 0u;
      } else if (bitCount <= 8) {
        const std::uint8_t* entry = palette + (value & 0xFF) * 3;
        rgb = entry[0] | entry[1] << 8 | entry[2] << 16;
      } else {
        rgb = static_cast<std::uint32_t>(value) & 0xFFFFFFu;
      }
      DibPutPixel(target.head, x, y, rgb);
    }
  }
  return colour.release();
}
