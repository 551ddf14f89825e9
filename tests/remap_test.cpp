#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "colour/palette.h"
#include "colour/remap.h"
#include "colour_test_frames.h"

namespace {

using colourtest::Grey;
using colourtest::MakeBitmap;
using colourtest::PixelsOf;
using colourtest::Rgb;
using Palette = std::array<std::uint8_t, 768>;

Palette PaletteOf(std::initializer_list<std::int32_t> colours) {
  Palette palette{};
  int i = 0;
  for (std::int32_t colour : colours) {
    palette[i * 3] = static_cast<std::uint8_t>(colour);
    palette[i * 3 + 1] = static_cast<std::uint8_t>(colour >> 8);
    palette[i * 3 + 2] = static_cast<std::uint8_t>(colour >> 16);
    ++i;
  }
  return palette;
}

Palette FixedRow(int row) {
  Palette palette;
  FixedPaletteBuild(palette.data(), nullptr, row);
  return palette;
}

RemapOptions Fast(int fastRemap) {
  RemapOptions options;
  options.fastRemap = fastRemap;
  return options;
}

// Remaps with the given routine and frees both bitmaps; empty on a null result.
using RemapFunction = DibHandle (*)(DibHandle, const std::uint8_t*, int, int, const RemapOptions&);
std::vector<std::int32_t> Remapped(RemapFunction remap, DibHandle source, const Palette& palette, int depth,
                                   int colours, const RemapOptions& options = RemapOptions{}) {
  DibOwner sourceOwner(source);
  DibOwner result(remap(source, palette.data(), depth, colours, options));
  if (result == nullptr) return {};
  return PixelsOf(result.get());
}

TEST(NearestColour, WeighsGreenMostAndBreaksTiesTowardTheLowestIndex) {
  Palette weighted = PaletteOf({Rgb(10, 0, 0), Rgb(0, 9, 0), Rgb(0, 0, 12)});  // 300, 324, 288
  EXPECT_EQ(NearestColour(0, 0, 0, weighted.data(), 3), 2);
  EXPECT_EQ(NearestColour(0, 0, 0, weighted.data(), 2), 0);  // only the given colours count
  Palette tie = PaletteOf({Rgb(0, 1, 2), Rgb(2, 0, 0)});      // 12 and 12
  EXPECT_EQ(NearestColour(0, 0, 0, tie.data(), 2), 0);
  Palette tieSwapped = PaletteOf({Rgb(2, 0, 0), Rgb(0, 1, 2)});
  EXPECT_EQ(NearestColour(0, 0, 0, tieSwapped.data(), 2), 0);
  Palette exact = PaletteOf({Rgb(1, 1, 1), Rgb(7, 7, 7), Rgb(7, 7, 7)});
  EXPECT_EQ(NearestColour(7, 7, 7, exact.data(), 3), 1);
  EXPECT_EQ(NearestColour(7, 7, 7, exact.data(), 0), 0);
}

TEST(NearestColour, TheBlackTailOfAShortFixedPaletteIsNeverChosen) {
  Palette windows = FixedRow(1);
  EXPECT_EQ(NearestColour(0, 0, 0, windows.data(), 256), 0);
  EXPECT_EQ(NearestColour(3, 2, 4, windows.data(), 256), 0);
  std::vector<std::int32_t> indexes =
      Remapped(RemapPlain, MakeBitmap(3, 1, {Rgb(0, 0, 0), Rgb(9, 9, 9), Rgb(250, 250, 250)}), windows, 4, 256);
  EXPECT_EQ(indexes, (std::vector<std::int32_t>{0, 0, 15}));
}

TEST(RemapPlain, FastRemapTakesExactMatchesThenTheFifteenBitTable) {
  // (5, 5, 5) is nearest to entry 1, but its table cell (0, 0, 0) is entry 0.
  Palette palette = PaletteOf({Rgb(0, 0, 0), Rgb(6, 6, 6)});
  auto frame = [] { return MakeBitmap(2, 1, {Rgb(5, 5, 5), Rgb(6, 6, 6)}); };
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 2, Fast(1)), (std::vector<std::int32_t>{0, 1}));
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 2, Fast(0)), (std::vector<std::int32_t>{1, 1}));
}

