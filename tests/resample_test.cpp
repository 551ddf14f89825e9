// The resampler against a plain reference that follows the algorithm one
// pixel at a time through the pixel functions, compared byte for byte; plus
// the properties the effects rely on.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "raster/dib.h"
#include "raster/resample.h"

namespace {

// ---- Reference, written for clarity, not speed -------------------------------------------

int Channel(std::int32_t pixel, int c) { return (pixel >> (8 * c)) & 255; }

std::uint32_t Round(double value) {
  if (value < 0) return 0;
  if (value > 255) return 255;
  return static_cast<std::uint32_t>(value + 0.5);
}

// One pass; across = true changes the width.
void ReferencePass(const DibHead* source, DibHead* target, double factor, const ResampleFilter& filter, bool across) {
  int channels = source->biBitCount / 8;
  int sourceLength = across ? source->biWidth : source->biHeight;
  int targetLength = across ? target->biWidth : target->biHeight;
  int lines = across ? target->biHeight : target->biWidth;
  double scale = std::max(1.0 / factor, 1.0);
  double support = scale * filter.support;
  if (support <= 0.5) {
    support = 0.500001;
    scale = 1.0;
  }
  for (int o = 0; o < targetLength; o++) {
    double centre = (o + 0.5) / factor;
    int start = (int)std::max(centre - support + 0.5, 0.0);
    int stop = (int)std::min(centre + support + 0.5, (double)sourceLength);
    std::vector<double> weights;
    double sum = 0;
    for (int j = start; j < stop; j++) {
      weights.push_back(filter.weight((j - centre + 0.5) * (1.0 / scale), filter.support));
      sum += weights.back();
    }
    if (sum != 0 && sum != 1)
      for (double& w : weights) w *= 1.0 / sum;
    for (int line = 0; line < lines; line++) {
      double acc[4] = {0, 0, 0, 0};
      for (int k = 0; k < (int)weights.size(); k++) {
        std::int32_t pixel = across ? DibGetPixel(source, start + k, line) : DibGetPixel(source, line, start + k);
        for (int c = 0; c < channels; c++) acc[c] += weights[k] * Channel(pixel, c);
      }
      std::uint32_t value = 0;
      for (int c = 0; c < channels; c++) value |= Round(acc[c]) << (8 * c);
      if (across)
        DibPutPixel(target, o, line, value);
      else
        DibPutPixel(target, line, o, value);
    }
  }
}

DibHandle ReferenceResample(DibHandle sourceDib, int width, int height) {
  DibLock source(sourceDib);
  int w0 = source.head->biWidth, h0 = source.head->biHeight;
  double xFactor = std::max((double)width / w0, 0.0001);
  double yFactor = std::max((double)height / h0, 0.0001);
  const ResampleFilter& filter = ResampleFilters[xFactor * yFactor > 1.0 ? 12 : 13];
  DibHandle target = DibNewLike(source.head, width, height);
  DibLock out(target);
  if ((unsigned)(h0 + height) * (unsigned)width <= (unsigned)(w0 + width) * (unsigned)height) {
    DibOwner middle(DibNewLike(source.head, w0, height));
    DibLock between(middle.get());
    ReferencePass(source.head, between.head, yFactor, filter, false);
    ReferencePass(between.head, out.head, xFactor, filter, true);
  } else {
    DibOwner middle(DibNewLike(source.head, width, h0));
    DibLock between(middle.get());
    ReferencePass(source.head, between.head, xFactor, filter, true);
    ReferencePass(between.head, out.head, yFactor, filter, false);
  }
  return target;
}

// ---- Helpers ------------------------------------------------------------------------------

// Noise everywhere, or (sparse) only in a slanted band and a few dots, with
// blank rows and blank stretches of rows as a stamp or a mask has them.
DibHandle RandomPicture(int width, int height, int depth, std::mt19937* random, bool sparse = false) {
  DibHandle dib = DibNew(width, height, nullptr, depth);
  DibLock lock(dib);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const bool inked = !sparse || std::abs(x - y * width / height) < 3 || (*random)() % 61 == 0;
      if (inked) DibPutPixel(lock.head, x, y, (*random)());
    }
  return dib;
}

bool SameBytes(DibHandle a, DibHandle b) {
  return MemSize(a) == MemSize(b) && std::memcmp(DibLock(a).head, DibLock(b).head, MemSize(a)) == 0;
}

TEST(Resample, MatchesThePlainReferenceByteForByte) {
  std::mt19937 random(7);
  struct Case {
    int width, height, newWidth, newHeight;
  };
  const Case cases[] = {{40, 30, 97, 61}, {97, 61, 40, 30}, {50, 20, 200, 5},  {13, 80, 6, 300},
                        {64, 64, 16, 16}, {1, 9, 35, 9},    {33, 17, 34, 16}, {400, 100, 25, 6}};
  for (bool sparse : {false, true}) {
    for (int depth : {8, 24, 32}) {
      for (const Case& c : cases) {
        DibOwner source(RandomPicture(c.width, c.height, depth, &random, sparse));
        DibOwner fast(DibResample(source.get(), c.newWidth, c.newHeight, 1.0));
        DibOwner plain(ReferenceResample(source.get(), c.newWidth, c.newHeight));
        ASSERT_NE(fast, nullptr);
        EXPECT_TRUE(SameBytes(fast.get(), plain.get())) << depth << " bits " << c.width << "x" << c.height << " -> "
                                                        << c.newWidth << "x" << c.newHeight << " sparse " << sparse;
      }
    }
  }
}

TEST(Resample, SizesRoundHalfUpAndHundredPercentIsAClone) {
  std::mt19937 random(3);
  DibOwner source(RandomPicture(15, 7, 24, &random));
  DibOwner same(DibResize(source.get(), 100, 100));
  EXPECT_TRUE(SameBytes(same.get(), source.get()));
  int width = 0, height = 0;
  DibOwner half(DibResize(source.get(), 50, 150));  // 7.5 + 0.5 and 10.5 + 0.5, truncated
  DibSizeOf(half.get(), &width, &height);
  EXPECT_EQ(width, 8);
  EXPECT_EQ(height, 11);
  DibOwner none(DibResize(source.get(), 0, 100));
  ASSERT_NE(none, nullptr);
  DibSizeOf(none.get(), &width, &height);
  EXPECT_EQ(width, 0);
}

TEST(Resample, WeightsAreNormalisedAndOvershootIsClamped) {
  // One column, enlarged across: every output pixel keeps the colour.
  DibOwner column(DibNew(1, 3, nullptr, 24));
  for (int y = 0; y < 3; ++y) DibPutPixel(DibLock(column.get()).head, 0, y, 0x336699);
  DibOwner wide(DibResize(column.get(), 900, 100));
  DibLock wideLock(wide.get());
  for (int x = 0; x < 9; ++x) EXPECT_EQ(DibGetPixel(wideLock.head, x, 1), 0x336699);

  // A hard black/white edge enlarged: Mitchell's negative lobes ring past
  // both ends, and the result stays within 0 and 255.
  DibOwner edge(DibNew(4, 1, nullptr, 8));
  for (int x = 2; x < 4; ++x) DibPutPixel(DibLock(edge.get()).head, x, 0, 255);
  DibOwner big(DibResize(edge.get(), 1000, 100));
  DibLock bigLock(big.get());
  EXPECT_EQ(DibGetPixel(bigLock.head, 0, 0), 0);
  for (int x = 1; x < 40; ++x) EXPECT_GE(DibGetPixel(bigLock.head, x, 0), DibGetPixel(bigLock.head, x - 1, 0)) << x;
}

}  // namespace
