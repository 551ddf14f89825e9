// Small bitmaps and frame lists for the colour-reduction tests.
#pragma once

#include <cstdint>
#include <vector>

#include "plugin/host_interface.h"
#include "raster/dib.h"

namespace colourtest {

inline std::int32_t Rgb(int red, int green, int blue) { return red | green << 8 | blue << 16; }
inline std::int32_t Grey(int level) { return Rgb(level, level, level); }

// Pixels given row by row from the top, COLORREF-shaped.
inline DibHandle MakeBitmap(int width, int height, const std::vector<std::int32_t>& pixels, int depth = 24,
                            const std::uint8_t* palette = nullptr) {
  DibHandle dib = DibNew(width, height, palette, depth);
  DibLock lock(dib);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>(pixels[y * width + x]));
  }
  return dib;
}

inline std::int32_t PixelAt(DibHandle dib, int x, int y) {
  DibLock lock(dib);
  return DibGetPixel(lock.head, x, y);
}

inline std::vector<std::int32_t> PixelsOf(DibHandle dib) {
  DibLock lock(dib);
  std::vector<std::int32_t> pixels;
  for (int y = 0; y < lock.head->biHeight; ++y) {
    for (int x = 0; x < lock.head->biWidth; ++x) pixels.push_back(DibGetPixel(lock.head, x, y));
  }
  return pixels;
}

// A frame list that frees itself.
struct Frames {
  FrameList list{};
  Frames() = default;
  Frames(const Frames&) = delete;
  Frames& operator=(const Frames&) = delete;
  ~Frames() { FrameListFree(&list); }
  void Add(DibHandle image) {
    FrameRecord record{};
    record.image = image;
    record.transparentIndex = -1;
    FrameListAppend(&list, &record);
  }
  FrameRecord At(int index) const {
    auto* records = static_cast<const FrameRecord*>(MemLock(list.records));
    FrameRecord record = records[index];
    MemUnlock(list.records);
    return record;
  }
};

}  // namespace colourtest
