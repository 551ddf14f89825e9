// The gradient's rasterisers: linear bands and nested shapes drawn as filled
// shapes through the drawing service, and the conical sweep pixel by pixel.
#include <cmath>

#include "fills/fountain.h"
#include "raster/gdi_command.h"

namespace {

constexpr float kRadiansPerDegree = 0.01745328f;
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr int kConicalRampSize = 360;

struct RampOwner {
  FountainRampBlock ramp = nullptr;
  ~RampOwner() { FountainRampFree(ramp); }
  // Entry i, or 0 past the end.
  std::uint32_t At(long long i) const {
    return i >= 0 && i < ramp[0] ? FountainRampColours(ramp)[i] : 0;
  }
};

// A point turned about the centre: x' = x c - y s, y' = y c + x s, each
// truncated before the centre is added back.
struct Turn {
  float c;
  float s;
  int TurnedX(int x, int y) const { return static_cast<int>(x * c - y * s); }
  int TurnedY(int x, int y) const { return static_cast<int>(y * c + x * s); }
};

// Each channel trunc(first * f + second * (1 - f)), in single precision.
std::uint32_t BandColour(std::uint32_t first, std::uint32_t second, float f) {
  std::uint32_t colour = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    float channel = static_cast<float>(first >> shift & 0xFF) * f + static_cast<float>(second >> shift & 0xFF) * (1 - f);
    colour |= static_cast<std::uint32_t>(channel) << shift;
  }
  return colour;
}

DibHandle FountainConical(int width, int height, int centreX, int centreY, int rotation, const FountainSpec* spec) {
  DibOwner bitmap(DibNew(width, height, nullptr, 24));
  RampOwner ramp{FountainRamp(spec, kConicalRampSize)};
  DibLock lock(bitmap.get());
  if (lock.head == nullptr || ramp.ramp == nullptr) return nullptr;
  int turn = 360 - rotation;
  if (turn < 0) turn += 360;
  const int px = static_cast<int>((centreX / 100.0 + 0.5) * width);
  const int py = static_cast<int>((0.5 - centreY / 100.0) * height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int dx = x - px;
      const int dy = y - py;
      double angle = 0;
      if (dx != 0) {
        angle = std::atan(static_cast<double>(dy) / dx) * kDegreesPerRadian;
        if (dx > 0) angle += 180;
        while (angle < 0) angle += 360;
      } else {
        angle = dy < 1 ? 90 : 270;
      }
      // Up one side and down the other, so the sweep has no seam.
      angle += turn;
      while (angle > 360) angle -= 360;
      if (angle > 180) angle = 360 - angle;
      double v = std::trunc(angle / 180 * 256) / 256;
      v = v < 0 ? 0 : (v > 1 ? 1 : v);
      DibPutPixel(lock.head, x, y, ramp.At(static_cast<long long>(v * (kConicalRampSize - 1))));
    }
  }
  return bitmap.release();
}

// Concentric ellipses or rectangles from a box that encloses the bitmap
// inwards, one per pixel of the half-diagonal, drifting towards the centre
// offset as they shrink.
DibHandle FountainNested(int width, int height, int centreX, int centreY, const FountainSpec* spec, bool ellipses) {
  const int hw = width / 2;
  const int hh = height / 2;
  const int n = static_cast<int>(std::sqrt(static_cast<double>(hw) * hw + static_cast<double>(hh) * hh) + 0.5);
  RampOwner ramp{FountainRamp(spec, n)};
  if (ramp.ramp == nullptr) return nullptr;
  GdiCanvas* canvas = GdiCanvasOpen(width, height);
  if (canvas == nullptr) return nullptr;
  if (n > 0) {
    GdiCanvasRectangle(canvas, DibRect{0, 0, width + 1, height + 1}, ramp.At(0));
    const double sizeX = width * std::sqrt(2.0);
    const double sizeY = height * std::sqrt(2.0);
    double left = hw - sizeX / 2, top = hh - sizeY / 2, right = hw + sizeX / 2, bottom = hh + sizeY / 2;
    const double halfX = sizeX / 2 / n, halfY = sizeY / 2 / n;
    const double offX = sizeX / n * centreX / 100, offY = sizeY / n * centreY / 100;
    for (int i = 0; i < n; ++i) {
      const DibRect box{static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                        static_cast<int>(bottom)};
      if (ellipses)
        GdiCanvasEllipse(canvas, box, ramp.At(i));
      else
        GdiCanvasRectangle(canvas, box, ramp.At(i));
      left += halfX + offX;
      top += halfY + offY;
      right += offX - halfX;
      bottom += offY - halfY;
    }
  }
  return GdiCanvasClose(canvas);
}

}  // namespace

