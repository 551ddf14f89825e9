#include "effects/spiral_turn.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace {

// The inverse turn is dx * cos - dy * sin + w / 2 across and
// dx * sin + dy * cos + h / 2 down. Its four products depend on the column
// or the row alone, so they are computed once per column and per row; the
// sums are taken in the same order as the whole expression, so each place
// comes out exactly as if it were computed at the pixel.
struct TurnTerms {
  double cosine;
  double sine;
  std::unique_ptr<double[]> dxCos;
  std::unique_ptr<double[]> dxSin;
  std::unique_ptr<double[]> minusDySin;
  std::unique_ptr<double[]> dyCos;
  double halfWidth;
  double halfHeight;
};

int MakeTurnTerms(int width, int height, int angle, TurnTerms* terms) {
  const double radians = angle * kSpiralRadiansPerDegree;
  const double cosine = std::cos(radians);
  const double sine = std::sin(radians);
  terms->cosine = cosine;
  terms->sine = sine;
  terms->dxCos.reset(new (std::nothrow) double[width]);
  terms->dxSin.reset(new (std::nothrow) double[width]);
  terms->minusDySin.reset(new (std::nothrow) double[height]);
  terms->dyCos.reset(new (std::nothrow) double[height]);
  if (!terms->dxCos || !terms->dxSin || !terms->minusDySin || !terms->dyCos) return 0;
  for (int x = 0; x < width; ++x) {
    const int dx = x - width / 2;
    terms->dxCos[x] = dx * cosine;
    terms->dxSin[x] = dx * sine;
  }
  for (int y = 0; y < height; ++y) {
    const int dy = y - height / 2;
    terms->minusDySin[y] = -dy * sine;
    terms->dyCos[y] = dy * cosine;
  }
  terms->halfWidth = width / 2;
  terms->halfHeight = height / 2;
  return 1;
}

// The stretch of offsets u in which slope * u + base lies in (low, high).
// A slope too small to move the place by a pixel over any row counts as 0.
struct Stretch {
  double first;
  double stop;
};

Stretch OffsetsWithin(double slope, double base, double low, double high) {
  if (std::fabs(slope) < 1e-6) return base > low && base < high ? Stretch{-1e9, 1e9} : Stretch{0, 0};
  const double a = (low - base) / slope;
  const double b = (high - base) / slope;
  return {std::min(a, b), std::max(a, b)};
}

// The columns of target row y whose turned place can come near the ink:
// all others read only zero and stay 0. A pixel reads from its place's
// column and the next, so it can see ink only if its place lies in
// (left - 2, right + 1); the stretch is widened by a further pixel on both
// sides in the source and in the target, far beyond any rounding.
void InkedColumns(const TurnTerms& terms, int width, int y, const DibRect& ink, int* first, int* stop) {
  const double rowX = terms.minusDySin[y] + terms.halfWidth;
  const double rowY = terms.dyCos[y] + terms.halfHeight;
  const Stretch across = OffsetsWithin(terms.cosine, rowX, ink.left - 3.0, ink.right + 2.0);
  const Stretch down = OffsetsWithin(terms.sine, rowY, ink.top - 3.0, ink.bottom + 2.0);
  const double from = std::max(across.first, down.first) + width / 2;
  const double to = std::min(across.stop, down.stop) + width / 2;
  *first = from <= 0 ? 0 : static_cast<int>(std::min(std::floor(from) - 1, static_cast<double>(width)));
  *stop = to >= width ? width : static_cast<int>(std::max(std::ceil(to) + 2, 0.0));
  if (*first < 0) *first = 0;
  if (*stop > width) *stop = width;
}

inline std::uint8_t Interpolate(int p00, int p10, int p01, int p11, double fx, double fy) {
  const double top = (p10 - p00) * fx + p00;
  const double bottom = (p11 - p01) * fx + p01;
  return static_cast<std::uint8_t>(static_cast<int>((bottom - top) * fy + (top + 0.5)));
}

