#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "colour/quantise.h"
#include "colour_test_frames.h"

namespace {

using colourtest::Frames;
using colourtest::MakeBitmap;
using colourtest::Rgb;
using Palette = std::array<std::uint8_t, 768>;

std::int32_t EntryOf(const Palette& palette, int index) {
  return Rgb(palette[index * 3], palette[index * 3 + 1], palette[index * 3 + 2]);
}

bool TailIsBlack(const Palette& palette, int count) {
  return std::all_of(palette.begin() + count * 3, palette.end(), [](std::uint8_t b) { return b == 0; });
}

DibHandle Strip(const std::vector<std::int32_t>& pixels) {
  return MakeBitmap(static_cast<int>(pixels.size()), 1, pixels);
}

// 256 colours, each in its own cell of the five-level tree.
std::int32_t GridColour(int i) { return Rgb((i & 31) << 3, (i >> 5) << 3, 0); }

TEST(OctreeQuantise, OneColourAnimationGivesOneEntry) {
  for (int limit : {255, 256}) {
    Frames frames;
    for (int f = 0; f < 3; ++f) frames.Add(MakeBitmap(7, 5, std::vector<std::int32_t>(35, Rgb(12, 200, 99))));
    Palette palette;
    palette.fill(0x55);
    int colours = limit;
    ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
    EXPECT_EQ(colours, 1);
    EXPECT_EQ(EntryOf(palette, 0), Rgb(12, 200, 99));
    EXPECT_TRUE(TailIsBlack(palette, 1));
  }
}

TEST(OctreeQuantise, ExactlyTheLimitKeepsTheColoursInOrderOfDiscovery) {
  // Colours 0-127, then 64-191 (64 of them seen before), then 192-255: the
  // 256th colour is the very last pixel, so the list never overflows.
  Frames frames;
  std::vector<std::int32_t> first;
  std::vector<std::int32_t> second;
  std::vector<std::int32_t> third;
  for (int i = 0; i < 128; ++i) first.push_back(GridColour(255 - i));
  for (int i = 64; i < 192; ++i) second.push_back(GridColour(255 - i));
  second.push_back(GridColour(255));  // repeats cost nothing while the list has room
  for (int i = 192; i < 256; ++i) third.push_back(GridColour(255 - i));
  frames.Add(Strip(first));
  frames.Add(Strip(second));
  frames.Add(Strip(third));
  Palette palette;
  int colours = 256;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  ASSERT_EQ(colours, 256);
  for (int i = 0; i < 256; ++i) ASSERT_EQ(EntryOf(palette, i), GridColour(255 - i)) << i;
}

TEST(OctreeQuantise, APixelAfterTheListIsFullForcesTheTreeEvenWithoutNewColours) {
  Frames frames;
  std::vector<std::int32_t> all;
  for (int i = 0; i < 256; ++i) all.push_back(GridColour(255 - i));
  frames.Add(Strip(all));
  frames.Add(Strip({GridColour(0)}));
  Palette palette;
  int colours = 256;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  // Every colour has a leaf of its own, so nothing is pruned, but the order is
  // now the tree's: red, green, blue bits interleaved from the top.
  ASSERT_EQ(colours, 256);
  auto treeKey = [](std::int32_t colour) {
    int key = 0;
    for (int shift = 7; shift >= 3; --shift) {
      key = key << 3 | ((colour >> shift) & 1) << 2 | ((colour >> (8 + shift)) & 1) << 1 | ((colour >> (16 + shift)) & 1);
    }
    return key;
  };
  std::vector<std::int32_t> expected(all);
  std::sort(expected.begin(), expected.end(), [&](std::int32_t a, std::int32_t b) { return treeKey(a) < treeKey(b); });
  for (int i = 0; i < 256; ++i) ASSERT_EQ(EntryOf(palette, i), expected[i]) << i;
}

TEST(OctreeQuantise, ExactlyTwoHundredFiftyFiveColoursFitTheReservedLimit) {
  Frames frames;
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 255; ++i) pixels.push_back(GridColour(i));
  pixels.push_back(GridColour(7));
  frames.Add(Strip(pixels));
  frames.Add(Strip(pixels));
  Palette palette;
  int colours = 255;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  ASSERT_EQ(colours, 255);
  for (int i = 0; i < 255; ++i) ASSERT_EQ(EntryOf(palette, i), GridColour(i)) << i;
  EXPECT_TRUE(TailIsBlack(palette, 255));
}