TEST(RemapPlain, OneBitSourceUsesTheWhiteAndBlackIndexes) {
  // No exact white: the fast rule takes the table's last cell (248, 248, 248),
  // the slow one the nearest entry to white.
  Palette palette = PaletteOf({Rgb(255, 0, 0), Rgb(248, 248, 248), Rgb(255, 255, 254), Rgb(0, 0, 0)});
  auto frame = [] { return MakeBitmap(2, 1, {1, 0}, 1); };
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 4, Fast(1)), (std::vector<std::int32_t>{1, 3}));
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 4, Fast(0)), (std::vector<std::int32_t>{2, 3}));
  // Into a 1-bit target the bit passes as it is, whatever the palette.
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(3, 1, {1, 0, 1}, 1), palette, 1, 4), (std::vector<std::int32_t>{1, 0, 1}));
}

TEST(RemapPlain, OneBitTargetUsesTheFixedLuminanceLimit) {
  Palette bw = FixedRow(0);
  // Luminance 127 and 129: mid grey 129 still comes out black.
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(2, 1, {Grey(129), Grey(130)}), bw, 1, 256),
            (std::vector<std::int32_t>{0, 1}));
  // An indexed source is judged by its colour table.
  Palette table = PaletteOf({Grey(129), Grey(130)});
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(2, 1, {1, 0}, 8, table.data()), bw, 1, 256),
            (std::vector<std::int32_t>{1, 0}));
}

TEST(RemapPlain, IndexedSourceMapsItsTableOverTheWholeDepth) {
  // Only one colour is given, but the colour map searches all 256 entries.
  Palette palette = PaletteOf({Rgb(0, 0, 0), Rgb(200, 0, 0)});
  Palette table = PaletteOf({Rgb(200, 0, 0)});
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(1, 1, {0}, 8, table.data()), palette, 8, 1),
            (std::vector<std::int32_t>{1}));
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(1, 1, {Rgb(200, 0, 0)}), palette, 8, 1), (std::vector<std::int32_t>{0}));
}

TEST(RemapPlain, FourBitTargetPacksHighNibbleFirst) {
  Palette windows = FixedRow(1);
  DibOwner source(MakeBitmap(3, 1, {Rgb(255, 0, 0), Rgb(0, 0, 255), Rgb(255, 255, 255)}));
  for (RemapFunction remap : {RemapPlain, RemapDithered}) {
    DibOwner result(remap(source.get(), windows.data(), 4, 256, RemapOptions{}));
    DibLock lock(result.get());
    ASSERT_NE(lock.head, nullptr);
    EXPECT_EQ(lock.head->biBitCount, 4);
    EXPECT_EQ(DibRows(lock.head)[0], 0x9C);
    EXPECT_EQ(DibRows(lock.head)[1], 0xF0);
  }
}

TEST(RemapDithered, RefusesAOneBitSource) {
  Palette bw = FixedRow(0);
  for (int depth : {1, 8}) {
    EXPECT_TRUE(Remapped(RemapDithered, MakeBitmap(2, 2, {0, 1, 1, 0}, 1), bw, depth, 2).empty()) << depth;
  }
}

TEST(DitherCurve, RunsFromBrightnessMinusContrastInStepsOf256Over256MinusTwiceContrast) {
  std::uint8_t curve[256];
  DitherCurve(20, 20, curve);
  EXPECT_EQ(curve[0], 1);
  EXPECT_EQ(curve[100], 118);  // 100 * 256 / 216 = 118.5
  EXPECT_EQ(curve[255], 254);
  DitherCurve(0, 0, curve);
  EXPECT_EQ(curve[0], 1);
  EXPECT_EQ(curve[77], 77);
  EXPECT_EQ(curve[255], 254);
  DitherCurve(20, 128, curve);  // an infinite step
  EXPECT_EQ(curve[0], 1);
  for (int i = 1; i < 256; ++i) ASSERT_EQ(curve[i], 254) << i;
}