template <int channels, bool smooth>
void TurnPixels(const DibHead* source, DibHead* target, const TurnTerms& terms, const DibRect& ink) {
  const int width = source->biWidth;
  const int height = source->biHeight;
  const auto stride = static_cast<std::ptrdiff_t>(DibStride(source->biBitCount, width));
  // Row iy from the top is stored at height - 1 - iy.
  const std::uint8_t* topRow = DibRows(source) + (height - 1) * stride;
  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = DibRow(target, y);
    const double rowX = terms.minusDySin[y];
    const double rowY = terms.dyCos[y];
    int first = 0;
    int stop = 0;
    InkedColumns(terms, width, y, ink, &first, &stop);
    for (int x = first; x < stop; ++x) {
      const double sx = terms.dxCos[x] + rowX + terms.halfWidth;
      const double sy = terms.dxSin[x] + rowY + terms.halfHeight;
      const int ix = static_cast<int>(sx);
      const int iy = static_cast<int>(sy);
      if (ix < 0 || iy < 0 || ix >= width || iy >= height) continue;
      const std::uint8_t* p00 = topRow - iy * stride + ix * channels;
      if (!smooth || ix + 1 >= width || iy + 1 >= height) {
        for (int c = 0; c < channels; ++c) out[x * channels + c] = p00[c];
        continue;
      }
      const std::uint8_t* p01 = p00 - stride;
      const double fx = sx - ix;
      const double fy = sy - iy;
      for (int c = 0; c < channels; ++c)
        out[x * channels + c] = Interpolate(p00[c], p00[channels + c], p01[c], p01[channels + c], fx, fy);
    }
  }
}

template <int channels>
void TurnPixels(const DibHead* source, DibHead* target, const TurnTerms& terms, const DibRect& ink, int smooth) {
  if (smooth != 0)
    TurnPixels<channels, true>(source, target, terms, ink);
  else
    TurnPixels<channels, false>(source, target, terms, ink);
}

}  // namespace

DibHandle SpiralRotate(DibHandle stamp, int angle, int smooth) {
  DibLock source(stamp);
  if (source.head == nullptr) return nullptr;
  const int width = source.head->biWidth;
  const int height = source.head->biHeight;
  DibOwner turned(DibNewLike(source.head, width, height));
  DibLock target(turned.get());
  if (target.head == nullptr) return nullptr;
  const int channels = source.head->biBitCount / 8;
  if (channels != 1 && channels != 3 && channels != 4) return turned.release();
  // Only the neighbourhood of the ink can turn into anything but 0.
  const DibRect ink = SpiralBounds(source.head, 0, 0);
  if (ink.right <= ink.left) return turned.release();
  TurnTerms terms;
  if (MakeTurnTerms(width, height, angle, &terms) == 0) return nullptr;
  switch (channels) {
    case 1:
      TurnPixels<1>(source.head, target.head, terms, ink, smooth);
      break;
    case 3:
      TurnPixels<3>(source.head, target.head, terms, ink, smooth);
      break;
    default:
      TurnPixels<4>(source.head, target.head, terms, ink, smooth);
      break;
  }
  return turned.release();
}

DibHandle SpiralTurn(DibHandle stamp, int angle, int smooth) {
  switch (angle) {
    case 0:
      return DibClone(stamp);
    case 90:
      return DibTurnLeft(stamp);
    case 180:
      return DibTurnAround(stamp);
    case 270:
      return DibTurnRight(stamp);
    default:
      return SpiralRotate(stamp, angle, smooth);
  }
}

DibRect SpiralBounds(const DibHead* bitmap, int offsetX, int offsetY) {
  const int channels = bitmap->biBitCount / 8;
  DibRect found = {bitmap->biWidth, bitmap->biHeight, 0, 0};
  for (int y = 0; y < bitmap->biHeight; ++y) {
    int first = 0;
    int stop = 0;
    DibRowInk(DibRow(bitmap, y), bitmap->biWidth * channels, &first, &stop);
    if (first == stop) continue;
    found.left = std::min(found.left, first / channels);
    found.right = std::max(found.right, (stop - 1) / channels + 1);
    found.top = std::min(found.top, y);
    found.bottom = y + 1;
  }
  if (found.right <= found.left || found.bottom <= found.top) return DibRect{0, 0, 0, 0};
  return {found.left + offsetX, found.top + offsetY, found.right + offsetX, found.bottom + offsetY};
}

DibRect SpiralBoundsUnion(const DibRect& first, const DibRect& second) {
  auto empty = [](const DibRect& r) { return r.right <= r.left || r.bottom <= r.top; };
  if (empty(second)) return first;
  if (empty(first)) return second;
  return {std::min(first.left, second.left), std::min(first.top, second.top), std::max(first.right, second.right),
          std::max(first.bottom, second.bottom)};
}
