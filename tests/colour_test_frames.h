// Small bitmaps and frame lists for the colour-reduction tests.
#pragma once

#include <cstdint>
#include <vector>

#include "plugin/host_interface.h"
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
  for (int i = 0; i < width * height; ++i) DibPutPixel(lock.head, i % width, i / width, pixels[i]);
  return dib;
}

inline std::vector<std::int32_t> PixelsOfHead(const DibHead* head) {
  std::vector<std::int32_t> pixels;
  const int width = head->biWidth;
  for (int i = 0; i < width * head->biHeight; ++i) pixels.push_back(DibGetPixel(head, i % width, i / width));
  return pixels;
}
inline std::vector<std::int32_t> PixelsOf(DibHandle dib) { return PixelsOfHead(DibLock(dib).head); }

// The whole block of a bitmap: head, colour table and pixels.
inline std::vector<std::uint8_t> BytesOf(DibHandle dib) {
  DibLock lock(dib);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(lock.head);
  return {bytes, bytes + MemSize(dib)};
}

// A frame list that frees itself.
struct Frames {
  FrameList list{};
  Frames() = default;
  Frames(const Frames&) = delete;
  Frames& operator=(const Frames&) = delete;
  ~Frames() { FrameListFree(&list); }
  void Add(DibHandle image) {
    FrameRecord record{image, nullptr, 0, -1, {}};  // no mask, no delay, no transparent index
    FrameListAppend(&list, &record);
  }
  FrameRecord At(int index) const {
    FrameRecord record{};
    FrameRecordRead(&list, index, &record);
    return record;
  }
};

}  // namespace colourtest