TEST(RemapDithered, OneBitFlatFrameComparesTheCurveWithItsOwnLuminance) {
  // One luminance: lowest = highest = threshold. White maps to 254, not above
  // 255, so all clear; black maps to 1, above 0, so all set.
  Palette bw = FixedRow(0);
  EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(3, 2, std::vector<std::int32_t>(6, Grey(255))), bw, 1, 2),
            std::vector<std::int32_t>(6, 0));
  EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(3, 2, std::vector<std::int32_t>(6, Grey(0))), bw, 1, 2),
            std::vector<std::int32_t>(6, 1));
}

TEST(RemapDithered, OneBitColumnZeroSpillsIntoTheLastByteOfItsOwnRow) {
  // Identity curve, range 0-255, threshold 127. The bottom row holds
  // luminances 100, 212, 7, 120: column 0 leaves error 100, whose 3/16 share
  // meant for the row above at x - 1 lands on this row's last pixel (width 4
  // has no padding) and lifts 120 to 138, over the threshold.
  RemapOptions identity;
  identity.ditherBrightness = 0;
  identity.ditherContrast = 0;
  std::vector<std::int32_t> pixels = {Grey(0), Grey(255), Grey(0), Grey(255),
                                      Grey(101), Grey(213), Grey(9), Grey(121)};
  std::vector<std::int32_t> bits = Remapped(RemapDithered, MakeBitmap(4, 2, pixels), FixedRow(0), 1, 2, identity);
  ASSERT_EQ(bits.size(), 8u);
  EXPECT_EQ(std::vector<std::int32_t>(bits.begin() + 4, bits.end()), (std::vector<std::int32_t>{0, 1, 0, 1}));
}

TEST(RemapDithered, ColumnsZeroAndOneGiveUpTheLowerLeftShare) {
  // Error 100 at column 1 of the bottom row sends nothing up-left, so the 120
  // above-left stays black; the same error from column 2 adds 18 and makes it white.
  Palette bw = FixedRow(0);
  std::vector<std::int32_t> narrow =
      Remapped(RemapDithered, MakeBitmap(2, 2, {Grey(120), Grey(0), Grey(0), Grey(100)}), bw, 8, 2);
  EXPECT_EQ(narrow, (std::vector<std::int32_t>{0, 0, 0, 0}));
  std::vector<std::int32_t> wide = Remapped(
      RemapDithered, MakeBitmap(3, 2, {Grey(0), Grey(120), Grey(0), Grey(0), Grey(0), Grey(100)}), bw, 8, 2);
  EXPECT_EQ(wide, (std::vector<std::int32_t>{0, 1, 0, 0, 0, 0}));
}

TEST(RemapDithered, ExactColoursStayExactAndGreyBecomesAMixture) {
  Palette orthogonal = FixedRow(6);
  std::vector<std::int32_t> flat =
      Remapped(RemapDithered, MakeBitmap(5, 5, std::vector<std::int32_t>(25, Rgb(36, 72, 255))), orthogonal, 8, 256);
  EXPECT_EQ(flat, std::vector<std::int32_t>(25, 1 * 32 + 2 * 4 + 3));

  std::vector<std::int32_t> grey =
      Remapped(RemapDithered, MakeBitmap(16, 16, std::vector<std::int32_t>(256, Grey(128))), FixedRow(0), 8, 2);
  int white = 0;
  for (std::int32_t index : grey) white += index;
  EXPECT_GT(white, 100);
  EXPECT_LT(white, 156);
}

}  // namespace
