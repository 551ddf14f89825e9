// Scans over a bitmap's bytes: picture equality, ignoring the colour table
// and the padding at the end of each row, and the inked stretch of a row.
#include <cstring>

#include "raster/dib.h"

namespace {

// Eight bytes at a time while they are all zero, from the front or the back.
bool ZeroWord(const std::uint8_t* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word == 0;
}

}  // namespace

void DibRowInk(const std::uint8_t* row, int bytes, int* first, int* stop) {
  int start = 0;
  while (start + 8 <= bytes && ZeroWord(row + start)) start += 8;
  while (start < bytes && row[start] == 0) ++start;
  int end = bytes;
  while (end - 8 >= start && ZeroWord(row + end - 8)) end -= 8;
  while (end > start && row[end - 1] == 0) --end;
  *first = start;
  *stop = end;
}

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
