#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "colour/colour_search.h"
#include "colour/palette.h"
#include "colour/remap.h"
#include "colour_test_frames.h"

namespace {

using colourtest::Grey;
using colourtest::MakeBitmap;
using colourtest::PixelsOf;
using colourtest::Rgb;
using Palette = std::array<std::uint8_t, 768>;
using Pixels = std::vector<std::int32_t>;

Palette PaletteOf(std::initializer_list<std::int32_t> colours) {
  Palette palette{};
  int i = 0;
  for (std::int32_t c : colours) for (int shift : {0, 8, 16}) palette[i++] = static_cast<std::uint8_t>(c >> shift);
  return palette;
}

Palette FixedRow(int row) {
  Palette palette;
  FixedPaletteBuild(palette.data(), nullptr, row);
  return palette;
}

// Remaps with the given routine and frees both bitmaps; empty on a null result.
using RemapFunction = DibHandle (*)(DibHandle, const std::uint8_t*, int, int, const RemapOptions&);
Pixels Remapped(RemapFunction remap, DibHandle source, const Palette& palette, int depth, int colours,
                const RemapOptions& options = RemapOptions{}) {
  DibOwner sourceOwner(source);
  DibOwner result(remap(source, palette.data(), depth, colours, options));
  return result == nullptr ? Pixels{} : PixelsOf(result.get());
}

TEST(NearestColour, WeighsGreenMostBreaksTiesLowAndNeverPicksTheBlackTailOfAShortPalette) {
  Palette weighted = PaletteOf({Rgb(10, 0, 0), Rgb(0, 9, 0), Rgb(0, 0, 12)});  // 300, 324, 288
  EXPECT_EQ(NearestColour(0, 0, 0, weighted.data(), 3), 2);
  EXPECT_EQ(NearestColour(0, 0, 0, weighted.data(), 2), 0);  // only the given colours count
  for (Palette tie : {PaletteOf({Rgb(0, 1, 2), Rgb(2, 0, 0)}), PaletteOf({Rgb(2, 0, 0), Rgb(0, 1, 2)})}) {
    EXPECT_EQ(NearestColour(0, 0, 0, tie.data(), 2), 0);  // 12 and 12
  }
  Palette windows = FixedRow(1);
  EXPECT_EQ(NearestColour(3, 2, 4, windows.data(), 256), 0);
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(2, 1, {Rgb(9, 9, 9), Grey(250)}), windows, 4, 256), (Pixels{0, 15}));
}

// The table's cells are searched on first use and kept from one palette to
// the next. For palettes one after another (noise, runs of one red, repeated
// colours, one colour, a tail that repeats black, every grey so that cells
// hold several colours), a pixel must find the first exact entry, else its
// cell's NearestColour, whichever cells earlier pixels filled; with FastRemap
// off, its own NearestColour.
TEST(ColourSearch, FindsTheFirstExactEntryElseTheCellsNearestWhicheverPaletteCameBefore) {
  std::uint32_t seed = 7;
  auto next = [&seed] { return static_cast<std::uint8_t>((seed = seed * 1103515245u + 12345u) >> 16); };
  std::vector<std::uint8_t> noise(768), sameRed(768), repeats(768), single(768, 0), greys(768);
  for (int i = 0; i < 768; ++i) noise[i] = next();
  for (int i = 0; i < 768; ++i) sameRed[i] = i % 3 == 0 ? 128 : next();
  for (int i = 0; i < 768; ++i) repeats[i] = noise[i % 24];
  for (int i = 0; i < 768; ++i) greys[i] = static_cast<std::uint8_t>(255 - i / 3);
  single[0] = 200, single[1] = 10, single[2] = 90;
  struct Case {
    const std::vector<std::uint8_t>* palette;
    int colours;
  };
  auto nearestToCell = [](int key, const std::uint8_t* palette, int colours) {
    return NearestColour((key & 31) * 8, (key >> 5 & 31) * 8, (key >> 10 & 31) * 8, palette, colours);
  };
  ColourSearch search;
  for (Case run : {Case{&noise, 256}, Case{&sameRed, 256}, Case{&repeats, 64}, Case{&noise, 37}, Case{&single, 1},
                   Case{&noise, 256}, Case{&single, 256}, Case{&greys, 200}, Case{&noise, 0}}) {
    const std::uint8_t* palette = run.palette->data();
    ColourSearchInit(&search, palette, run.colours, 1);
    ColourSearch exactSearch;  // FastRemap off: NearestColour on the pixel itself
    ColourSearchInit(&exactSearch, palette, run.colours, 0);
    int wrong = 0;
    for (int i = 0; i < 256; ++i) {
      for (int step : {0, 1, -1, 3}) {
        int rgb[3];
        for (int c = 0; c < 3; ++c) rgb[c] = std::clamp(palette[i * 3 + c] + (c == 1 ? step : 0), 0, 255);
        int exact = PaletteFindExact(palette, run.colours, rgb[0], rgb[1], rgb[2]);
        int wanted = exact >= 0 ? exact : nearestToCell(ColourLookupKey(rgb[0], rgb[1], rgb[2]), palette, run.colours);
        wrong += ColourSearchFind(&search, rgb[0], rgb[1], rgb[2]) != wanted;
        wrong += ColourSearchFind(&exactSearch, rgb[0], rgb[1], rgb[2]) !=
                 NearestColour(rgb[0], rgb[1], rgb[2], palette, run.colours);
      }
    }
    for (int key = 0; key < 32768; ++key)
      wrong += ColourTableNearest(search.table, key) != nearestToCell(key, palette, run.colours);
    EXPECT_EQ(wrong, 0) << run.colours << " colours";
  }
}

