// The blur against a plain reference that follows the algorithm one sample at
// a time (columns read and written through the pixel functions), compared
// byte for byte; plus the properties a soft shadow relies on.
#include <gtest/gtest.h>

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
  for (int t = 0; t < K; t++) kernel[t] = 0.0f;
  int n = K * 3 / 2;
  int j = 0;
  for (int i = -n; i <= n; i++) {
    if (j / 3 < K) kernel[j / 3] += exp(-(i * i) / (18.0 * sigma * sigma));
    j++;
  }
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
    int firstTap = 0;
    int lastTap = K - 1;
    bool cut = false;
    if (p < h) {
      firstTap = h - p;
      cut = true;
    } else if (p >= length - h) {
      lastTap = h - p + length - 1;
      cut = true;
    }
    for (int c = 0; c < channels; c++) {
      float sum = 0.0f;
      float weights = 0.0f;
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
  int width = head->biWidth;
  int height = head->biHeight;
  int depth = head->biBitCount;
  std::uint8_t palette[kPaletteBytes];
  DibPaletteOf(head, palette);
  DibHandle result = DibNew(width, height, palette, depth);
  DibHead* out = static_cast<DibHead*>(MemLock(result));
  std::size_t bytes = static_cast<std::size_t>(DibStride(depth, width)) * height;
  std::memcpy(DibRows(out), DibRows(head), bytes);
  int channels = depth == 8 ? 1 : 3;
  std::vector<std::uint8_t> column(3 * height);
  std::vector<std::uint8_t> blurred(3 * height);
  float kernel[21];
  float sigma = softness / 10.0f;
  int K = width < height ? width : height;
  if (K > 21) K = 21;
  K = ReferenceKernel(K, sigma, kernel);

  for (int y = 0; y < height; y++) ReferenceLine(kernel, K, DibRow(head, y), DibRow(out, y), width, channels);
  std::memcpy(DibRows(head), DibRows(out), bytes);
  for (int x = 0; x < width; x++) {
    for (int y = 0; y < height; y++) {
      std::uint32_t value = static_cast<std::uint32_t>(DibGetPixel(head, x, y));
      if (channels == 1) {
        column[y] = static_cast<std::uint8_t>(value);
      } else {
        column[3 * y] = static_cast<std::uint8_t>(value >> 16);
        column[3 * y + 1] = static_cast<std::uint8_t>(value >> 8);
        column[3 * y + 2] = static_cast<std::uint8_t>(value);
      }
    }
    ReferenceLine(kernel, K, column.data(), blurred.data(), height, channels);
    for (int y = 0; y < height; y++) {
      std::uint32_t value = channels == 1 ? blurred[y]
                                          : blurred[3 * y] << 16 | blurred[3 * y + 1] << 8 | blurred[3 * y + 2];
      DibPutPixel(out, x, y, value);
    }
  }
  MemUnlock(result);
  MemUnlock(source);
  return result;
}

// ---- Helpers -----------------------------------------------------------------------------

std::vector<std::uint8_t> GreyPalette() {
  std::vector<std::uint8_t> palette(kPaletteBytes);
  for (int i = 0; i < 256; i++) palette[3 * i] = palette[3 * i + 1] = palette[3 * i + 2] = static_cast<std::uint8_t>(i);
  return palette;
}

// A bitmap whose every byte (rows and padding alike) is drawn from random.
DibHandle RandomDib(int width, int height, int depth, std::mt19937& random) {
  DibHandle dib = DibNew(width, height, GreyPalette().data(), depth);
  DibLock lock(dib);
  std::uint8_t* rows = DibRows(lock.head);
  std::size_t bytes = static_cast<std::size_t>(DibStride(depth, width)) * height;
  for (std::size_t i = 0; i < bytes; i++) rows[i] = static_cast<std::uint8_t>(random() >> 24);
  return dib;
}

DibHandle UniformDib(int width, int height, int depth, std::uint8_t level) {
  DibHandle dib = DibNew(width, height, GreyPalette().data(), depth);
  DibLock lock(dib);
  std::memset(DibRows(lock.head), level, static_cast<std::size_t>(DibStride(depth, width)) * height);
  return dib;
}

std::vector<std::uint8_t> BlockBytes(DibHandle dib) {
  const std::uint8_t* bytes = static_cast<const std::uint8_t*>(MemLock(dib));
  std::vector<std::uint8_t> copy(bytes, bytes + MemSize(dib));
  MemUnlock(dib);
  return copy;
}

DibHandle CloneOf(DibHandle dib) {
  std::vector<std::uint8_t> bytes = BlockBytes(dib);
  DibHandle copy = MemAlloc(kMemMoveableZeroed, bytes.size());
  std::memcpy(MemLock(copy), bytes.data(), bytes.size());
  MemUnlock(copy);
  return copy;
}

// Blurs a copy of source both ways and compares the results and the changed sources.
void ExpectSameAsReference(DibHandle source, int softness) {
  DibOwner referenceSource(CloneOf(source));
  DibOwner fastSource(CloneOf(source));
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
      float expected[kBlurMaxTaps];
      float actual[kBlurMaxTaps];
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
      std::vector<std::uint8_t> expected(3 * length, 0xA5);
      std::vector<std::uint8_t> actual(3 * length, 0xA5);
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
  const int softnesses[] = {3, 4, 7, 12, 22, 42, 102};
  for (int depth : {8, 24}) {
    for (int width : sizes) {
      for (int height : sizes) {
        for (int softness : softnesses) {
          DibOwner source(RandomDib(width, height, depth, random));
          SCOPED_TRACE(testing::Message() << width << "x" << height << " at " << depth << " bits, softness " << softness);
          ExpectSameAsReference(source.get(), softness);
        }
      }
    }
  }
}

