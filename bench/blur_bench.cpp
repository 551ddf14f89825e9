// The soft-shadow blur of a 600x100 mask against ImageMagick's blurs of the
// same mask with the same sigma and reach (radius 10, the 21 taps), in one run
// so that the times compare. ImageMagick is held to one thread, as ours runs.
// The argument is the blur's softness; sigma is softness / 10.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "bench/magick_blur.h"
#include "raster/blur.h"
#include "raster/dib.h"

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 100;
constexpr double kRadius = kBlurMaxTaps / 2;

// A mask like a line of text: solid blocks of full cover on nothing, top-down.
std::vector<std::uint8_t> TextLikeMask() {
  std::vector<std::uint8_t> mask(kWidth * kHeight, 0);
  std::mt19937 random(1);
  for (int letter = 0; letter < 40; letter++) {
    int left = 20 + letter * 14 + static_cast<int>(random() % 4);
    int top = 20 + static_cast<int>(random() % 20);
    int width = 4 + static_cast<int>(random() % 8);
    int height = 30 + static_cast<int>(random() % 30);
    for (int y = top; y < top + height && y < kHeight; y++)
      std::memset(&mask[y * kWidth + left], 255, width);
  }
  return mask;
}

void BM_GaussianBlur(benchmark::State& state) {
  const int softness = static_cast<int>(state.range(0));
  std::vector<std::uint8_t> grey(kPaletteBytes);
  for (int i = 0; i < kPaletteBytes; i++) grey[i] = static_cast<std::uint8_t>(i / 3);
  DibOwner source(DibNew(kWidth, kHeight, grey.data(), 8));
  std::vector<std::uint8_t> mask = TextLikeMask();
  DibHead* head = static_cast<DibHead*>(MemLock(source.get()));
  for (auto _ : state) {
    // The blur changes its source: start each round from the mask again.
    for (int y = 0; y < kHeight; y++) std::memcpy(DibRow(head, y), &mask[y * kWidth], kWidth);
    DibOwner blurred(GaussianBlur(source.get(), softness));
    benchmark::DoNotOptimize(blurred.get());
  }
  MemUnlock(source.get());
}

// The same mask and sigma through one of ImageMagick's blurs.
void RunMagickBlur(benchmark::State& state, int (*blur)(MagickMask*, double, double)) {
  const double sigma = static_cast<int>(state.range(0)) / 10.0f;
  std::vector<std::uint8_t> mask = TextLikeMask();
  MagickMask* image = MagickMaskNew(mask.data(), kWidth, kHeight);
  if (image == nullptr) {
    state.SkipWithError("ImageMagick could not make the mask image");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(blur(image, kRadius, sigma));
  MagickMaskFree(image);
}

void BM_MagickGaussianBlur(benchmark::State& state) { RunMagickBlur(state, MagickMaskGaussianBlur); }
void BM_MagickSeparableBlur(benchmark::State& state) { RunMagickBlur(state, MagickMaskSeparableBlur); }

BENCHMARK(BM_GaussianBlur)->Arg(3)->Arg(12)->Arg(42)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MagickGaussianBlur)->Arg(3)->Arg(12)->Arg(42)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MagickSeparableBlur)->Arg(3)->Arg(12)->Arg(42)->Unit(benchmark::kMicrosecond);

}  // namespace
