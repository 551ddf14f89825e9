// Lines moved at four times the size: against a plain reference that
// enlarges, moves pixel by pixel through the pixel functions and shrinks;
// and the tables of Mirage and Anaconda that drive them.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "effects/shimmer.h"
#include "effects/wave.h"
#include "raster/dib.h"
#include "raster/line_shift.h"
#include "raster/resample.h"
#include "tests/text_test_support.h"

namespace {

// The pixels of a new bitmap, which is freed.
std::vector<std::int32_t> PixelsOf(DibHandle dib) { return TakePixels(dib).values; }

DibHandle Reference(DibHandle bitmap, const std::vector<std::int32_t>& shifts, LineAxis axis) {
  DibOwner large(DibResize(bitmap, 400, 400));
  DibLock in(large.get());
  DibOwner moved(DibNewLike(in.head, in.head->biWidth, in.head->biHeight));
  DibLock out(moved.get());
  for (int y = 0; y < in.head->biHeight; ++y)
    for (int x = 0; x < in.head->biWidth; ++x) {
      auto pixel = static_cast<std::uint32_t>(DibGetPixel(in.head, x, y));
      if (axis == LineAxis::kRows)
        DibPutPixel(out.head, x + shifts[y], y, pixel);
      else
        DibPutPixel(out.head, x, y + shifts[x], pixel);
    }
  return DibResize(moved.get(), 25, 25);
}

// A picture of random bytes inside the box from (left, top) to (right,
// bottom), blank around it, as a text mask is.
DibHandle NoisePicture(int width, int height, int depth, unsigned seed, DibRect box) {
  DibHandle dib = DibNew(width, height, nullptr, depth);
  DibLock lock(dib);
  std::mt19937 random(seed);
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x) DibPutPixel(lock.head, x, y, random() & 0xFFFFFF);
  return dib;
}

DibHandle NoisePicture(int width, int height, int depth, unsigned seed) {
  return NoisePicture(width, height, depth, seed, DibRect{3, 2, width - 3, height - 2});
}

// Pictures filled to near their edges, a small patch far from them, and a
// blank one; shifts that leave lines in place, move them out partly and
// move them out whole.
TEST(LineShift, MatchesThePlainReferenceIncludingShiftsPastTheEdge) {
  std::mt19937 random(7);
  const DibRect patches[] = {{3, 2, 38, 25}, {17, 11, 24, 14}, {0, 0, 0, 0}};
  for (int depth : {8, 24}) {
    for (const DibRect& patch : patches) {
      for (LineAxis axis : {LineAxis::kRows, LineAxis::kColumns}) {
        DibOwner picture(NoisePicture(41, 27, depth, depth, patch));
        int lines = axis == LineAxis::kRows ? 4 * 27 : 4 * 41;
        std::vector<std::int32_t> shifts(lines);
        for (auto& shift : shifts) shift = static_cast<std::int32_t>(random() % 161) - 80;
        for (int i = 0; i < lines; i += 7) shifts[i] = i % 2 == 0 ? 4 * 41 : -4 * 41;
        EXPECT_EQ(PixelsOf(DibShiftLinesFine(picture.get(), shifts.data(), axis)),
                  PixelsOf(Reference(picture.get(), shifts, axis)))
            << depth << " " << patch.left << " " << static_cast<int>(axis);
      }
    }
  }
}