TEST(GaussianBlur, EqualsReferenceOnFrameSizedMasks) {
  std::mt19937 random(11);
  for (int depth : {8, 24}) {
    for (int softness : {3, 10, 42}) {
      DibOwner source(RandomDib(600, 100, depth, random));
      ExpectSameAsReference(source.get(), softness);
    }
  }
}

// ---- Properties --------------------------------------------------------------------------

TEST(GaussianBlur, HeightOneLeavesTheMaskAsItWas) {
  std::mt19937 random(3);
  for (int depth : {8, 24}) {
    DibOwner source(RandomDib(40, 1, depth, random));
    std::vector<std::uint8_t> before = BlockBytes(source.get());
    DibOwner blurred(GaussianBlur(source.get(), 30));
    ASSERT_TRUE(blurred);
    EXPECT_EQ(BlockBytes(blurred.get()), before);
  }
}

TEST(GaussianBlur, UniformMaskStaysUniformUpToTheEdges) {
  for (int depth : {8, 24}) {
    for (int level : {1, 77, 128, 254, 255}) {
      for (int size : {3, 10, 21, 45}) {
        for (int softness : {3, 12, 42, 202}) {
          DibOwner source(UniformDib(size + 5, size, depth, static_cast<std::uint8_t>(level)));
          DibOwner blurred(GaussianBlur(source.get(), softness));
          ASSERT_TRUE(blurred);
          DibLock lock(blurred.get());
          const std::uint8_t* rows = DibRows(lock.head);
          std::size_t bytes = static_cast<std::size_t>(DibStride(depth, size + 5)) * size;
          for (std::size_t i = 0; i < bytes; i++)
            ASSERT_EQ(rows[i], level) << "byte " << i << ", size " << size << ", softness " << softness;
        }
      }
    }
  }
}

TEST(GaussianKernel, EvenLengthHasOneMoreTapBeforeTheCentre) {
  float kernel[kBlurMaxTaps];
  ASSERT_EQ(GaussianKernel(10, 1.0f, kernel), 10);
  // The centre tap (5) holds the samples at 0, 1/3 and 2/3 of a pixel.
  EXPECT_GT(kernel[5], kernel[4]);
  EXPECT_GT(kernel[4], kernel[6]);
  // An impulse reaches five samples back (taps 0-4 look ahead of it) and four on.
  std::vector<std::uint8_t> line(30, 0);
  std::vector<std::uint8_t> out(30, 0);
  line[15] = 255;
  BlurLine8(kernel, 10, line.data(), out.data(), 30);
  EXPECT_EQ(out[15], static_cast<std::uint8_t>(kernel[5] * 255 + 0.5));
  EXPECT_EQ(out[11], static_cast<std::uint8_t>(kernel[9] * 255 + 0.5));
  EXPECT_EQ(out[20], static_cast<std::uint8_t>(kernel[0] * 255 + 0.5));
  EXPECT_EQ(out[10], 0);
  EXPECT_EQ(out[21], 0);
}

TEST(GaussianKernel, LengthBelowOneBecomesThree) {
  float kernel[kBlurMaxTaps];
  EXPECT_EQ(GaussianKernel(0, 1.0f, kernel), 3);
  EXPECT_NEAR(kernel[0] + kernel[1] + kernel[2], 1.0f, 1e-6f);
  EXPECT_FLOAT_EQ(kernel[0], kernel[2]);
}

// A vertical line blurred sideways: the reach stops at ten pixels each way
// however soft the shadow; a larger softness only flattens it.
TEST(GaussianBlur, ReachIsCappedAtTwentyOneTaps) {
  for (int softness : {42, 202}) {
    DibOwner source(UniformDib(61, 30, 8, 0));
    {
      DibLock lock(source.get());
      for (int y = 0; y < 30; y++) DibPutPixel(lock.head, 30, y, 255);
    }
    DibOwner blurred(GaussianBlur(source.get(), softness));
    ASSERT_TRUE(blurred);
    DibLock lock(blurred.get());
    for (int x = 0; x < 61; x++) {
      int value = DibGetPixel(lock.head, x, 15);
      if (x < 20 || x > 40) {
        EXPECT_EQ(value, 0) << "x " << x << " softness " << softness;
      } else {
        EXPECT_GT(value, 0) << "x " << x << " softness " << softness;
      }
    }
    if (softness == 202) {
      EXPECT_GE(DibGetPixel(lock.head, 20, 15) + 2, DibGetPixel(lock.head, 30, 15));
    }
  }
}

TEST(GaussianBlur, KeepsSizeDepthAndPalette) {
  std::mt19937 random(5);
  DibOwner source(RandomDib(30, 25, 8, random));
  DibOwner blurred(GaussianBlur(source.get(), 12));
  ASSERT_TRUE(blurred);
  std::vector<std::uint8_t> before = BlockBytes(source.get());
  std::vector<std::uint8_t> after = BlockBytes(blurred.get());
  ASSERT_EQ(after.size(), before.size());
  EXPECT_TRUE(std::equal(after.begin(), after.begin() + kDibHeadSize + 1024, before.begin()));
}

}  // namespace
