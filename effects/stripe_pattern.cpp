#include "effects/stripe_pattern.h"

namespace {

void CopyPixel(DibHead* target, const DibHead* fill1, const DibHead* fill2, bool first, int x, int y) {
  DibPutPixel(target, x, y, static_cast<std::uint32_t>(DibGetPixel(first ? fill1 : fill2, x, y)));
}

// The flag flips where x + 1 is a multiple of the band, so the first band is
// one pixel narrower than the rest.
void VerticalBands(DibHead* target, const DibHead* fill1, const DibHead* fill2, int band) {
  for (int y = 0; y < target->biHeight; ++y) {
    bool first = false;
    for (int x = 0; x < target->biWidth; ++x) {
      if ((x + 1) % band == 0) first = !first;
      CopyPixel(target, fill1, fill2, first, x, y);
    }
  }
}

struct RowStart {
  int count;
  bool first;
};

// The counter and flag a row of a slanted pattern starts with.
RowStart SlantedRowStart(int type, int y, int height, int band) {
  const RowStart falling = {y + band + 1, false};
  const RowStart rising = {height - y + band, false};
  bool lower = y >= height / 2;
  switch (type) {
    case kStripesDiagonalBack:
      return falling;
    case kStripesDiagonalForward:
      return rising;
    case kStripesChevron:
      return lower ? rising : falling;
    case kStripesSplitChevron:
      return lower ? RowStart{height - y + band, true} : falling;
    case kStripesReverseChevron:
      return lower ? RowStart{y + 1, true} : rising;
    default:  // reverse split chevron
      return lower ? RowStart{y + 1, false} : rising;
  }
}

// Each row runs its counters from x = -height, so the slant is already
// under way where the picture starts.
void SlantedBands(DibHead* target, const DibHead* fill1, const DibHead* fill2, int band, int type) {
  int height = target->biHeight;
  for (int y = 0; y < height; ++y) {
    RowStart start = SlantedRowStart(type, y, height, band);
    int count = start.count;
    bool first = start.first;
    int run = 0;
    for (int x = -height; x < target->biWidth; ++x) {
      if (x >= 0) CopyPixel(target, fill1, fill2, first, x, y);
      count -= 1;
      if (count <= band && ++run >= band) {
        run = 0;
        first = !first;
      }
    }
  }
}

}  // namespace

DibHandle SolidBitmap(int width, int height, std::uint32_t colour) {
  DibHandle dib = DibNew(width, height, nullptr, 24);
  DibLock lock(dib);
  if (lock.head == nullptr) return MemFree(dib);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, colour);
  return dib;
}

DibHandle StripePattern(DibHandle fill1, DibHandle fill2, int shift, int band, int type, int direction) {
  DibLock first(fill1);
  DibLock second(fill2);
  if (first.head == nullptr || second.head == nullptr) return nullptr;
  DibOwner pattern(DibNewLike(first.head, first.head->biWidth, first.head->biHeight));
  {
    DibLock target(pattern.get());
    if (target.head == nullptr) return nullptr;
    if (type >= kStripesDiagonalBack && type <= kStripesReverseSplitChevron)
      SlantedBands(target.head, first.head, second.head, band, type);
    else
      VerticalBands(target.head, first.head, second.head, band);
  }
  DibHandle wrapped = direction == 1 ? DibRotateRight(pattern.get(), shift) : DibRotateLeft(pattern.get(), shift);
  return wrapped != nullptr ? wrapped : pattern.release();
}
