#include "effects/ripple.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr double kTwoPi = 6.283185307179586;

struct RippleField {
  double centreX;
  double centreY;
  double reach;  // distance from the centre to the corner (width, height)
};

RippleField RippleFieldOf(const RippleExtra& extra, int width, int height) {
  RippleField field;
  field.centreX = width * (extra.centreX - 100) / 100 + width * 0.5;
  field.centreY = height * (extra.centreY - 100) / 100 + height * 0.5;
  double toCornerX = width - field.centreX;
  double toCornerY = height - field.centreY;
  field.reach = std::sqrt(toCornerX * toCornerX + toCornerY * toCornerY);
  return field;
}

// The shift, in pixels, on both axes of the pixel at (dx, dy) from the centre.
double WaveAt(const RippleExtra& extra, const RippleField& field, double dx, double dy) {
  double r = std::sqrt(dx * dx + dy * dy);
  double wave = std::sin(r / (extra.wavelength / 100.0) * kTwoPi + extra.phase / 100.0) * (extra.amplitude / 100.0);
  if (extra.fade != 0) wave = wave * (1.0 - r / (field.reach + 0.0001)) * (extra.damping / 100.0);
  return wave;
}

// The shift of every pixel, row by row. The wave depends on the distance
// alone, so a pixel mirrored through the centre takes its twin's value,
// computed from the same squares; only a quarter of the sines are taken.
void WaveTable(const RippleExtra& extra, const RippleField& field, int width, int height, double* waves) {
  auto twinX = static_cast<int>(2 * field.centreX);
  auto twinY = static_cast<int>(2 * field.centreY);
  for (int y = 0; y < height; ++y) {
    double* row = waves + static_cast<std::ptrdiff_t>(y) * width;
    int mirrorY = twinY - y;
    if (mirrorY >= 0 && mirrorY < y) {
      std::memcpy(row, waves + static_cast<std::ptrdiff_t>(mirrorY) * width, sizeof(double) * width);
      continue;
    }
    double dy = y - field.centreY;
    for (int x = 0; x < width; ++x) {
      int mirrorX = twinX - x;
      row[x] = mirrorX >= 0 && mirrorX < x ? row[mirrorX] : WaveAt(extra, field, x - field.centreX, dy);
    }
  }
}

double Clamp(double value, double high) { return value < 0 ? 0 : (value > high ? high : value); }

// One target pixel from the source position (sx, sy), already clamped.
void SamplePixel(const DibHead* source, int bytes, double sx, double sy, std::uint8_t* target) {
  static const std::uint8_t kOutside[4] = {0, 0, 0, 0};
  int ix = static_cast<int>(sx);
  int iy = static_cast<int>(sy);
  // For the clamped, non-negative positions this is exactly fmod(s, 1.0).
  auto fx = static_cast<float>(sx - ix);
  auto fy = static_cast<float>(sy - iy);
  bool hasRight = ix + 1 < source->biWidth;
  bool hasBelow = iy + 1 < source->biHeight;
  const std::uint8_t* row0 = DibRow(source, iy);
  const std::uint8_t* row1 = hasBelow ? DibRow(source, iy + 1) : nullptr;
  const std::uint8_t* p00 = row0 + ix * bytes;
  const std::uint8_t* p10 = hasRight ? p00 + bytes : kOutside;
  const std::uint8_t* p01 = hasBelow ? row1 + ix * bytes : kOutside;
  const std::uint8_t* p11 = hasBelow && hasRight ? p01 + bytes : kOutside;
  for (int b = 0; b < bytes; ++b) {
    float top = p00[b] * (1 - fx) + p10[b] * fx;
    float bottom = p01[b] * (1 - fx) + p11[b] * fx;
    target[b] = static_cast<std::uint8_t>(static_cast<int>(top * (1 - fy) + bottom * fy));
  }
}

}  // namespace

DibHandle Ripple(DibHandle bitmap, const RippleExtra& extra) {
  if (extra.plain != 0) return DibClone(bitmap);
  DibLock source(bitmap);
  if (source.head == nullptr) return nullptr;
  const DibHead* in = source.head;
  int bytes = in->biBitCount / 8;
  if (in->biBitCount != 8 && in->biBitCount != 24 && in->biBitCount != 32) return nullptr;
  int width = in->biWidth;
  int height = in->biHeight;
  DibOwner rippled(DibNewLike(in, width, height));
  DibLock target(rippled.get());
  if (target.head == nullptr) return nullptr;

  std::unique_ptr<double[]> waves(new (std::nothrow) double[static_cast<std::size_t>(width) * height]);
  if (waves == nullptr) return nullptr;
  WaveTable(extra, RippleFieldOf(extra, width, height), width, height, waves.get());
  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = DibRow(target.head, y);
    const double* rowWaves = waves.get() + static_cast<std::ptrdiff_t>(y) * width;
    for (int x = 0; x < width; ++x) {
      double wave = rowWaves[x];
      double sx = Clamp(x + wave, width - 1);
      double sy = Clamp(y + wave, height - 1);
      SamplePixel(in, bytes, sx, sy, out + x * bytes);
    }
  }
  return rippled.release();
}
