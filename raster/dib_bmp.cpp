// Bitmaps kept as whole BMP files (the direction-well icons): read in place
// and flattened onto a background colour.
#include "raster/dib.h"

#include <vector>

namespace {

constexpr std::size_t kBmpFileHeadSize = 14;

// 0 to 255 of src over bg through alpha, each product truncated by itself.
std::uint32_t FlattenChannel(std::uint32_t src, std::uint32_t bg, std::uint32_t alpha) {
  return src * alpha / 255 + bg * (255 - alpha) / 255;
}

}  // namespace

DibHandle DibFromBmpFile(const std::uint8_t* bytes, std::size_t size, std::int32_t background) {
  if (bytes == nullptr || size < kBmpFileHeadSize + kDibHeadSize) return nullptr;
  // Copied out so that the head is aligned for reading in place.
  std::vector<std::uint8_t> info(bytes + kBmpFileHeadSize, bytes + size);
  const auto* head = reinterpret_cast<const DibHead*>(info.data());
  int bitCount = head->biBitCount;
  int width = head->biWidth;
  int height = head->biHeight;
  if ((bitCount != 24 && bitCount != 32) || width < 0 || height < 0) return nullptr;
  std::size_t rowBytes = static_cast<std::size_t>(DibStride(bitCount, width)) * static_cast<std::size_t>(height);
  if (info.size() < kDibHeadSize + rowBytes) return nullptr;

  DibOwner flat(DibNew(width, height, nullptr, 24));
  DibLock target(flat.get());
  if (target.head == nullptr) return nullptr;
  auto bg = static_cast<std::uint32_t>(background);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      auto pixel = static_cast<std::uint32_t>(DibGetPixel(head, x, y));
      std::uint32_t alpha = bitCount == 32 ? pixel >> 24 : 255;
      std::uint32_t out = 0;
      for (int shift = 0; shift < 24; shift += 8) {
        out |= FlattenChannel(pixel >> shift & 0xFF, bg >> shift & 0xFF, alpha) << shift;
      }
      DibPutPixel(target.head, x, y, out);
    }
  }
  return flat.release();
}
