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

// The palette a quantiser run leaves, as COLORREFs; the bytes after the count must be black.
std::vector<std::int32_t> Quantise(Frames& frames, int limit) {
  std::array<std::uint8_t, 768> palette;
  palette.fill(0x55);
  EXPECT_EQ(OctreeQuantise(&limit, palette.data(), &frames.list), 1);
  std::vector<std::int32_t> entries;
  for (int i = 0; i < limit; ++i) entries.push_back(Rgb(palette[i * 3], palette[i * 3 + 1], palette[i * 3 + 2]));
  EXPECT_TRUE(std::all_of(palette.begin() + limit * 3, palette.end(), [](int b) { return b == 0; }));
  return entries;
}

DibHandle Strip(const std::vector<std::int32_t>& pixels) {
  return MakeBitmap(static_cast<int>(pixels.size()), 1, pixels);
}

// 256 colours, each in its own cell of the five-level tree.
std::int32_t GridColour(int i) { return Rgb((i & 31) << 3, (i >> 5) << 3, 0); }

// GridColour(255 - i) for i in [from, to).
std::vector<std::int32_t> GridRun(int from, int to) {
  std::vector<std::int32_t> run;
  for (int i = from; i < to; ++i) run.push_back(GridColour(255 - i));
  return run;
}

TEST(OctreeQuantise, OneColourAnimationGivesOneEntry) {
  for (int limit : {255, 256}) {
    Frames frames;
    for (int f = 0; f < 3; ++f) frames.Add(MakeBitmap(7, 5, std::vector<std::int32_t>(35, Rgb(12, 200, 99))));
    EXPECT_EQ(Quantise(frames, limit), std::vector<std::int32_t>{Rgb(12, 200, 99)}) << limit;
  }
}

TEST(OctreeQuantise, ExactlyTheLimitKeepsTheColoursInOrderOfDiscoveryAndZeroOrOver256Mean256) {
  // Colours 0-127, then 64-191 (64 of them seen before) and a repeat, then the
  // rest: the last colour is the very last pixel, so the list never overflows.
  for (int limit : {255, 256, 0, 1000}) {
    const int kept = limit == 255 ? 255 : 256;
    Frames frames;
    frames.Add(Strip(GridRun(0, 128)));
    std::vector<std::int32_t> second = GridRun(64, 192);
    second.push_back(GridColour(255));  // repeats cost nothing while the list has room
    frames.Add(Strip(second));
    std::vector<std::int32_t> last = GridRun(192, kept);
    if (kept == 255) last.push_back(GridColour(255));  // the list holds 256, so a repeat after 255 still fits
    frames.Add(Strip(last));
    EXPECT_EQ(Quantise(frames, limit), GridRun(0, kept)) << limit;
  }
}

TEST(OctreeQuantise, APixelAfterTheListIsFullForcesTheTreeEvenWithoutNewColours) {
  Frames frames;
  std::vector<std::int32_t> all = GridRun(0, 256);
  frames.Add(Strip(all));
  frames.Add(Strip({GridColour(0)}));
  // Every colour has a leaf of its own, so nothing is pruned, but the order is
  // now the tree's: red, green, blue bits interleaved from the top.
  auto treeKey = [](std::int32_t c) {
    int key = 0;
    for (int s = 7; s >= 3; --s) key = key << 3 | (c >> s & 1) << 2 | (c >> (8 + s) & 1) << 1 | (c >> (16 + s) & 1);
    return key;
  };
  std::sort(all.begin(), all.end(), [&](std::int32_t a, std::int32_t b) { return treeKey(a) < treeKey(b); });
  EXPECT_EQ(Quantise(frames, 256), all);
}

// 384 colours in two cells of the five-level tree that share one cell of the
// four-level tree: r 0-7 or 8-15, g 0-7, b 0-2.
TEST(OctreeQuantise, AReservedSlotClassifiesOneLevelCoarser) {
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 384; ++i) pixels.push_back(Rgb(i / 24, i / 3 % 8, i % 3));
  Frames full, reserved;
  full.Add(MakeBitmap(24, 16, pixels));
  reserved.Add(MakeBitmap(24, 16, pixels));
  // Means rounded to nearest: 3.5 -> 4, 1 -> 1.
  EXPECT_EQ(Quantise(full, 256), (std::vector<std::int32_t>{Rgb(4, 4, 1), Rgb(12, 4, 1)}));
  EXPECT_EQ(Quantise(reserved, 255), std::vector<std::int32_t>{Rgb(8, 4, 1)});
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
  // (64 + 50.5) / 101 for the first.
  EXPECT_EQ(Quantise(frames, 4),
            (std::vector<std::int32_t>{Rgb(1, 0, 0), Rgb(0, 0, 255), Rgb(0, 255, 0), Rgb(255, 0, 0)}));
}

TEST(OctreeQuantise, OneColourMoreThanTheLimitReducesToAtMostTheLimit) {
  Frames frames;
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 257; ++i) pixels.push_back(Rgb((i & 31) << 3, (i >> 5) << 3, 128));
  frames.Add(Strip(pixels));
  std::vector<std::int32_t> entries = Quantise(frames, 256);
  EXPECT_GT(entries.size(), 1u);
  EXPECT_LE(entries.size(), 256u);
  for (std::int32_t entry : entries) EXPECT_EQ(entry >> 16, 128);  // means of blue 128 only
}

TEST(OctreeQuantise, RefusesAFrameThatIsNotTrueColour) {
  Frames frames;
  frames.Add(MakeBitmap(2, 2, {0, 1, 1, 0}, 8));
  int colours = 256;
  std::uint8_t palette[768];
  EXPECT_EQ(OctreeQuantise(&colours, palette, &frames.list), 0);
}

}  // namespace
