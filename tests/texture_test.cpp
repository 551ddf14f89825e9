#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <complex>
#include <cstdint>
#include <set>
#include <vector>

#include "fills/fractal_texture.h"
#include "fills/material.h"
#include "fills/texture_types.h"
#include "raster/crt_random.h"
#include "tests/pixels_test_support.h"

namespace {

TextureRecord Defaults(int type, int width, int height) {
  TextureRecord texture{};
  TextureDefaults(&texture);
  texture.TextureType = type;
  texture.rectangle = {0, 0, width, height};
  return texture;
}

std::vector<std::int32_t> Render(TextureRecord texture) {
  DibOwner dib(TextureGenerate(&texture));
  return PixelsOf(dib.get());
}

TEST(TextureMesh, RoundsUpToAPowerOfTwoWithinItsLimits) {
  EXPECT_EQ(TextureMeshSize(100), 128);
  EXPECT_EQ(TextureMeshSize(64), 64);
  EXPECT_EQ(TextureMeshSize(1024), 1024);
  EXPECT_EQ(TextureMeshSize(1), 32);  // below 32 the painter would read past the field
  EXPECT_EQ(TextureMeshSize(-5), 32);
  EXPECT_EQ(TextureMeshSize(1 << 30), kTextureMeshMax);
}

TEST(FourierTransform2D, MatchesAPlainTransformWithTheNegativeExponent) {
  const int n = 8;
  std::vector<float> data(2 * n * n + 2);
  CrtSrand(3);
  for (std::size_t k = 1; k < data.size(); ++k) data[k] = static_cast<float>(CrtRand() % 200 - 100) / 50;
  std::vector<float> input = data;
  FourierTransform2D(data.data(), n);
  for (int k1 = 0; k1 < n; ++k1) {
    for (int k2 = 0; k2 < n; ++k2) {
      std::complex<double> sum;
      for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
          sum += std::complex<double>(input[2 * (n * i + j) + 1], input[2 * (n * i + j) + 2]) *
                 std::polar(1.0, -6.283185307179586 * (k1 * i + k2 * j) / n);
      EXPECT_NEAR(data[2 * (n * k1 + k2) + 1], sum.real(), 1e-3) << k1 << "," << k2;
      EXPECT_NEAR(data[2 * (n * k1 + k2) + 2], sum.imag(), 1e-3) << k1 << "," << k2;
    }
  }
}

// The stream's position after the synthesis is part of the picture of the
// next layer, and the spectrum must be symmetric for the field to be real.
TEST(SpectralSynth, SpendsTheStatedDrawsAndGivesARealField) {
  const int n = 32, half = n / 2;
  GaussInit(777);
  float* field = nullptr;
  ASSERT_EQ(SpectralSynth(&field, 0.85, n), 1);
  int next = CrtRand();
  double largestImaginary = 0, largestReal = 0;
  for (int k = 0; k < n * n; ++k) {
    largestReal = std::fmax(largestReal, std::fabs(field[2 * k + 1]));
    largestImaginary = std::fmax(largestImaginary, std::fabs(field[2 * k + 2]));
  }
  delete[] field;
  EXPECT_GT(largestReal, 0.1);
  EXPECT_LT(largestImaginary, largestReal * 1e-4);
  int draws = (half + 1) * (half + 1) + ((half + 1) * (half + 1) - 1) * 4 + (half - 1) * (half - 1) * 5;
  CrtSrand(777);
  for (int k = 0; k < draws; ++k) CrtRand();
  EXPECT_EQ(next, CrtRand());
}

TEST(FractalTexture, SameRecordSamePictureAndTheSeedMatters) {
  TextureRecord texture = Defaults(0, 48, 48);
  std::vector<std::int32_t> first = Render(texture);
  ASSERT_EQ(first.size(), 48u * 48u);
  EXPECT_EQ(Render(texture), first);
  texture.SeedValue[0] = 123;
  EXPECT_NE(Render(texture), first);
  texture.Power[0] = 1.0f;  // no bending: another picture again
  std::vector<std::int32_t> straight = Render(texture);
  texture.Power[0] = 0.75f;
  EXPECT_NE(Render(texture), straight);
}

// The spectral parameter is 3 - Dimension1: a larger dimension flattens the
// spectrum and roughens the clouds (4.0 is white noise).
TEST(FractalTexture, AHigherDimensionIsRougher) {
  auto roughness = [](float dimension) {
    TextureRecord texture = Defaults(0, 64, 64);
    texture.Dimension[0] = dimension;
    texture.BackColour = 0;
    texture.ForeColour[0] = 0xFFFFFF;
    std::vector<std::int32_t> pixels = Render(texture);
    long sum = 0;
    for (int y = 0; y < 64; ++y)
      for (int x = 1; x < 64; ++x) sum += std::abs((pixels[y * 64 + x] & 0xFF) - (pixels[y * 64 + x - 1] & 0xFF));
    return sum;
  };
  EXPECT_GT(roughness(4.0f), 2 * roughness(2.15f));
}

// The field is as wide as the longer side rounded up to even: 101 and 102
// columns share one field, and the 101-wide picture drops its last column.
TEST(FractalTexture, OddWidthDropsTheFieldsLastColumn) {
  std::vector<std::int32_t> odd = Render(Defaults(1, 101, 101));
  std::vector<std::int32_t> even = Render(Defaults(1, 102, 101));
  ASSERT_EQ(odd.size(), 101u * 101u);
  for (int y = 0; y < 101; ++y)
    for (int x = 0; x < 101; ++x) ASSERT_EQ(odd[y * 101 + x], even[y * 102 + x]) << x << "," << y;
}

TEST(FractalTexture, FourLayersOfOneColourOverlapRatherThanFlatten) {
  TextureRecord texture = Defaults(0, 64, 64);
  for (std::uint32_t& colour : texture.ForeColour) colour = 0x00FF00;
  std::vector<std::int32_t> one = Render(texture);
  texture.TextureType = 3;
  std::vector<std::int32_t> four = Render(texture);
  auto background = [&](const std::vector<std::int32_t>& pixels) {
    return std::count(pixels.begin(), pixels.end(), static_cast<std::int32_t>(texture.BackColour));
  };
  EXPECT_LT(background(four), background(one));
  EXPECT_GT(std::set<std::int32_t>(four.begin(), four.end()).size(), 10u);
}

TEST(CraterTexture, FlatPlainIsHalfTheColourAndTheLastColumnIsBackground) {
  TextureRecord texture = Defaults(4, 20, 10);
  texture.CreaterCount = 0;
  texture.BackColour = 0x0000FF;
  texture.ForeColour[0] = 0xFFFFFF;
  std::vector<std::int32_t> flat = Render(texture);
  // 255 * 127 / 255 + 0 and 0 + 255 * 128 / 255 per channel.
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 19; ++x) ASSERT_EQ(flat[y * 20 + x], 0x8080FF) << x << "," << y;
    EXPECT_EQ(flat[y * 20 + 19], 0x0000FF);
  }
  texture.CreaterCount = 50;
  std::vector<std::int32_t> cratered = Render(texture);
  EXPECT_NE(cratered, flat);
  for (int y = 0; y < 10; ++y) EXPECT_EQ(cratered[y * 20 + 19], 0x0000FF);
  EXPECT_EQ(Render(texture), cratered);
}

