// Stamping the background colour's index into a remapped frame.
#include "colour/stamp.h"

#include <cstring>

namespace {

// One row of an 8-bit image against a 24-bit source row. The colour fills
// most of a frame, so four pixels are compared at once, twelve stored bytes
// against the colour four times over.
void StampByteRow(const std::uint8_t* from, int width, const std::uint8_t* fourTimes, std::uint8_t index,
                  std::uint8_t* row) {
  int x = 0;
  for (; x + 4 <= width; x += 4) {
    if (std::memcmp(from + x * 3, fourTimes, 12) == 0) {
      std::memset(row + x, index, 4);
      continue;
    }
    for (int i = x; i < x + 4; ++i)
      if (std::memcmp(from + i * 3, fourTimes, 3) == 0) row[i] = index;
  }
  for (; x < width; ++x)
    if (std::memcmp(from + x * 3, fourTimes, 3) == 0) row[x] = index;
}

}  // namespace

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
  std::uint8_t fourTimes[12];  // the colour as stored: blue, green, red
  for (int i = 0; i < 12; i += 3) {
    fourTimes[i] = static_cast<std::uint8_t>(wanted >> 16);
    fourTimes[i + 1] = static_cast<std::uint8_t>(wanted >> 8);
    fourTimes[i + 2] = static_cast<std::uint8_t>(wanted);
  }
  for (int y = 0; y < head->biHeight; ++y) {
    const std::uint8_t* row = direct ? DibRow(from, y) : nullptr;
    if (direct && target->biBitCount == 8) {
      StampByteRow(row, head->biWidth, fourTimes, static_cast<std::uint8_t>(index), DibRow(target, y));
      continue;
    }
    for (int x = 0; x < head->biWidth; ++x) {
      bool match = direct ? std::memcmp(row + x * 3, fourTimes, 3) == 0 : (DibGetPixel(from, x, y) & 0xFFFFFF) == wanted;
      if (match) DibPutPixel(target, x, y, static_cast<std::uint32_t>(index));
      else if (!copied) DibPutPixel(target, x, y, static_cast<std::uint32_t>(DibGetPixel(head, x, y)));
    }
  }
  return stamped.release();
}
