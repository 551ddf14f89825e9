// Most pictures moved here are masks, blank but for the text. Only the part
// that can come out nonzero is resampled: the resampler's kernels reach
// fewer than 4 pixels of the small picture around each output, so a crop 8
// pixels larger than the nonzero part on every side gives exactly the bytes
// of the whole picture for every output within 4 pixels of that part, and
// every output further out is 0. Crops of the enlargement start and end on
// multiples of 4, so that the shrunk crop lies on the same pixel grid.
#include "raster/line_shift.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "raster/resample.h"

namespace {

constexpr int kFine = kLineShiftFine;
constexpr int kEnlarge = 400;  // per cent
constexpr int kShrink = 25;
constexpr int kCropMargin = 8;  // small pixels around the nonzero part
constexpr int kKeepMargin = 4;

// Half-open: left <= x < right, top <= y < bottom.
struct Box {
  int left;
  int top;
  int right;
  int bottom;
  bool Empty() const { return right <= left || bottom <= top; }
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
};

Box Grow(const Box& box, int by, int width, int height) {
  return {std::max(box.left - by, 0), std::max(box.top - by, 0), std::min(box.right + by, width),
          std::min(box.bottom + by, height)};
}

Box Scaled(const Box& box, int factor) {
  return {box.left * factor, box.top * factor, box.right * factor, box.bottom * factor};
}

// The small pixels that a box of the enlargement touches.
Box Coarse(const Box& box) {
  return {box.left / kFine, box.top / kFine, (box.right + kFine - 1) / kFine, (box.bottom + kFine - 1) / kFine};
}

bool Blank(const std::uint8_t* bytes, int count) {
  for (int i = 0; i < count; ++i)
    if (bytes[i] != 0) return false;
  return true;
}

// The smallest box that holds every nonzero byte; empty for a blank picture.
Box NonZeroBounds(const DibHead* head, int bytesPerPixel) {
  Box box{head->biWidth, head->biHeight, 0, 0};
  for (int y = 0; y < head->biHeight; ++y) {
    const std::uint8_t* row = DibRow(head, y);
    for (int x = 0; x < head->biWidth; ++x) {
      if (Blank(row + x * bytesPerPixel, bytesPerPixel)) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
    }
  }
  return box;
}

// Where the lines of kept, moved by their shifts and cut to the picture of
// width by height, land: the box around them.
Box MovedBounds(const Box& kept, const std::int32_t* shifts, LineAxis axis, int width, int height) {
  const bool rows = axis == LineAxis::kRows;
  const int along = rows ? width : height;
  int low = along;
  int high = 0;
  for (int line = rows ? kept.top : kept.left; line < (rows ? kept.bottom : kept.right); ++line) {
    int first = std::max((rows ? kept.left : kept.top) + shifts[line], 0);
    int end = std::min((rows ? kept.right : kept.bottom) + shifts[line], along);
    if (first >= end) continue;
    low = std::min(low, first);
    high = std::max(high, end);
  }
  if (low >= high) return {0, 0, 0, 0};
  return rows ? Box{low, kept.top, high, kept.bottom} : Box{kept.left, low, kept.right, high};
}

// The placing of the moved lines. kept is in the coordinates of the whole
// enlargement; source holds it with its origin at sourceOrigin, target gets
// the moved pixels with its origin at targetOrigin, and drops what leaves it.
struct Placing {
  const DibHead* source;
  Box sourceOrigin;
  DibHead* target;
  Box targetOrigin;
  Box kept;
  const std::int32_t* shifts;
  int bytesPerPixel;
};

void PlaceRows(const Placing& p) {
  const Box& kept = p.kept;
  for (int y = kept.top; y < kept.bottom; ++y) {
    int shift = p.shifts[y];
    int first = std::max(kept.left, p.targetOrigin.left - shift);
    int end = std::min(kept.right, p.targetOrigin.right - shift);
    if (first >= end) continue;
    std::memcpy(DibRow(p.target, y - p.targetOrigin.top) + (first + shift - p.targetOrigin.left) * p.bytesPerPixel,
                DibRow(p.source, y - p.sourceOrigin.top) + (first - p.sourceOrigin.left) * p.bytesPerPixel,
                static_cast<std::size_t>(end - first) * p.bytesPerPixel);
  }
}

void PlaceColumns(const Placing& p) {
  const Box& kept = p.kept;
  const int bytes = p.bytesPerPixel;
  // Rows are stored bottom-up: each row down lies one stride lower.
  const std::ptrdiff_t stride = DibStride(p.target->biBitCount, p.target->biWidth);
  std::uint8_t* topRow = DibRow(p.target, 0);
  for (int y = kept.top; y < kept.bottom; ++y) {
    const std::uint8_t* in = DibRow(p.source, y - p.sourceOrigin.top) + (kept.left - p.sourceOrigin.left) * bytes;
    for (int x = kept.left; x < kept.right; ++x, in += bytes) {
      int to = y + p.shifts[x] - p.targetOrigin.top;
      if (to < 0 || to >= p.targetOrigin.Height() || Blank(in, bytes)) continue;  // the target starts blank
      std::uint8_t* out = topRow - to * stride + (x - p.targetOrigin.left) * bytes;
      for (int b = 0; b < bytes; ++b) out[b] = in[b];
    }
  }
}

// The resize by percent of the part of dib inside box.
DibHandle ResizePart(DibHandle dib, const Box& box, int percent) {
  DibOwner part(DibCrop(dib, DibRect{box.left, box.top, box.right, box.bottom}));
  return part != nullptr ? DibResize(part.get(), percent, percent) : nullptr;
}

}  // namespace

