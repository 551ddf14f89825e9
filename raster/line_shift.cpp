#include "raster/line_shift.h"

#include <cstring>

#include "raster/resample.h"

namespace {

constexpr int kEnlarge = 400;  // per cent
constexpr int kShrink = 25;

void ShiftRows(const DibHead* source, DibHead* target, const std::int32_t* shifts, int bytesPerPixel) {
  const int width = source->biWidth;
  for (int y = 0; y < source->biHeight; ++y) {
    int shift = shifts[y];
    if (shift >= width || shift <= -width) continue;
    int from = shift < 0 ? -shift : 0;
    int to = shift < 0 ? 0 : shift;
    std::memcpy(DibRow(target, y) + to * bytesPerPixel, DibRow(source, y) + from * bytesPerPixel,
                static_cast<std::size_t>(width - (shift < 0 ? -shift : shift)) * bytesPerPixel);
  }
}

void ShiftColumns(const DibHead* source, DibHead* target, const std::int32_t* shifts, int bytesPerPixel) {
  const int height = source->biHeight;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* in = DibRow(source, y);
    for (int x = 0; x < source->biWidth; ++x) {
      int to = y + shifts[x];
      if (to < 0 || to >= height) continue;
      std::memcpy(DibRow(target, to) + x * bytesPerPixel, in + x * bytesPerPixel, bytesPerPixel);
    }
  }
}

}  // namespace

DibHandle DibShiftLinesFine(DibHandle bitmap, const std::int32_t* shifts, LineAxis axis) {
  DibOwner large(DibResize(bitmap, kEnlarge, kEnlarge));
  DibLock in(large.get());
  if (in.head == nullptr) return nullptr;
  DibOwner moved(DibNewLike(in.head, in.head->biWidth, in.head->biHeight));
  DibLock out(moved.get());
  if (out.head == nullptr) return nullptr;
  // Depths below a byte are never filtered, so their enlargement is blank.
  int bytesPerPixel = in.head->biBitCount / 8;
  if (bytesPerPixel > 0) {
    if (axis == LineAxis::kRows)
      ShiftRows(in.head, out.head, shifts, bytesPerPixel);
    else
      ShiftColumns(in.head, out.head, shifts, bytesPerPixel);
  }
  return DibResize(moved.get(), kShrink, kShrink);
}
