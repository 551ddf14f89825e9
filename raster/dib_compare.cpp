// Picture equality, pixel by pixel, ignoring the colour table and the
// padding at the end of each row.
#include <cstring>

#include "raster/dib.h"

int DibSamePicture(DibHandle first, DibHandle second) {
  DibLock a(first);
  DibLock b(second);
  if (a.head == nullptr || b.head == nullptr) return 0;
  if (a.head->biWidth != b.head->biWidth || a.head->biHeight != b.head->biHeight ||
      a.head->biBitCount != b.head->biBitCount)
    return 0;
  const int bitCount = a.head->biBitCount;
  const int width = a.head->biWidth;
  const std::size_t wholeBytes = static_cast<std::size_t>(bitCount) * width / 8;
  const int restBits = bitCount * width % 8;
  const std::uint8_t restMask = static_cast<std::uint8_t>(0xFF00 >> restBits);
  for (int y = 0; y < a.head->biHeight; ++y) {
    const std::uint8_t* rowA = DibRow(a.head, y);
    const std::uint8_t* rowB = DibRow(b.head, y);
    if (std::memcmp(rowA, rowB, wholeBytes) != 0) return 0;
    if (restBits != 0 && ((rowA[wholeBytes] ^ rowB[wholeBytes]) & restMask) != 0) return 0;
  }
  return 1;
}
