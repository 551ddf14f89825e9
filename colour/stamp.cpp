// Stamping the background colour's index into a remapped frame.
#include "colour/stamp.h"

#include <cstring>

DibHandle StampColourIndex(DibHandle image, DibHandle source, std::int32_t colour, int index) {
  DibLock imageLock(image);
  DibLock sourceLock(source);
  if (imageLock.head == nullptr || sourceLock.head == nullptr) return nullptr;
  const DibHead* head = imageLock.head;
  DibOwner stamped(DibNewLike(head, head->biWidth, head->biHeight));
  DibLock stampedLock(stamped.get());
  if (stampedLock.head == nullptr) return nullptr;
  // The pixels are copied whole, then the matches overwritten.
  std::size_t rowBytes = static_cast<std::size_t>(DibStride(head->biBitCount, head->biWidth));
  if (stampedLock.head->biBitCount == head->biBitCount)
    std::memcpy(DibRows(stampedLock.head), DibRows(head), rowBytes * head->biHeight);
  std::int32_t wanted = colour & 0xFFFFFF;
  for (int y = 0; y < head->biHeight; ++y) {
    for (int x = 0; x < head->biWidth; ++x) {
      bool match = (DibGetPixel(sourceLock.head, x, y) & 0xFFFFFF) == wanted;
      if (match) DibPutPixel(stampedLock.head, x, y, static_cast<std::uint32_t>(index));
      else if (stampedLock.head->biBitCount != head->biBitCount)
        DibPutPixel(stampedLock.head, x, y, static_cast<std::uint32_t>(DibGetPixel(head, x, y)));
    }
  }
  return stamped.release();
}