TEST(RemapPlain, FastRemapTakesExactMatchesThenTheFifteenBitTable) {
  // (5, 5, 5) is nearest to entry 1, but its table cell (0, 0, 0) is entry 0.
  Palette palette = PaletteOf({Rgb(0, 0, 0), Rgb(6, 6, 6)});
  auto frame = [] { return MakeBitmap(2, 1, {Rgb(5, 5, 5), Rgb(6, 6, 6)}); };
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 2), (Pixels{0, 1}));
  EXPECT_EQ(Remapped(RemapPlain, frame(), palette, 8, 2, {.fastRemap = 0}), (Pixels{1, 1}));
  // A 1-bit source without an exact white: the fast rule takes the table's last
  // cell (248, 248, 248), the slow one the nearest entry to white.
  Palette noWhite = PaletteOf({Rgb(255, 0, 0), Grey(248), Rgb(255, 255, 254), Grey(0)});
  auto bits = [] { return MakeBitmap(2, 1, {1, 0}, 1); };
  EXPECT_EQ(Remapped(RemapPlain, bits(), noWhite, 8, 4), (Pixels{1, 3}));
  EXPECT_EQ(Remapped(RemapPlain, bits(), noWhite, 8, 4, {.fastRemap = 0}), (Pixels{2, 3}));
  // Into a 1-bit target the bit passes as it is, whatever the palette.
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(3, 1, {1, 0, 1}, 1), noWhite, 1, 4), (Pixels{1, 0, 1}));
}

TEST(RemapPlain, OneBitTargetUsesTheFixedLuminanceLimitAndAnIndexedSourcesTable) {
  Palette bw = FixedRow(0);
  // Luminance 127 and 129: mid grey 129 still comes out black.
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(2, 1, {Grey(129), Grey(130)}), bw, 1, 256), (Pixels{0, 1}));
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(2, 1, {1, 0}, 8, PaletteOf({Grey(129), Grey(130)}).data()), bw, 1, 256),
            (Pixels{1, 0}));
  // Only one colour is given, but the colour map of an indexed source searches all 256 entries.
  Palette palette = PaletteOf({Rgb(0, 0, 0), Rgb(200, 0, 0)});
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(1, 1, {0}, 8, PaletteOf({Rgb(200, 0, 0)}).data()), palette, 8, 1),
            (Pixels{1}));
  EXPECT_EQ(Remapped(RemapPlain, MakeBitmap(1, 1, {Rgb(200, 0, 0)}), palette, 8, 1), (Pixels{0}));
}

