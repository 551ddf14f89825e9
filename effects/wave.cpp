#include "effects/wave.h"

#include <cmath>
#include <new>

#include "raster/line_shift.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kDownward = 0.78;  // keeps the wave mostly below the text

}  // namespace

std::unique_ptr<float[]> MakeWaveTable(int count, float fraction) {
  std::unique_ptr<float[]> table(new (std::nothrow) float[count > 0 ? count : 1]());
  if (table == nullptr || count < 1) return table;
  auto position = static_cast<int>(static_cast<float>(count) * fraction) % count;
  for (int k = 0; k < count; ++k) {
    auto angle = static_cast<float>(static_cast<float>(k) / static_cast<float>(count) * 360.0);
    table[position] = static_cast<float>(table[position] + (std::sin(angle * kPi / 180.0) - kDownward));
    if (++position >= count) position = 0;
  }
  return table;
}

// A table value of -1 moves a column amplitude fine pixels down.
DibHandle Wave(DibHandle bitmap, const float* table, int amplitude, int count) {
  return DibShiftLinesByTable(bitmap, table, count, -amplitude, LineAxis::kColumns);
}
