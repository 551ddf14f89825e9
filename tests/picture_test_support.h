// Small pictures for the tests of picture-to-picture transforms.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>

#include "raster/dib.h"

// A new bitmap of the depth (8 or 24) whose pixel at (x, y) is value(x, y);
// the 8-bit one has the grey colour table of a mask.
inline DibHandle PictureOf(int width, int height, int depth, const std::function<std::uint32_t(int, int)>& value) {
  std::uint8_t grey[kPaletteBytes];
  for (int i = 0; i < 256; ++i) grey[3 * i] = grey[3 * i + 1] = grey[3 * i + 2] = static_cast<std::uint8_t>(i);
  DibHandle dib = DibNew(width, height, depth == 8 ? grey : nullptr, depth);
  DibLock lock(dib);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, value(x, y));
  return dib;
}

// A busy picture with every channel different: neighbours and rows differ.
inline std::uint32_t Busy(int x, int y) {
  std::uint32_t h = static_cast<std::uint32_t>(x) * 73856093u ^ static_cast<std::uint32_t>(y) * 19349663u;
  return (h ^ h >> 13) * 2654435761u >> 8 & 0xFFFFFF;
}

// Byte-for-byte equality of two bitmaps, heads, colour tables and rows.
inline bool SameBitmap(DibHandle a, DibHandle b) {
  std::size_t size = MemSize(a);
  if (size != MemSize(b)) return false;
  DibLock lockA(a);
  DibLock lockB(b);
  return std::memcmp(lockA.head, lockB.head, size) == 0;
}
