#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "colour/palette.h"

namespace {

using Palette = std::array<std::uint8_t, 768>;

Palette Build(int row, int* entries = nullptr, int* depth = nullptr) {
  Palette palette;
  palette.fill(0xAA);  // the build must clear what it does not fill
  int count = FixedPaletteBuild(palette.data(), depth, row);
  if (entries != nullptr) *entries = count;
  return palette;
}

bool EntryIs(const Palette& palette, int index, int red, int green, int blue) {
  return palette[index * 3] == red && palette[index * 3 + 1] == green && palette[index * 3 + 2] == blue;
}

TEST(FixedPalette, EveryRowReportsItsEntriesAndDepthAndLeavesTheTailBlack) {
  const int expectedEntries[10] = {2, 16, 32, 64, 128, 216, 256, 256, 256, 8};
  const int expectedDepth[10] = {1, 4, 5, 6, 7, 8, 8, 8, 8, 3};
  for (int row = 0; row < 10; ++row) {
    int entries = 0;
    int depth = 0;
    Palette palette = Build(row, &entries, &depth);
    EXPECT_EQ(entries, expectedEntries[row]) << row;
    EXPECT_EQ(depth, expectedDepth[row]) << row;
    for (int i = entries * 3; i < 768; ++i) ASSERT_EQ(palette[i], 0) << "row " << row << " byte " << i;
    int nullDepth = 0;
    EXPECT_EQ(FixedPaletteBuild(nullptr, &nullDepth, row), entries);
    EXPECT_EQ(nullDepth, depth);
  }
}

TEST(FixedPalette, RowsOutsideTheTableGiveTheOrthogonal256Row) {
  Palette six = Build(6);
  for (int row : {-1, 10, 11, 1000}) {
    int depth = 0;
    int entries = 0;
    Palette other = Build(row, &entries, &depth);
    EXPECT_EQ(entries, 256);
    EXPECT_EQ(depth, 8);
    EXPECT_EQ(other, six) << row;
  }
}

TEST(FixedPalette, SmallRowsHoldTheirListedColoursInOrder) {
  struct Listed {
    int row;
    std::vector<std::uint32_t> rrggbb;
  };
  const Listed rows[] = {
      {0, {0x000000, 0xFFFFFF}},
      {1, {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0x808080, 0xC0C0C0, 0xFF0000,
           0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF}},
      {9, {0x000000, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF}},
  };
  for (const Listed& listed : rows) {
    Palette palette = Build(listed.row);
    for (std::size_t i = 0; i < listed.rrggbb.size(); ++i) {
      std::uint32_t c = listed.rrggbb[i];
      EXPECT_TRUE(EntryIs(palette, static_cast<int>(i), c >> 16, c >> 8 & 0xFF, c & 0xFF)) << listed.row << " " << i;
    }
  }
}

TEST(FixedPalette, OrthogonalRowsRunBlueFastestOverTheirLevelSets) {
  const int four[4] = {0, 85, 170, 255};
  const int eight[8] = {0, 36, 72, 108, 144, 180, 216, 255};
  Palette row2 = Build(2);
  EXPECT_TRUE(EntryIs(row2, 1, 0, 0, 255));
  EXPECT_TRUE(EntryIs(row2, 2, 0, 85, 0));
  EXPECT_TRUE(EntryIs(row2, 8, 85, 0, 0));
  EXPECT_TRUE(EntryIs(row2, 31, 255, 255, 255));
  Palette row3 = Build(3);
  for (int i = 0; i < 64; ++i) ASSERT_TRUE(EntryIs(row3, i, four[i / 16], four[i / 4 % 4], four[i % 4])) << i;
  Palette row4 = Build(4);
  for (int i = 0; i < 128; ++i) ASSERT_TRUE(EntryIs(row4, i, four[i / 32], eight[i / 4 % 8], four[i % 4])) << i;
  Palette row6 = Build(6);
  for (int i = 0; i < 256; ++i) ASSERT_TRUE(EntryIs(row6, i, eight[i / 32], eight[i / 4 % 8], four[i % 4])) << i;
  Palette gray = Build(8);
  for (int i = 0; i < 256; ++i) ASSERT_TRUE(EntryIs(gray, i, i, i, i)) << i;
}

TEST(FixedPalette, StoredTablesMatchTheirRules) {
  Palette safe = Build(5);
  for (int i = 0; i < 216; ++i) {
    ASSERT_TRUE(EntryIs(safe, i, 51 * ((i / 6) % 6), 51 * (i / 36), 51 * (i % 6))) << i;
  }
  const int red[7] = {0, 43, 85, 128, 170, 213, 255};
  const int green[8] = {0, 36, 73, 109, 146, 182, 219, 255};
  const int blue[4] = {0, 85, 170, 255};
  const int grays[32] = {1,   8,   16,  24,  32,  41,  49,  57,  65,  74,  82,  90,  98,  106, 115, 123,
                         131, 139, 148, 156, 164, 172, 180, 189, 197, 205, 213, 222, 230, 238, 246, 254};
  Palette withGray = Build(7);
  for (int index = 0; index < 256; ++index) {
    if (index >= 112 && index < 144) {
      int g = grays[index - 112];
      ASSERT_TRUE(EntryIs(withGray, index, g, g, g)) << index;
      continue;
    }
    int cube = index < 112 ? index : index - 32;
    ASSERT_TRUE(EntryIs(withGray, index, red[cube / 32], green[cube / 4 % 8], blue[cube % 4])) << index;
  }
}

TEST(Luminance, TruncatesEachTermBeforeTheSum) {
  EXPECT_EQ(Luminance(255, 255, 255), 255);
  EXPECT_EQ(Luminance(0, 0, 0), 0);
  // 77*4/255 = 1.2, 150*2/255 = 1.2, 28*10/255 = 1.1: three truncated ones, not 3.5 rounded.
  EXPECT_EQ(Luminance(4, 2, 10), 3);
  // Mid grey just below the 1-bit limit of 129: 38 + 75 + 14.
  EXPECT_EQ(Luminance(129, 129, 129), 127);
  EXPECT_EQ(Luminance(130, 130, 130), 129);
}

TEST(PaletteSort, OrdersByLuminanceAndKeepsTiesInPlace) {
  Palette palette{};
  const std::uint8_t entries[] = {
      255, 255, 255,  // 255
      0,   0,   255,  // 28
      255, 0,   0,    // 77
      0,   0,   0,    // 0
      0,   0,   255,  // 28 again, after the first one
      10,  0,   0,    // 3
  };
  std::memcpy(palette.data(), entries, sizeof entries);
  palette[6 * 3] = 200;  // beyond the count: untouched
  PaletteSortByLuminance(palette.data(), 6);
  const std::uint8_t sorted[] = {0, 0, 0, 10, 0, 0, 0, 0, 255, 0, 0, 255, 255, 0, 0, 255, 255, 255};
  EXPECT_EQ(std::memcmp(palette.data(), sorted, sizeof sorted), 0);
  EXPECT_EQ(palette[6 * 3], 200);

  // Equal luminance from different colours: (0, 2, 0) and (4, 0, 0) both give 1.
  const std::uint8_t ties[] = {0, 2, 0, 4, 0, 0, 0, 0, 0};
  std::memcpy(palette.data(), ties, sizeof ties);
  PaletteSortByLuminance(palette.data(), 3);
  const std::uint8_t tiesSorted[] = {0, 0, 0, 0, 2, 0, 4, 0, 0};
  EXPECT_EQ(std::memcmp(palette.data(), tiesSorted, sizeof tiesSorted), 0);

  std::uint8_t single[3] = {255, 255, 255};
  PaletteSortByLuminance(single, 1);
  PaletteSortByLuminance(single, 0);
  EXPECT_EQ(single[0], 255);
}

TEST(PaletteDepth, FollowsTheStaircaseIncludingAReservedSlot) {
  EXPECT_EQ(PaletteDepthForEntries(1), 1);
  EXPECT_EQ(PaletteDepthForEntries(2), 1);
  EXPECT_EQ(PaletteDepthForEntries(3), 2);
  EXPECT_EQ(PaletteDepthForEntries(16), 4);
  EXPECT_EQ(PaletteDepthForEntries(17), 5);
  EXPECT_EQ(PaletteDepthForEntries(128), 7);
  EXPECT_EQ(PaletteDepthForEntries(255 + 1), 8);  // 255 colours plus the background slot
  EXPECT_EQ(PaletteDepthForEntries(257), 24);
}

}  // namespace
