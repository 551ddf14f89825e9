#include "effects/wave.h"

#include <cmath>
#include <new>

#include "raster/line_shift.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kDownward = 0.78;  // keeps the wave mostly below the text
constexpr int kFine = 4;            // the enlargement the columns are moved at

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

DibHandle Wave(DibHandle bitmap, const float* table, int amplitude, int count) {
  int width = 0;
  int height = 0;
  if (DibSizeOf(bitmap, &width, &height) == 0 || count < 1) return nullptr;
  const int columns = kFine * width;
  std::unique_ptr<std::int32_t[]> shifts(new (std::nothrow) std::int32_t[columns > 0 ? columns : 1]);
  if (shifts == nullptr) return nullptr;
  for (int x = 0; x < columns; ++x)
    shifts[x] = -static_cast<std::int32_t>(static_cast<float>(amplitude) * table[x < count ? x : count - 1]);
  return DibShiftLinesFine(bitmap, shifts.get(), LineAxis::kColumns);
}