// Four pixels of the enlargement are one of the picture: a whole-pixel shift
// moves the unshifted result right (rows) or down (columns), and what leaves
// the picture is cut, not wrapped.
TEST(LineShift, FourFineStepsMoveOnePixelRightOrDownAndCutAtTheEdge) {
  DibOwner picture(NoisePicture(20, 20, 8, 3));
  std::vector<std::int32_t> still(4 * 20, 0);
  std::vector<std::int32_t> step(4 * 20, 4);
  auto base = PixelsOf(DibShiftLinesFine(picture.get(), still.data(), LineAxis::kRows));
  auto right = PixelsOf(DibShiftLinesFine(picture.get(), step.data(), LineAxis::kRows));
  auto down = PixelsOf(DibShiftLinesFine(picture.get(), step.data(), LineAxis::kColumns));
  std::vector<std::int32_t> out(4 * 20, 4 * 20);
  for (LineAxis axis : {LineAxis::kRows, LineAxis::kColumns})
    EXPECT_EQ(PixelsOf(DibShiftLinesFine(picture.get(), out.data(), axis)), std::vector<std::int32_t>(400, 0));
  for (int y = 6; y < 14; ++y)
    for (int x = 6; x < 14; ++x) {
      EXPECT_EQ(right[y * 20 + x + 1], base[y * 20 + x]) << x << "," << y;
      EXPECT_EQ(down[(y + 1) * 20 + x], base[y * 20 + x]) << x << "," << y;
    }
}

TEST(MirageTable, ThreeHarmonicsFallingByPoint777AndHalf) {
  auto flat = MakeMirageTable(16, 0.3f, 0.0f);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(flat[i], 0.0f);
  // At a quarter of the table: sin 90 + 0.777 sin 180 + 0.3885 sin 270.
  auto table = MakeMirageTable(4, 0.0f, 1.0f);
  EXPECT_EQ(table[0], 0.0f);
  EXPECT_NEAR(table[1], 1.0 - 0.3885, 1e-6);
  EXPECT_NEAR(table[2], 0.0, 1e-6);
  // The fraction moves each harmonic's phase by fraction * 360 * its amplitude.
  auto moved = MakeMirageTable(4, 0.25f, 0.5f);
  const double degree = 3.141592653589793 / 180;
  double expect = 0.5 * std::sin(45.0 * degree) + 0.3885 * std::sin(0.25 * 360 * 0.3885 * degree) +
                  0.19425 * std::sin(0.25 * 360 * 0.19425 * degree);
  EXPECT_NEAR(moved[0], expect, 1e-6);
}

TEST(WaveTable, OnePeriodBelowZeroRotatedByTheFraction) {
  auto table = MakeWaveTable(4, 0.0f);
  EXPECT_NEAR(table[0], -0.78, 1e-6);
  EXPECT_NEAR(table[1], 0.22, 1e-6);
  EXPECT_NEAR(table[3], -1.78, 1e-6);
  auto turned = MakeWaveTable(4, 0.25f);
  EXPECT_NEAR(turned[1], -0.78, 1e-6);
  EXPECT_NEAR(turned[0], -1.78, 1e-6);
}

// At strength 0 both transforms are the enlargement and shrinking alone.
TEST(WarpTransforms, ZeroTablesOnlyResampleAndOffsetsFollowTheTables) {
  DibOwner picture(NoisePicture(16, 10, 24, 9));
  DibOwner there(DibResize(picture.get(), 400, 400));
  auto resampled = PixelsOf(DibResize(there.get(), 25, 25));
  std::vector<float> zeros(64, 0.0f);
  EXPECT_EQ(PixelsOf(Shimmer(picture.get(), zeros.data(), 60, 40)), resampled);
  EXPECT_EQ(PixelsOf(Wave(picture.get(), zeros.data(), 60, 64)), resampled);

  // A table of -1 moves Wave's columns A fine pixels down; Shimmer's rows go
  // right by A times the entry.
  std::vector<float> minusOne(64, -1.0f);
  std::vector<std::int32_t> down(64, 8);
  EXPECT_EQ(PixelsOf(Wave(picture.get(), minusOne.data(), 8, 64)),
            PixelsOf(DibShiftLinesFine(picture.get(), down.data(), LineAxis::kColumns)));
  std::vector<float> half(40, 0.5f);
  std::vector<std::int32_t> right(40, 3);  // 7 * 0.5 truncated
  EXPECT_EQ(PixelsOf(Shimmer(picture.get(), half.data(), 7, 40)),
            PixelsOf(DibShiftLinesFine(picture.get(), right.data(), LineAxis::kRows)));
}

}  // namespace
