// DibResize of a 600x100 24-bit picture to 200 % (Mitchell) and to 50 %
// (Lanczos), against ImageMagick's resize of the same picture with the same
// filters, in one run so that the times compare. ImageMagick is held to one
// thread, as ours runs.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "bench/magick_resize.h"
#include "raster/dib.h"
#include "raster/resample.h"

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 100;

// Smooth colour with noise on it, top-down blue, green, red.
std::vector<std::uint8_t> Picture() {
  std::vector<std::uint8_t> bytes(kWidth * kHeight * 3);
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      std::uint8_t* p = &bytes[(y * kWidth + x) * 3];
      p[0] = static_cast<std::uint8_t>(x * 255 / kWidth);
      p[1] = static_cast<std::uint8_t>(y * 255 / kHeight);
      p[2] = static_cast<std::uint8_t>(random() & 255);
    }
  return bytes;
}

void BM_DibResize(benchmark::State& state) {
  std::vector<std::uint8_t> bytes = Picture();
  DibOwner picture(DibNew(kWidth, kHeight, nullptr, 24));
  {
    DibLock lock(picture.get());
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        const std::uint8_t* p = &bytes[(y * kWidth + x) * 3];
        DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>(p[2] | p[1] << 8 | p[0] << 16));
      }
  }
  int percent = static_cast<int>(state.range(0));
  for (auto _ : state) {
    DibOwner resized(DibResize(picture.get(), percent, percent));
    benchmark::DoNotOptimize(resized.get());
  }
}
BENCHMARK(BM_DibResize)->Arg(200)->Arg(50)->Unit(benchmark::kMillisecond);

void BM_MagickResize(benchmark::State& state) {
  std::vector<std::uint8_t> bytes = Picture();
  MagickPicture* picture = MagickPictureNew(bytes.data(), kWidth, kHeight);
  int percent = static_cast<int>(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(MagickPictureResize(picture, kWidth * percent / 100, kHeight * percent / 100, percent > 100));
  MagickPictureFree(picture);
}
BENCHMARK(BM_MagickResize)->Arg(200)->Arg(50)->Unit(benchmark::kMillisecond);

}  // namespace