TEST(Remap, FourBitTargetPacksHighNibbleFirst) {
  DibOwner source(MakeBitmap(3, 1, {Rgb(255, 0, 0), Rgb(0, 0, 255), Rgb(255, 255, 255)}));
  for (RemapFunction remap : {RemapPlain, RemapDithered}) {
    DibOwner result(remap(source.get(), FixedRow(1).data(), 4, 256, RemapOptions{}));
    DibLock lock(result.get());
    ASSERT_EQ(lock.head->biBitCount, 4);
    EXPECT_EQ(DibRows(lock.head)[0] << 8 | DibRows(lock.head)[1], 0x9CF0);
  }
}

TEST(DitherCurve, RunsFromBrightnessMinusContrastInStepsOf256Over256MinusTwiceContrast) {
  auto curveAt = [](int brightness, int contrast) {
    std::uint8_t curve[256];
    DitherCurve(brightness, contrast, curve);
    return std::vector<int>{curve[0], curve[1], curve[77], curve[100], curve[255]};
  };
  // 77 * 256 / 216 = 91.3 and 100 * 256 / 216 = 118.5; contrast 128 is an infinite step.
  EXPECT_EQ(curveAt(20, 20), (std::vector<int>{1, 1, 91, 118, 254}));
  EXPECT_EQ(curveAt(0, 0), (std::vector<int>{1, 1, 77, 100, 254}));
  EXPECT_EQ(curveAt(20, 128), (std::vector<int>{1, 254, 254, 254, 254}));
}

TEST(RemapDithered, OneBitRefusesABitmapSourceAndComparesAFlatFrameWithItsOwnLuminance) {
  Palette bw = FixedRow(0);
  for (int depth : {1, 8}) EXPECT_TRUE(Remapped(RemapDithered, MakeBitmap(1, 1, {0}, 1), bw, depth, 2).empty());
  // One luminance: lowest = highest = threshold. White maps to 254, not above
  // 255, so all clear; black maps to 1, above 0, so all set.
  EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(3, 2, Pixels(6, Grey(255))), bw, 1, 2), Pixels(6, 0));
  EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(3, 2, Pixels(6, Grey(0))), bw, 1, 2), Pixels(6, 1));
}

TEST(RemapDithered, OneBitColumnZeroSpillsIntoTheLastByteOfItsOwnRow) {
  // Identity curve, range 0-255, threshold 127. The bottom row holds
  // luminances 100, 212, 7, 120: column 0 leaves error 100, whose 3/16 share
  // meant for the row above at x - 1 lands on this row's last pixel (width 4
  // has no padding) and lifts 120 to 138, over the threshold.
  const RemapOptions identity{.ditherBrightness = 0, .ditherContrast = 0};
  Pixels pixels = {Grey(0), Grey(255), Grey(0), Grey(255), Grey(101), Grey(213), Grey(9), Grey(121)};
  Pixels bits = Remapped(RemapDithered, MakeBitmap(4, 2, pixels), FixedRow(0), 1, 2, identity);
  ASSERT_EQ(bits.size(), 8u);
  EXPECT_EQ(Pixels(bits.begin() + 4, bits.end()), (Pixels{0, 1, 0, 1}));
}

// The multi-bit diffusion written as plainly as it can be: 16-bit error
// rows with slack, each share added where it lands, in order, and the fast
// rule for each pixel. Pixels are given and returned top row first.
Pixels PlainDither(const Pixels& pixels, int width, int height, const Palette& palette, int colours) {
  std::vector<std::int16_t> current(width * 3 + 512), next(width * 3 + 512);
  Pixels indexes(pixels.size());
  for (int stored = 0; stored < height; ++stored) {
    const int y = height - 1 - stored;
    const bool above = stored + 1 < height;
    for (int i = 0; i < width * 3; ++i) current[i] += pixels[y * width + i / 3] >> (i % 3 * 8) & 0xFF;
    for (int x = 0; x < width; ++x) {
      int v[3];
      for (int c = 0; c < 3; ++c) v[c] = std::clamp<int>(current[x * 3 + c], 0, 255);
      int index = PaletteFindExact(palette.data(), colours, v[0], v[1], v[2]);
      if (index < 0) index = NearestColour(v[0] & ~7, v[1] & ~7, v[2] & ~7, palette.data(), colours);
      indexes[y * width + x] = index;
      for (int c = 0; c < 3; ++c) {
        int e = v[c] - palette[index * 3 + c];
        if (x + 1 < width) current[(x + 1) * 3 + c] += 7 * e >> 4;
        if (x >= 2 && above) next[(x - 1) * 3 + c] += 3 * e >> 4;
        if (x + 1 < width && above) next[(x + 1) * 3 + c] += e >> 4;
        if (above) next[x * 3 + c] += 5 * e >> 4;
      }
    }
    current = next;
    std::fill(next.begin(), next.end(), 0);
  }
  return indexes;
}

