#include "effects/zoom_smear.h"

#include <memory>
#include <new>

namespace {

// Where sample k of every column (or row) falls, given the scale of each
// sample: samples * length entries, k-major; -1 marks a place outside.
void SamplePlaces(const double* scales, int samples, int centre, int length, int* places) {
  for (int k = 0; k < samples; ++k) {
    for (int i = 0; i < length; ++i) {
      auto difference = static_cast<float>(i - centre);
      auto place = static_cast<int>(difference * scales[k] + centre);
      places[k * length + i] = place >= 0 && place < length ? place : -1;
    }
  }
}

}  // namespace

DibHandle ZoomSmear(DibHandle bitmap, const FrameworkExtra& extra) {
  if (extra.strength == 0) return DibClone(bitmap);
  DibLock source(bitmap);
  if (source.head == nullptr) return nullptr;
  const DibHead* in = source.head;
  if (in->biBitCount != 8 && in->biBitCount != 24 && in->biBitCount != 32) return nullptr;
  const int bytes = in->biBitCount / 8;
  const int width = in->biWidth;
  const int height = in->biHeight;
  const int samples = extra.samples > 1 ? extra.samples : 1;
  DibOwner smeared(DibNewLike(in, width, height));
  DibLock target(smeared.get());
  std::unique_ptr<double[]> scales(new (std::nothrow) double[samples]);
  std::unique_ptr<int[]> columns(new (std::nothrow) int[static_cast<std::size_t>(samples) * width]);
  std::unique_ptr<int[]> rows(new (std::nothrow) int[static_cast<std::size_t>(samples) * height]);
  if (target.head == nullptr || scales == nullptr || columns == nullptr || rows == nullptr) return nullptr;

  const auto step = static_cast<float>(extra.strength / 100.0);
  for (int k = 0; k < samples; ++k) {
    auto f = static_cast<float>(k * step);
    scales[k] = 1.0 - f / 100.0;
  }
  SamplePlaces(scales.get(), samples, width / 2, width, columns.get());
  SamplePlaces(scales.get(), samples, height / 2, height, rows.get());

  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = DibRow(target.head, y);
    for (int x = 0; x < width; ++x) {
      int sums[4] = {0, 0, 0, 0};
      int taken = 0;
      for (int k = 0; k < samples; ++k) {
        int sx = k == 0 ? x : columns[k * width + x];
        int sy = k == 0 ? y : rows[k * height + y];
        if (sx < 0 || sy < 0) break;
        const std::uint8_t* pixel = DibRow(in, sy) + sx * bytes;
        for (int b = 0; b < bytes; ++b) sums[b] += pixel[b];
        ++taken;
      }
      for (int b = 0; b < bytes; ++b) out[x * bytes + b] = static_cast<std::uint8_t>(sums[b] / taken);
    }
  }
  return smeared.release();
}