DibHandle FountainLinear(std::uint32_t first, std::uint32_t second, int width, int height, int rotation,
                         const FountainSpec* spec) {
  const int cx = width / 2;
  const int cy = height / 2;
  const float a = static_cast<float>(rotation) * kRadiansPerDegree;
  const Turn turn{std::cos(a), std::sin(a)};
  const int cornerX[4] = {-2 - cx, width + 2 - cx, width + 2 - cx, -2 - cx};
  const int cornerY[4] = {-2 - cy, -2 - cy, height + 2 - cy, height + 2 - cy};
  int xmin = 0, xmax = 0, ymin = 0, ymax = 0;
  for (int i = 0; i < 4; ++i) {
    const int x = turn.TurnedX(cornerX[i], cornerY[i]);
    const int y = turn.TurnedY(cornerX[i], cornerY[i]) + cy;
    xmin = i == 0 || x < xmin ? x : xmin;
    xmax = i == 0 || x > xmax ? x : xmax;
    ymin = i == 0 || y < ymin ? y : ymin;
    ymax = i == 0 || y > ymax ? y : ymax;
  }
  const int span = ymax - ymin;
  const float step = static_cast<float>(span) * 0.00390625f;  // 256 bands at any size
  RampOwner ramp;
  if (spec != nullptr) {
    ramp.ramp = FountainRamp(spec, static_cast<int>(static_cast<float>(span) / step + 0.5f));
    if (ramp.ramp == nullptr) return nullptr;
  }
  GdiCanvas* canvas = GdiCanvasOpen(width, height);
  if (canvas == nullptr) return nullptr;
  int band = 0;
  for (float t = 0; step > 0 && t < static_cast<float>(span); t += step, ++band) {
    const int b0 = static_cast<int>(t) + ymin - cy;
    const int b1 = static_cast<int>(std::ceil(t + step)) + ymin - cy;
    const int bandX[4] = {xmin, xmax, xmax, xmin};
    const int bandY[4] = {b0, b0, b1, b1};
    std::int32_t points[8];
    for (int i = 0; i < 4; ++i) {
      points[2 * i] = turn.TurnedX(bandX[i], bandY[i]) + cx;
      points[2 * i + 1] = turn.TurnedY(bandX[i], bandY[i]) + cy;
    }
    const std::uint32_t colour =
        spec != nullptr ? ramp.At(band) : BandColour(first, second, t / static_cast<float>(span));
    GdiCanvasPolygon(canvas, points, 4, colour);
  }
  return GdiCanvasClose(canvas);
}

DibHandle FountainRender(int width, int height, const FountainSpec* spec) {
  switch (spec->shape) {
    case kFountainConical:
      return FountainConical(width, height, spec->centreX, spec->centreY, spec->rotation, spec);
    case kFountainEllipses:
      return FountainNested(width, height, spec->centreX, spec->centreY, spec, true);
    case kFountainRectangles:
      return FountainNested(width, height, spec->centreX, spec->centreY, spec, false);
    default:
      return FountainLinear(0, 0, width, height, spec->rotation, spec);
  }
}