// A 13 x 7 frame of noise over 60 colours, ten of them in the palette, as
// true colour and as indexes into a colour table.
struct NoiseFrame {
  static constexpr int kWidth = 13, kHeight = 7;
  Palette sourceTable{}, palette{};
  Pixels indexes = Pixels(kWidth * kHeight), colours = Pixels(kWidth * kHeight);
  NoiseFrame() {
    std::uint32_t seed = 11;
    auto next = [&seed] { return static_cast<int>((seed = seed * 1103515245u + 12345u) >> 16 & 0xFF); };
    for (std::uint8_t& byte : sourceTable) byte = static_cast<std::uint8_t>(next());
    for (std::uint8_t& byte : palette) byte = static_cast<std::uint8_t>(next());
    std::copy(sourceTable.begin(), sourceTable.begin() + 30, palette.begin() + 12);
    for (int i = 0; i < kWidth * kHeight; ++i) {
      indexes[i] = next() % 60;
      const std::uint8_t* rgb = &sourceTable[indexes[i] * 3];
      colours[i] = Rgb(rgb[0], rgb[1], rgb[2]);
    }
  }
};

TEST(RemapDithered, MultiBitMatchesThePlainDiffusionFromTrueColourAndIndexedSources) {
  const NoiseFrame frame;
  const int width = NoiseFrame::kWidth, height = NoiseFrame::kHeight;
  for (auto [depth, entries] : {std::pair{8, 200}, std::pair{4, 16}}) {
    Pixels plain = PlainDither(frame.colours, width, height, frame.palette, entries);
    EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(width, height, frame.colours), frame.palette, depth, entries), plain)
        << depth;
    DibHandle indexed = MakeBitmap(width, height, frame.indexes, 8, frame.sourceTable.data());
    EXPECT_EQ(Remapped(RemapDithered, indexed, frame.palette, depth, entries), plain) << depth;
  }
}

TEST(RemapPlain, TrueColourPixelsTakeTheirExactEntryElseTheirCellsNearest) {
  const NoiseFrame frame;
  Pixels wanted;
  for (std::int32_t colour : frame.colours) {
    int r = colour & 0xFF, g = colour >> 8 & 0xFF, b = colour >> 16 & 0xFF;
    int exact = PaletteFindExact(frame.palette.data(), 200, r, g, b);
    wanted.push_back(exact >= 0 ? exact : NearestColour(r & ~7, g & ~7, b & ~7, frame.palette.data(), 200));
  }
  DibHandle source = MakeBitmap(NoiseFrame::kWidth, NoiseFrame::kHeight, frame.colours);
  EXPECT_EQ(Remapped(RemapPlain, source, frame.palette, 8, 200), wanted);
}

TEST(RemapDithered, ColumnsZeroAndOneGiveUpTheLowerLeftShareAndExactColoursStayExact) {
  // Error 100 at column 1 of the bottom row sends nothing up-left, so the 120
  // above-left stays black; the same error from column 2 adds 18 and makes it white.
  auto dither = [](int width, Pixels pixels) {
    return Remapped(RemapDithered, MakeBitmap(width, 2, pixels), FixedRow(0), 8, 2);
  };
  EXPECT_EQ(dither(2, {Grey(120), Grey(0), Grey(0), Grey(100)}), (Pixels{0, 0, 0, 0}));
  EXPECT_EQ(dither(3, {Grey(0), Grey(120), Grey(0), Grey(0), Grey(0), Grey(100)}), (Pixels{0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(Remapped(RemapDithered, MakeBitmap(5, 5, Pixels(25, Rgb(36, 72, 255))), FixedRow(6), 8, 256),
            Pixels(25, 1 * 32 + 2 * 4 + 3));
}

}  // namespace
