// Stamping the background colour's index into a remapped frame.
#include "colour/stamp.h"

DibHandle StampColourIndex(DibHandle image, DibHandle source, std::int32_t colour, int index) {
  DibLock imageLock(image);
  DibLock sourceLock(source);
  if (imageLock.head == nullptr || sourceLock.head == nullptr) return nullptr;
  const DibHead* head = imageLock.head;
  DibOwner stamped(DibNewLike(head, head->biWidth, head->biHeight));
  DibLock stampedLock(stamped.get());
  if (stampedLock.head == nullptr) return nullptr;
  std::int32_t wanted = colour & 0xFFFFFF;
  for (int y = 0; y < head->biHeight; ++y) {
    for (int x = 0; x < head->biWidth; ++x) {
      bool match = (DibGetPixel(sourceLock.head, x, y) & 0xFFFFFF) == wanted;
      std::int32_t value = match ? index : DibGetPixel(head, x, y);
      DibPutPixel(stampedLock.head, x, y, static_cast<std::uint32_t>(value));
    }
  }
  return stamped.release();
}
