// Every pixel of a bitmap, row by row from the top, for comparing pictures.
#pragma once

#include <cstdint>
#include <vector>

#include "raster/dib.h"

inline std::vector<std::int32_t> PixelsOf(DibHandle dib) {
  std::vector<std::int32_t> pixels;
  DibLock lock(dib);
  if (lock.head == nullptr) return pixels;
  for (int y = 0; y < lock.head->biHeight; ++y)
    for (int x = 0; x < lock.head->biWidth; ++x) pixels.push_back(DibGetPixel(lock.head, x, y));
  return pixels;
}