// With neither noise nor bubbles the value is 0.5 everywhere, and the tone
// curves, clamped to 0..1 before they are built, decide the one colour.
TEST(PerturbationTexture, FlatPictureThroughClampedCurves) {
  TextureRecord texture = Defaults(5, 16, 8);
  texture.PerturbationPower = 0.0f;
  texture.BubbleCount = 0;
  for (int k = 0; k < 4; ++k) {
    texture.ColorRed[k] = 5.0f;
    texture.ColorGreen[k] = -3.0f;
    texture.ColorBlue[k] = 0.2f;
  }
  for (std::int32_t pixel : Render(texture)) ASSERT_EQ(pixel, 0x3300FF);
}

TEST(PerturbationTexture, BubbleLimitsAndNoBubblesMeansMidGreyUnderTheNoise) {
  TextureRecord texture = Defaults(5, 40, 30);
  texture.PerturbationPower = 0.0f;
  texture.BubblePower = 0.0005f;  // hundreds of bubbles overlap on every cell
  texture.BubbleCount = 1024;
  texture.BubbleSize = 15;  // half of the shorter side
  std::vector<std::int32_t> limit = Render(texture);
  texture.BubbleCount = 5000;
  texture.BubbleSize = 400;
  EXPECT_EQ(Render(texture), limit);
  texture.BubbleCount = 1000;
  EXPECT_NE(Render(texture), limit);

  texture.PerturbationPower = 1.0f;
  texture.BubblePower = 0.25f;
  texture.BubbleCount = 0;
  std::vector<std::int32_t> noBubbles = Render(texture);
  texture.BubbleCount = 64;
  texture.BubblePower = 0.0f;
  EXPECT_EQ(Render(texture), noBubbles);
  EXPECT_GT(std::set<std::int32_t>(noBubbles.begin(), noBubbles.end()).size(), 20u);
}

// The noise tables come from the seed of the first texture that needs them
// in the process, and only the bubbles follow later seeds.
TEST(PerturbationTexture, NoiseTablesKeepTheFirstSeed) {
  TextureRecord first = Defaults(5, 32, 32);
  first.BubbleCount = 0;
  TextureRecord second = first;
  second.SeedValue[0] = 4242;
  TextureNoiseReset();
  std::vector<std::int32_t> fromFirst = Render(first);
  EXPECT_EQ(Render(second), fromFirst);
  TextureNoiseReset();
  EXPECT_NE(Render(second), fromFirst);
  TextureNoiseReset();
}

TEST(MaterialRenderTexture, CutsTheMiddleOfTheSquareAndRefusesUnknownTypes) {
  MemOwner block(MaterialLoad("", 0, 0));
  auto* record = static_cast<MaterialRecord*>(MemLock(block.get()));
  record->kind = kMaterialTexture;
  record->texture.TextureType = 4;
  record->texture.CreaterCount = 200;
  DibOwner wide(MaterialRender(record, 300, 100));
  EXPECT_EQ(record->texture.rectangle.right, 300);
  EXPECT_EQ(record->texture.rectangle.bottom, 300);
  std::vector<std::int32_t> square = Render(record->texture);
  std::vector<std::int32_t> band = PixelsOf(wide.get());
  ASSERT_EQ(band.size(), 300u * 100u);
  EXPECT_TRUE(std::equal(band.begin(), band.end(), square.begin() + 300 * 100));
  record->texture.TextureType = 6;
  EXPECT_EQ(MaterialRender(record, 10, 10), nullptr);
  MemUnlock(block.get());
}

}  // namespace
