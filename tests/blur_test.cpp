// The blur against a plain reference that follows the algorithm one sample at
// a time (columns read and written through the pixel functions), compared
// byte for byte; plus the properties a soft shadow relies on.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "raster/blur.h"
#include "raster/dib.h"

namespace {

// ---- Reference, written for clarity, not speed -------------------------------------------

int ReferenceKernel(int K, float sigma, float* kernel) {
  if (K < 1) K = 3;
  std::fill(kernel, kernel + K, 0.0f);
  int n = K * 3 / 2;
  for (int i = -n, j = 0; i <= n; i++, j++)
    if (j / 3 < K) kernel[j / 3] += exp(-(i * i) / (18.0 * sigma * sigma));
  float sum = 0.0f;
  for (int t = 0; t < K; t++) sum += kernel[t];
  for (int t = 0; t < K; t++) kernel[t] = kernel[t] / sum;
  return K;
}

// Samples of `channels` bytes each; every byte filtered by itself.
void ReferenceLine(const float* kernel, int K, const std::uint8_t* source, std::uint8_t* destination, int length,
                   int channels) {
  if (K > length) return;
  int h = K / 2;
  for (int p = 0; p < length; p++) {
    // Near the ends the taps that fall off are dropped and the rest renormalised.
    bool cut = p < h || p >= length - h;
    int firstTap = p < h ? h - p : 0;
    int lastTap = p >= length - h ? h - p + length - 1 : K - 1;
    for (int c = 0; c < channels; c++) {
      float sum = 0.0f, weights = 0.0f;
      for (int t = firstTap; t <= lastTap; t++) {
        sum += kernel[t] * source[(p - h + t) * channels + c];
        weights += kernel[t];
      }
      double result = cut ? (sum + 0.5) / weights : sum + 0.5;
      destination[p * channels + c] = static_cast<std::uint8_t>(static_cast<int>(result));
    }
  }
}

DibHandle ReferenceBlur(DibHandle source, int softness) {
  DibHead* head = static_cast<DibHead*>(MemLock(source));
  int width = head->biWidth, height = head->biHeight;
  DibHandle result = DibClone(source);
  DibHead* out = static_cast<DibHead*>(MemLock(result));
  int channels = head->biBitCount == 8 ? 1 : 3;
  std::vector<std::uint8_t> column(3 * height), blurred(3 * height);
  float kernel[21];
  int K = width < height ? width : height;
  if (K > 21) K = 21;
  K = ReferenceKernel(K, softness / 10.0f, kernel);

  for (int y = 0; y < height; y++) ReferenceLine(kernel, K, DibRow(head, y), DibRow(out, y), width, channels);
  std::memcpy(DibRows(head), DibRows(out), static_cast<std::size_t>(head->biSizeImage));
  for (int x = 0; x < width; x++) {
    // A pixel's value holds its bytes in stored order, first byte highest.
    for (int y = 0; y < height; y++)
      for (int c = 0; c < channels; c++)
        column[y * channels + c] = static_cast<std::uint8_t>(DibGetPixel(head, x, y) >> 8 * (channels - 1 - c));
    ReferenceLine(kernel, K, column.data(), blurred.data(), height, channels);
    for (int y = 0; y < height; y++) {
      std::uint32_t value = 0;
      for (int c = 0; c < channels; c++) value = value << 8 | blurred[y * channels + c];
      DibPutPixel(out, x, y, value);
    }
  }
  MemUnlock(result);
  MemUnlock(source);
  return result;
}

// ---- Helpers -----------------------------------------------------------------------------

// A bitmap with a grey palette whose every byte (rows and padding alike) is next().
template <typename Next>
DibHandle FilledDib(int width, int height, int depth, Next next) {
  std::uint8_t palette[kPaletteBytes];
  for (int i = 0; i < kPaletteBytes; i++) palette[i] = static_cast<std::uint8_t>(i / 3);
  DibHandle dib = DibNew(width, height, palette, depth);
  DibLock lock(dib);
  std::generate_n(DibRows(lock.head), lock.head->biSizeImage, next);
  return dib;
}

DibHandle RandomDib(int width, int height, int depth, std::mt19937& random) {
  return FilledDib(width, height, depth, [&] { return static_cast<std::uint8_t>(random() >> 24); });
}

std::vector<std::uint8_t> BlockBytes(DibHandle dib) {
  const std::uint8_t* bytes = static_cast<const std::uint8_t*>(MemLock(dib));
  std::vector<std::uint8_t> copy(bytes, bytes + MemSize(dib));
  MemUnlock(dib);
  return copy;
}

// Blurs a copy of source both ways and compares the results and the changed sources.
void ExpectSameAsReference(DibHandle source, int softness) {
  DibOwner referenceSource(DibClone(source));
  DibOwner fastSource(DibClone(source));
  DibOwner expected(ReferenceBlur(referenceSource.get(), softness));
  DibOwner actual(GaussianBlur(fastSource.get(), softness));
  ASSERT_TRUE(actual);
  ASSERT_EQ(BlockBytes(actual.get()), BlockBytes(expected.get()));
  ASSERT_EQ(BlockBytes(fastSource.get()), BlockBytes(referenceSource.get()));
}

// ---- Equality with the reference ---------------------------------------------------------

TEST(GaussianKernel, EqualsReferenceForEveryLengthAndManySigmas) {
  for (int K = -1; K <= kBlurMaxTaps; K++) {
    for (int softness = 3; softness <= 120; softness += 3) {
      float expected[kBlurMaxTaps], actual[kBlurMaxTaps];
      ASSERT_EQ(GaussianKernel(K, softness / 10.0f, actual), ReferenceKernel(K, softness / 10.0f, expected));
      int taps = K < 1 ? 3 : K;
      EXPECT_EQ(0, std::memcmp(actual, expected, taps * sizeof(float))) << "K " << K << " softness " << softness;
    }
  }
}

TEST(BlurLine, EqualsReferenceOnRandomLines) {
  std::mt19937 random(20240611);
  for (int length = 1; length <= 70; length++) {
    for (int K = 1; K <= kBlurMaxTaps; K++) {
      float kernel[kBlurMaxTaps];
      GaussianKernel(K, (3 + random() % 60) / 10.0f, kernel);
      std::vector<std::uint8_t> source(3 * length);
      for (std::uint8_t& byte : source) byte = static_cast<std::uint8_t>(random() >> 24);
      // Prefilled so that a line too short for the kernel must stay untouched.
      std::vector<std::uint8_t> expected(3 * length, 0xA5), actual(3 * length, 0xA5);
      ReferenceLine(kernel, K, source.data(), expected.data(), length, 1);
      BlurLine8(kernel, K, source.data(), actual.data(), length);
      ASSERT_EQ(actual, expected) << "8-bit, length " << length << " K " << K;
      ReferenceLine(kernel, K, source.data(), expected.data(), length, 3);
      BlurLine24(kernel, K, source.data(), actual.data(), length);
      ASSERT_EQ(actual, expected) << "24-bit, length " << length << " K " << K;
    }
  }
}

TEST(GaussianBlur, EqualsReferenceOnRandomBitmaps) {
  std::mt19937 random(7);
  const int sizes[] = {1, 2, 3, 4, 7, 10, 11, 16, 20, 21, 22, 33, 47};
  for (int depth : {8, 24}) {
    for (int width : sizes)
      for (int height : sizes)
        for (int softness : {3, 4, 7, 12, 22, 42, 102}) {
          SCOPED_TRACE(testing::Message() << width << "x" << height << ", " << depth << " bits, softness " << softness);
          ExpectSameAsReference(DibOwner(RandomDib(width, height, depth, random)).get(), softness);
        }
    for (int softness : {3, 10, 42})  // frame-sized masks
      ExpectSameAsReference(DibOwner(RandomDib(600, 100, depth, random)).get(), softness);
  }
}

// Masks that are mostly empty: blocks with no ink, and blocks that reach a
// lone inked sample only with their farthest tap.
TEST(GaussianBlur, EqualsReferenceOnSparseMasks) {
  std::mt19937 random(11);
  auto sparse = [&] { return static_cast<std::uint8_t>(random() % 500 == 0 ? 1 + random() % 255 : 0); };
  for (int depth : {8, 24})
    for (int softness : {3, 12, 102}) {
      SCOPED_TRACE(testing::Message() << depth << " bits, softness " << softness);
      ExpectSameAsReference(DibOwner(FilledDib(600, 100, depth, sparse)).get(), softness);
      ExpectSameAsReference(DibOwner(FilledDib(47, 33, depth, sparse)).get(), softness);
    }
}

// ---- Properties --------------------------------------------------------------------------

TEST(GaussianBlur, HeightOneLeavesTheMaskAsItWas) {
  std::mt19937 random(3);
  for (int depth : {8, 24}) {
    DibOwner source(RandomDib(40, 1, depth, random));
    EXPECT_EQ(BlockBytes(DibOwner(GaussianBlur(source.get(), 30)).get()), BlockBytes(source.get()));
  }
}

TEST(GaussianBlur, UniformMaskStaysUniformUpToTheEdges) {
  for (int depth : {8, 24})
    for (int level : {1, 77, 128, 254, 255})
      for (int size : {3, 10, 21, 45})
        for (int softness : {3, 12, 42, 202}) {
          DibOwner source(FilledDib(size + 5, size, depth, [&] { return static_cast<std::uint8_t>(level); }));
          DibOwner blurred(GaussianBlur(source.get(), softness));
          DibLock lock(blurred.get());
          const std::uint8_t* rows = DibRows(lock.head);
          auto atLevel = [&](std::uint8_t byte) { return byte == level; };
          ASSERT_TRUE(std::all_of(rows, rows + lock.head->biSizeImage, atLevel))
              << "size " << size << ", softness " << softness;
        }
}

TEST(GaussianKernel, EvenLengthHasOneMoreTapBeforeTheCentre) {
  float kernel[kBlurMaxTaps];
  ASSERT_EQ(GaussianKernel(10, 1.0f, kernel), 10);
  // The centre tap (5) holds the samples at 0, 1/3 and 2/3 of a pixel.
  EXPECT_GT(kernel[5], kernel[4]);
  EXPECT_GT(kernel[4], kernel[6]);
  // An impulse reaches five samples back (taps 0-4 look ahead of it) and four on.
  std::vector<std::uint8_t> line(30, 0), out(30, 0);
  line[15] = 255;
  BlurLine8(kernel, 10, line.data(), out.data(), 30);
  for (auto [at, tap] : {std::pair{15, 5}, {11, 9}, {20, 0}})
    EXPECT_EQ(out[at], static_cast<std::uint8_t>(kernel[tap] * 255 + 0.5)) << at;
  EXPECT_EQ(out[10] | out[21], 0);
}

// A vertical line blurred sideways: the reach stops at ten pixels each way
// however soft the shadow; a larger softness only flattens it.
TEST(GaussianBlur, ReachIsCappedAtTwentyOneTaps) {
  for (int softness : {42, 202}) {
    int at = 0;  // rows of 64 bytes, column 30 lit
    DibOwner source(FilledDib(61, 30, 8, [&] { return std::uint8_t(at++ % 64 == 30 ? 255 : 0); }));
    DibOwner blurred(GaussianBlur(source.get(), softness));
    DibLock lock(blurred.get());
    for (int x = 0; x < 61; x++)
      EXPECT_EQ(DibGetPixel(lock.head, x, 15) > 0, x >= 20 && x <= 40) << "x " << x << " softness " << softness;
    // The softest only flattens the reach: its edge is nearly as high as the centre.
    EXPECT_TRUE(softness != 202 || DibGetPixel(lock.head, 20, 15) + 2 >= DibGetPixel(lock.head, 30, 15));
  }
}

}  // namespace
