#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "colour/palette.h"

namespace {

using Palette = std::array<std::uint8_t, 768>;

TEST(FixedPalette, RowsGiveTheirCountsDepthsListedEntriesAndABlackTail) {
  struct Row {
    int row, entries, depth;
    std::vector<std::pair<int, std::uint32_t>> samples;  // index, 0xRRGGBB
  };
  const Row rows[] = {
      {0, 2, 1, {{1, 0xFFFFFF}}},
      {1, 16, 4, {{1, 0x800000}, {7, 0x808080}, {8, 0xC0C0C0}, {14, 0x00FFFF}}},
      {2, 32, 5, {{1, 0x0000FF}, {2, 0x005500}, {8, 0x550000}, {31, 0xFFFFFF}}},
      {3, 64, 6, {{1, 0x000055}, {4, 0x005500}, {16, 0x550000}, {63, 0xFFFFFF}}},
      {4, 128, 7, {{1, 0x000055}, {4, 0x002400}, {32, 0x550000}, {127, 0xFFFFFF}}},
      {5, 216, 8, {{1, 0x000033}, {6, 0x330000}, {36, 0x003300}, {215, 0xFFFFFF}}},
      {6, 256, 8, {{1, 0x000055}, {4, 0x002400}, {32, 0x240000}, {255, 0xFFFFFF}}},
      {7, 256, 8, {{111, 0x806DFF}, {112, 0x010101}, {127, 0x7B7B7B}, {143, 0xFEFEFE}, {200, 0xD54900}}},
      {8, 256, 8, {{1, 0x010101}, {128, 0x808080}, {200, 0xC8C8C8}, {255, 0xFFFFFF}}},
      {9, 8, 3, {{1, 0xFF0000}, {3, 0xFFFF00}, {6, 0x00FFFF}, {7, 0xFFFFFF}}},
  };
  for (const Row& r : rows) {
    Palette palette;
    palette.fill(0xAA);  // the build must clear what it does not fill
    int depth = 0, nullDepth = 0;
    EXPECT_EQ(FixedPaletteBuild(palette.data(), &depth, r.row), r.entries) << r.row;
    EXPECT_EQ(depth, r.depth) << r.row;
    EXPECT_EQ(FixedPaletteBuild(nullptr, &nullDepth, r.row), r.entries) << r.row;
    EXPECT_EQ(nullDepth, r.depth) << r.row;
    EXPECT_EQ(palette[0] | palette[1] | palette[2], 0) << r.row;  // every row starts black
    for (auto [index, rgb] : r.samples) {
      EXPECT_EQ(palette[index * 3] << 16 | palette[index * 3 + 1] << 8 | palette[index * 3 + 2], rgb)
          << r.row << " " << index;
    }
    EXPECT_TRUE(std::all_of(palette.begin() + r.entries * 3, palette.end(), [](int b) { return b == 0; })) << r.row;
  }
  Palette six, other;
  FixedPaletteBuild(six.data(), nullptr, 6);
  for (int row : {-1, 10, 1000}) {  // outside the table: the orthogonal 256 row
    int depth = 0;
    EXPECT_EQ(FixedPaletteBuild(other.data(), &depth, row), 256);
    EXPECT_EQ(depth, 8);
    EXPECT_EQ(other, six) << row;
  }
}

TEST(Luminance, TruncatesEachTermBeforeTheSum) {
  EXPECT_EQ(Luminance(255, 255, 255), 255);
  // 77*4/255 = 1.2, 150*2/255 = 1.2, 28*10/255 = 1.1: three truncated ones, not 3.5 rounded.
  EXPECT_EQ(Luminance(4, 2, 10), 3);
  // Mid grey just below the 1-bit limit of 129: 38 + 75 + 14.
  EXPECT_EQ(Luminance(129, 129, 129), 127);
  EXPECT_EQ(Luminance(130, 130, 130), 129);
}

TEST(PaletteSort, OrdersByLuminanceAndKeepsTiesInPlace) {
  // Luminances 255, 28, 77, 0, 3, then 1 and 1 from different colours; the
  // byte beyond the count stays where it is.
  std::uint8_t palette[] = {255, 255, 255, 0, 0, 255, 255, 0, 0, 0, 0, 0, 10, 0, 0, 0, 2, 0, 4, 0, 0, 200};
  PaletteSortByLuminance(palette, 7);
  const std::uint8_t sorted[] = {0, 0, 0, 0, 2, 0, 4, 0, 0, 10, 0, 0, 0, 0, 255, 255, 0, 0, 255, 255, 255, 200};
  EXPECT_EQ(std::memcmp(palette, sorted, sizeof sorted), 0);
}

TEST(PaletteDepth, FollowsTheStaircaseIncludingAReservedSlot) {
  const std::pair<int, int> steps[] = {{1, 1}, {2, 1}, {3, 2}, {16, 4}, {17, 5}, {128, 7}, {256, 8}, {257, 24}};
  for (auto [entries, depth] : steps) EXPECT_EQ(PaletteDepthForEntries(entries), depth) << entries;
}

}  // namespace