// 384 colours in two cells of the five-level tree that share one cell of the
// four-level tree: r 0-7 or 8-15, g 0-7, b 0-2.
TEST(OctreeQuantise, AReservedSlotClassifiesOneLevelCoarser) {
  auto build = [](Frames& frames) {
    std::vector<std::int32_t> pixels;
    for (int r = 0; r < 16; ++r) {
      for (int g = 0; g < 8; ++g) {
        for (int b = 0; b < 3; ++b) pixels.push_back(Rgb(r, g, b));
      }
    }
    frames.Add(MakeBitmap(24, 16, pixels));
  };
  Frames full;
  build(full);
  Palette palette;
  int colours = 256;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &full.list), 1);
  ASSERT_EQ(colours, 2);
  EXPECT_EQ(EntryOf(palette, 0), Rgb(4, 4, 1));  // means rounded to nearest: 3.5 -> 4, 1 -> 1
  EXPECT_EQ(EntryOf(palette, 1), Rgb(12, 4, 1));

  Frames reserved;
  build(reserved);
  colours = 255;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &reserved.list), 1);
  ASSERT_EQ(colours, 1);
  EXPECT_EQ(EntryOf(palette, 0), Rgb(8, 4, 1));
  EXPECT_TRUE(TailIsBlack(palette, 1));
}

// Five leaves of a two-level tree, limit 4. The first pass only finds the
// lowest error (the lone pixel at 64,0,0); pruning it leaves its parent with
// pixels of its own, still five colours; the next pass removes the four
// equal-error leaves at once, leaving the four first-level nodes.
TEST(OctreeQuantise, ReductionPrunesByRisingErrorAcrossFrames) {
  Frames frames;
  std::vector<std::int32_t> pixels;
  for (std::int32_t colour : {Rgb(0, 0, 0), Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)}) {
    pixels.insert(pixels.end(), 100, colour);
  }
  frames.Add(MakeBitmap(100, 4, pixels));
  frames.Add(Strip({Rgb(64, 0, 0)}));
  Palette palette;
  int colours = 4;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  ASSERT_EQ(colours, 4);
  EXPECT_EQ(EntryOf(palette, 0), Rgb(1, 0, 0));  // (64 + 50.5) / 101
  EXPECT_EQ(EntryOf(palette, 1), Rgb(0, 0, 255));
  EXPECT_EQ(EntryOf(palette, 2), Rgb(0, 255, 0));
  EXPECT_EQ(EntryOf(palette, 3), Rgb(255, 0, 0));
  EXPECT_TRUE(TailIsBlack(palette, 4));
}

TEST(OctreeQuantise, OneColourMoreThanTheLimitReducesToAtMostTheLimit) {
  Frames frames;
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 257; ++i) pixels.push_back(Rgb((i & 31) << 3, (i >> 5) << 3, 128));
  frames.Add(Strip(pixels));
  Palette palette;
  int colours = 256;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  EXPECT_GT(colours, 1);
  EXPECT_LE(colours, 256);
  EXPECT_TRUE(TailIsBlack(palette, colours));
  for (int i = 0; i < colours; ++i) EXPECT_EQ(palette[i * 3 + 2], 128) << i;  // means of blue 128 only
}

TEST(OctreeQuantise, LimitZeroMeansTwoHundredFiftySixAndLargerIsCut) {
  for (int limit : {0, 1000}) {
    Frames frames;
    std::vector<std::int32_t> pixels;
    for (int i = 0; i < 256; ++i) pixels.push_back(GridColour(i));
    frames.Add(Strip(pixels));
    Palette palette;
    int colours = limit;
    ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
    EXPECT_EQ(colours, 256) << limit;
    EXPECT_EQ(EntryOf(palette, 255), GridColour(255));
  }
}

TEST(OctreeQuantise, RefusesAFrameThatIsNotTrueColour) {
  Frames frames;
  frames.Add(MakeBitmap(2, 2, {0, 1, 1, 0}, 8));
  Palette palette;
  int colours = 256;
  EXPECT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 0);
}

}  // namespace
