// Stamping the background colour's index into a remapped frame.
#include "colour/stamp.h"

#include <cstring>

DibHandle StampColourIndex(DibHandle image, DibHandle source, std::int32_t colour, int index) {
  DibLock imageLock(image);
  DibLock sourceLock(source);
  if (imageLock.head == nullptr || sourceLock.head == nullptr) return nullptr;
  const DibHead* head = imageLock.head;
  const DibHead* from = sourceLock.head;
  DibOwner stamped(DibNewLike(head, head->biWidth, head->biHeight));
  DibLock stampedLock(stamped.get());
  if (stampedLock.head == nullptr) return nullptr;
  DibHead* target = stampedLock.head;
  // The pixels are copied whole, then the matches overwritten.
  std::size_t rowBytes = static_cast<std::size_t>(DibStride(head->biBitCount, head->biWidth));
  bool copied = target->biBitCount == head->biBitCount;
  if (copied) std::memcpy(DibRows(target), DibRows(head), rowBytes * head->biHeight);
  std::int32_t wanted = colour & 0xFFFFFF;
  bool direct = copied && from->biBitCount == 24 && from->biWidth >= head->biWidth && from->biHeight >= head->biHeight;
  const std::uint8_t stored[3] = {static_cast<std::uint8_t>(wanted >> 16), static_cast<std::uint8_t>(wanted >> 8),
                                  static_cast<std::uint8_t>(wanted)};
  for (int y = 0; y < head->biHeight; ++y) {
    const std::uint8_t* row = direct ? DibRow(from, y) : nullptr;
    for (int x = 0; x < head->biWidth; ++x) {
      bool match = direct ? std::memcmp(row + x * 3, stored, 3) == 0 : (DibGetPixel(from, x, y) & 0xFFFFFF) == wanted;
      if (match) DibPutPixel(target, x, y, static_cast<std::uint32_t>(index));
      else if (!copied) DibPutPixel(target, x, y, static_cast<std::uint32_t>(DibGetPixel(head, x, y)));
    }
  }
  return stamped.release();
}
