// Gaussian blur. Both passes run over whole rows: the horizontal pass filters
// each row, the vertical pass computes one output row at a time from the rows
// above and below it. Every output byte still sees exactly the float
// operations of a plain one-sample-at-a-time loop, tap after tap in order;
// only many samples are computed side by side.
#include "raster/blur.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace {

// Samples summed side by side; small enough to stay in registers.
constexpr int kBlock = 16;

inline std::uint8_t TruncateToByte(double value) { return static_cast<std::uint8_t>(static_cast<int>(value)); }

// Whether every tap of a block reads only zeros. Each product is then +0 and
// adds nothing, so every sum of the block is exactly +0: masks are mostly
// empty around the letters, and such blocks need no arithmetic.
bool BlockIsBlank(const std::uint8_t* samples, int tapCount, std::ptrdiff_t tapStride) {
  std::uint64_t ink = 0;
  for (int i = 0; i < tapCount; ++i) {
    std::uint64_t half[2];
    std::memcpy(half, samples + i * tapStride, sizeof half);
    ink |= half[0] | half[1];
  }
  return ink == 0;
}
static_assert(kBlock == 16, "a block is tested as two 8-byte halves");

// out[q] = finish(sum over i of kernel[i] * samples[q + i * tapStride]) for q
// in [0, count), each sum in single precision, taps added in order.
template <typename Finish>
void FilterRun(const float* kernel, int tapCount, const std::uint8_t* samples, std::ptrdiff_t tapStride, int count,
               std::uint8_t* out, Finish finish) {
  const std::uint8_t blank = finish(0.0f);
  int q = 0;
  for (; q + kBlock <= count; q += kBlock) {
    if (BlockIsBlank(samples + q, tapCount, tapStride)) {
      std::memset(out + q, blank, kBlock);
      continue;
    }
    float sums[kBlock] = {};
    for (int i = 0; i < tapCount; ++i) {
      const float weight = kernel[i];
      const std::uint8_t* tapSamples = samples + q + i * tapStride;
      for (int j = 0; j < kBlock; ++j) sums[j] += weight * tapSamples[j];
    }
    for (int j = 0; j < kBlock; ++j) out[q + j] = finish(sums[j]);
  }
  for (; q < count; ++q) {
    float sum = 0.0f;
    for (int i = 0; i < tapCount; ++i) sum += kernel[i] * samples[q + i * tapStride];
    out[q] = finish(sum);
  }
}

// All taps fall on the line: round by adding one half.
void FilterFull(const float* kernel, int taps, const std::uint8_t* samples, std::ptrdiff_t tapStride, int count,
                std::uint8_t* out) {
  FilterRun(kernel, taps, samples, tapStride, count, out, [](float sum) { return TruncateToByte(sum + 0.5); });
}

// Near an end: only the taps that fall on the line, renormalised by their
// weight. The half is added before the division.
void FilterCut(const float* kernel, int tapCount, const std::uint8_t* samples, std::ptrdiff_t tapStride, int count,
               std::uint8_t* out) {
  float weights = 0.0f;
  for (int i = 0; i < tapCount; ++i) weights += kernel[i];
  FilterRun(kernel, tapCount, samples, tapStride, count, out,
            [weights](float sum) { return TruncateToByte((sum + 0.5) / weights); });
}

// Blurs a line of `length` positions; position p holds `width` independent
// bytes starting at p * stride. With stride equal to width the positions are
// contiguous and the whole middle of the line is one run.
void BlurPositions(const float* kernel, int taps, const std::uint8_t* source, std::uint8_t* destination, int length,
                   std::ptrdiff_t stride, int width) {
  if (taps > length) return;
  const int half = taps / 2;
  for (int p = 0; p < half; ++p) FilterCut(kernel + half - p, taps - half + p, source, stride, width, destination + p * stride);
  if (stride == width) {
    FilterFull(kernel, taps, source, stride, (length - 2 * half) * width, destination + half * stride);
  } else {
    for (int p = half; p < length - half; ++p)
      FilterFull(kernel, taps, source + (p - half) * stride, stride, width, destination + p * stride);
  }
  for (int p = length - half; p < length; ++p)
    FilterCut(kernel, half - p + length, source + (p - half) * stride, stride, width, destination + p * stride);
}

}  // namespace

int GaussianKernel(int taps, float sigma, float* kernel) {
  if (taps < 1) taps = 3;
  std::fill(kernel, kernel + taps, 0.0f);
  // Thirds of a pixel, three samples to a tap; with an even count the last
  // sample falls beyond the kernel and is dropped.
  const int reach = taps * 3 / 2;
  for (int i = -reach, j = 0; i <= reach; ++i, ++j) {
    if (j / 3 < taps) kernel[j / 3] += std::exp(-(i * i) / (18.0 * sigma * sigma));
  }
  float sum = 0.0f;
  for (int t = 0; t < taps; ++t) sum += kernel[t];
  for (int t = 0; t < taps; ++t) kernel[t] /= sum;
  return taps;
}

void BlurLine8(const float* kernel, int taps, const std::uint8_t* source, std::uint8_t* destination, int length) {
  BlurPositions(kernel, taps, source, destination, length, 1, 1);
}

void BlurLine24(const float* kernel, int taps, const std::uint8_t* source, std::uint8_t* destination, int length) {
  BlurPositions(kernel, taps, source, destination, length, 3, 3);
}

DibHandle GaussianBlur(DibHandle source, int softness) {
  DibLock input(source);
  if (input.head == nullptr) return nullptr;
  DibHead* head = input.head;
  // Bytes are filtered as they stand: only 8 and 24 bits hold whole samples.
  const int depth = head->biBitCount;
  if (depth != 8 && depth != 24) return nullptr;
  const int width = head->biWidth;
  const int height = head->biHeight;
  std::uint8_t palette[kPaletteBytes];
  DibPaletteOf(head, palette);
  DibOwner blurred(DibNew(width, height, palette, depth));
  if (!blurred) return nullptr;
  DibLock output(blurred.get());
  if (output.head == nullptr) return nullptr;

  const std::ptrdiff_t rowStride = DibStride(depth, width);
  const std::size_t imageBytes = static_cast<std::size_t>(rowStride) * height;
  std::uint8_t* sourceRows = DibRows(head);
  std::uint8_t* blurredRows = DibRows(output.head);
  std::memcpy(blurredRows, sourceRows, imageBytes);

  float kernel[kBlurMaxTaps];
  const int taps = GaussianKernel(std::min({width, height, kBlurMaxTaps}), softness / 10.0f, kernel);
  const int sampleBytes = depth / 8;

  for (int row = 0; row < height; ++row)
    BlurPositions(kernel, taps, sourceRows + row * rowStride, blurredRows + row * rowStride, width, sampleBytes,
                  sampleBytes);
  std::memcpy(sourceRows, blurredRows, imageBytes);
  // Columns run from the top down, and the top row is stored last.
  if (height > 0)
    BlurPositions(kernel, taps, DibRow(head, 0), DibRow(output.head, 0), height, -rowStride, width * sampleBytes);
  return blurred.release();
}
