#include "effects/shimmer.h"

#include <cmath>
#include <new>

#include "raster/line_shift.h"

namespace {

constexpr double kPi = 3.141592653589793;

// One harmonic: cycles turns over the table, its phase moving at the rate
// of its own amplitude.
void AddHarmonic(float* table, int count, double degreesPerTable, float amplitude, float phase) {
  float phaseShift = phase * amplitude;
  for (int i = 0; i < count; ++i) {
    float along = static_cast<float>(i) / static_cast<float>(count);
    table[i] = static_cast<float>(table[i] + amplitude * std::sin((along * degreesPerTable + phaseShift) * kPi / 180.0));
  }
}

}  // namespace

std::unique_ptr<float[]> MakeMirageTable(int count, float fraction, float strength) {
  std::unique_ptr<float[]> table(new (std::nothrow) float[count > 0 ? count : 1]());
  if (table == nullptr) return nullptr;
  auto phase = static_cast<float>(fraction * 360.0);
  auto second = static_cast<float>(strength * 0.777);
  auto third = static_cast<float>(second * 0.5);
  AddHarmonic(table.get(), count, 360.0, strength, phase);
  AddHarmonic(table.get(), count, 720.0, second, phase);
  AddHarmonic(table.get(), count, 1080.0, third, phase);
  return table;
}

DibHandle Shimmer(DibHandle bitmap, const float* table, int amplitude, int count) {
  return DibShiftLinesByTable(bitmap, table, count, amplitude, LineAxis::kRows);
}
