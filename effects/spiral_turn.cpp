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

inline std::uint8_t Interpolate(int p00, int p10, int p01, int p11, double fx, double fy) {
  const double top = (p10 - p00) * fx + p00;
  const double bottom = (p11 - p01) * fx + p01;
  return static_cast<std::uint8_t>(static_cast<int>((bottom - top) * fy + (top + 0.5)));
}

template <int channels, bool smooth>
void TurnPixels(const DibHead* source, DibHead* target, const TurnTerms& terms) {
  const int width = source->biWidth;
  const int height = source->biHeight;
  const auto stride = static_cast<std::ptrdiff_t>(DibStride(source->biBitCount, width));
  // Row iy from the top is stored at height - 1 - iy.
  const std::uint8_t* topRow = DibRows(source) + (height - 1) * stride;
  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = DibRow(target, y);
    const double rowX = terms.minusDySin[y];
    const double rowY = terms.dyCos[y];
    for (int x = 0; x < width; ++x) {
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
void TurnPixels(const DibHead* source, DibHead* target, const TurnTerms& terms, int smooth) {
  if (smooth != 0)
    TurnPixels<channels, true>(source, target, terms);
  else
    TurnPixels<channels, false>(source, target, terms);
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
  TurnTerms terms;
  if (MakeTurnTerms(width, height, angle, &terms) == 0) return nullptr;
  switch (source.head->biBitCount) {
    case 8:
      TurnPixels<1>(source.head, target.head, terms, smooth);
      break;
    case 24:
      TurnPixels<3>(source.head, target.head, terms, smooth);
      break;
    case 32:
      TurnPixels<4>(source.head, target.head, terms, smooth);
      break;
    default:
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
  DibRect found = {bitmap->biWidth, bitmap->biHeight, 0, 0};
  for (int y = 0; y < bitmap->biHeight; ++y)
    for (int x = 0; x < bitmap->biWidth; ++x) {
      if (DibGetPixel(bitmap, x, y) == 0) continue;
      found.left = std::min(found.left, x);
      found.top = std::min(found.top, y);
      found.right = std::max(found.right, x + 1);
      found.bottom = std::max(found.bottom, y + 1);
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
