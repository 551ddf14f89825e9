// Craters: a height map of craters with a power-law size distribution,
// scattered over a flat plain, shown by its slopes as a sunlit surface in one
// colour over the background.
#include <cmath>
#include <cstdint>
#include <new>

#include "fills/fractal_texture.h"
#include "fills/texture_types.h"
#include "raster/crt_random.h"
#include "raster/float_to_int.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kSlopeLimit = 52;
constexpr std::uint16_t kPlainHeight = 32767;
// The dialog allows 10000 (100000 craters); a file is held to ten times that.
constexpr int kCraterCountMax = 100000;

struct HeightMap {
  std::uint16_t* cells;
  int width;
  int height;
  std::uint16_t& At(int x, int y) { return cells[static_cast<std::size_t>(y) * width + x]; }
};

double UnitDraw() { return (CrtRand() & 0x7FFF) / 32767.0; }

// Integer mean of the square of the given half-width around (cx, cy), cut
// off at the map's edges.
int SquareMean(HeightMap& map, int cx, int cy, int halfWidth) {
  long sum = 0;
  long count = 0;
  for (int y = cy - halfWidth; y <= cy + halfWidth; ++y) {
    if (y < 0 || y >= map.height) continue;
    for (int x = cx - halfWidth; x <= cx + halfWidth; ++x) {
      if (x < 0 || x >= map.width) continue;
      sum += map.At(x, y);
      ++count;
    }
  }
  return static_cast<int>(sum / count);
}

void DrawSpeck(HeightMap& map, int cx, int cy, double g) {
  int avg = SquareMean(map, cx, cy, 1);
  if (g >= 1.0) avg += ((CrtRand() >> 8) & 3) - 1;
  map.At(cx, cy) = static_cast<std::uint16_t>(avg);
}

// A bowl of the crater's radius with a rim that falls to nothing, blended
// into the old surface more strongly towards the middle.
void DrawCrater(HeightMap& map, int cx, int cy, double g, float power) {
  const double bias = std::sqrt(0.5);
  int lev = static_cast<int>(std::fmax(2.0, g / 3));
  int avg = SquareMean(map, cx, cy, lev);
  int size = static_cast<int>(std::fmax(2.0, g));
  float rad = static_cast<float>(size);
  double depth = std::pow(static_cast<double>(rad), static_cast<double>(power));
  for (int y = cy - size; y <= cy + size; ++y) {
    if (y < 0 || y >= map.height) continue;
    for (int x = cx - size; x <= cx + size; ++x) {
      if (x < 0 || x >= map.width) continue;
      float dy = (cy - y) / rad;
      float dx = (cx - x) / rad;
      float d2 = dx * dx + dy * dy;
      double k = std::sqrt(std::fabs(1 - d2 * 2.25));
      double h = bias - k;
      double floor = d2 * 2.25 > 1 ? 0.0 : -10.0;
      if (h < floor) h = floor;
      h = h * depth;
      if (x == cx && y == cy && FloatToInt(h) == 0) h = h < 0 ? -1.0 : 1.0;
      double w = (1 / (1 - std::fmin(0.9, static_cast<double>(d2))) / 10.000000000000002 - 0.09999999999999998) / 0.9;
      int old = map.At(x, y);
      int next = static_cast<std::uint16_t>(FloatToInt((old + h) * w + (avg + h) * (1 - w)));
      if (next < 1000) next = 1000;
      if (next > 64000) next = 64000;
      map.At(x, y) = static_cast<std::uint16_t>(next);
    }
  }
}

void ScatterCraters(HeightMap& map, int count, float power) {
  for (int c = 0; c < count; ++c) {
    double r1 = UnitDraw();
    double r2 = UnitDraw();
    double r3 = UnitDraw();
    int cx = static_cast<int>((map.width - 1) * r1);
    int cy = static_cast<int>((map.height - 1) * r2);
    double g = std::sqrt(1 / ((1 - r3 * 0.9999) * kPi));
    if (g < 3)
      DrawSpeck(map, cx, cy, g);
    else
      DrawCrater(map, cx, cy, g, power);
  }
}

// Opacity of the colour by slope, 128 on level ground.
void BuildSlopeTable(int table[2 * kSlopeLimit + 1]) {
  for (int i = -kSlopeLimit; i <= kSlopeLimit; ++i) {
    double entry = i < 1 ? 128 - 127 * std::pow(std::sin(i * 1.5707963267948966 / -kSlopeLimit), 0.5)
                         : 128 + 127 * std::pow(std::sin(i * 1.5707963267948966 / kSlopeLimit), 0.5);
    table[i + kSlopeLimit] = static_cast<int>(entry);
  }
}

// The last column has no right neighbour and keeps the background.
void PaintSlopes(HeightMap& map, DibHead* bitmap, std::uint32_t layer) {
  int table[2 * kSlopeLimit + 1];
  BuildSlopeTable(table);
  for (int y = 0; y < map.height; ++y) {
    for (int x = 0; x < map.width - 1; ++x) {
      int d = map.At(x + 1, y) - map.At(x, y);
      if (d < -kSlopeLimit) d = -kSlopeLimit;
      if (d > kSlopeLimit) d = kSlopeLimit;
      int a = table[d + kSlopeLimit];
      std::uint32_t old = static_cast<std::uint32_t>(DibGetPixel(bitmap, x, y));
      std::uint32_t result = 0;
      for (int shift = 0; shift < 24; shift += 8) {
        std::uint32_t channel = (old >> shift & 0xFF) * (255 - a) / 255 + (layer >> shift & 0xFF) * a / 255;
        result |= (channel & 0xFF) << shift;
      }
      DibPutPixel(bitmap, x, y, result);
    }
  }
}

}  // namespace

DibHandle CraterTexture(TextureRecord* texture) {
  DibOwner bitmap(TextureBackground(*texture));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  int width = lock.head->biWidth;
  int height = lock.head->biHeight;
  std::size_t cells = static_cast<std::size_t>(width) * height;
  HeightMap map{new (std::nothrow) std::uint16_t[cells], width, height};
  if (map.cells == nullptr) return nullptr;
  for (std::size_t k = 0; k < cells; ++k) map.cells[k] = kPlainHeight;
  CrtSrand(static_cast<unsigned>(texture->SeedValue[0]));
  GaussInit(texture->SeedValue[0]);
  int tens = texture->CreaterCount < 0 ? 0 : texture->CreaterCount;
  ScatterCraters(map, (tens < kCraterCountMax ? tens : kCraterCountMax) * 10, texture->CreaterDepth);
  PaintSlopes(map, lock.head, texture->ForeColour[0]);
  delete[] map.cells;
  return bitmap.release();
}