DibHandle DibShiftLinesFine(DibHandle bitmap, const std::int32_t* shifts, LineAxis axis) {
  DibLock in(bitmap);
  if (in.head == nullptr) return nullptr;
  const int width = in.head->biWidth;
  const int height = in.head->biHeight;
  DibOwner result(DibNewLike(in.head, width, height));
  DibLock out(result.get());
  if (out.head == nullptr) return nullptr;
  // Depths below a byte are never filtered: their enlargement is blank.
  const int bytesPerPixel = in.head->biBitCount / 8;
  const Box bounds = bytesPerPixel > 0 ? NonZeroBounds(in.head, bytesPerPixel) : Box{0, 0, 0, 0};
  if (bounds.Empty()) return result.release();

  const Box enlarged = Grow(bounds, kCropMargin, width, height);
  DibOwner large(ResizePart(bitmap, enlarged, kEnlarge));
  DibLock largeLock(large.get());
  if (largeLock.head == nullptr) return nullptr;
  const Box kept = Scaled(Grow(bounds, kKeepMargin, width, height), kFine);
  const Box moved = MovedBounds(kept, shifts, axis, kFine * width, kFine * height);
  if (moved.Empty()) return result.release();

  const Box landed = Coarse(moved);
  const Box shrunk = Grow(landed, kCropMargin, width, height);
  const Box fineShrunk = Scaled(shrunk, kFine);
  DibOwner fine(DibNewLike(in.head, fineShrunk.Width(), fineShrunk.Height()));
  DibLock fineLock(fine.get());
  if (fineLock.head == nullptr) return nullptr;
  const Placing placing{largeLock.head, Scaled(enlarged, kFine), fineLock.head, fineShrunk, kept, shifts, bytesPerPixel};
  if (axis == LineAxis::kRows)
    PlaceRows(placing);
  else
    PlaceColumns(placing);

  DibOwner small(DibResize(fine.get(), kShrink, kShrink));
  DibLock smallLock(small.get());
  if (smallLock.head == nullptr) return nullptr;
  const Box keep = Grow(landed, kKeepMargin, width, height);
  DibRegionCopy(out.head, keep.left, keep.top, smallLock.head, keep.left - shrunk.left, keep.top - shrunk.top,
                keep.Width(), keep.Height());
  return result.release();
}

DibHandle DibShiftLinesByTable(DibHandle bitmap, const float* table, int count, int amplitude, LineAxis axis) {
  int width = 0;
  int height = 0;
  if (DibSizeOf(bitmap, &width, &height) == 0 || count < 1) return nullptr;
  const int lines = kFine * (axis == LineAxis::kRows ? height : width);
  std::unique_ptr<std::int32_t[]> shifts(new (std::nothrow) std::int32_t[lines > 0 ? lines : 1]);
  if (shifts == nullptr) return nullptr;
  const auto scale = static_cast<float>(amplitude);
  for (int i = 0; i < lines; ++i) shifts[i] = static_cast<std::int32_t>(scale * table[i < count ? i : count - 1]);
  return DibShiftLinesFine(bitmap, shifts.get(), axis);
}
