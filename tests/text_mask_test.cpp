// Mask building on top of the drawing service, in both builds: merging,
// placement, the outline ring and the accent table. Pixel-exact glyph shapes
// are the engine's; these tests check only the rules laid over them.
#include <algorithm>
#include <cstring>

#include "tests/text_test_support.h"

namespace {

class TextMask : public GdiStarted {
 protected:
  TextStyle style_ = TextStyleMake(nullptr, "Times New Roman", 40, 0, 0, 1);

  Pixels MaskOf(const std::string& text, int x, int level, const std::vector<std::int32_t>& advances, int width) {
    return TakePixels(::TextMask(style_, x, 0, text.c_str(), width, 50, level, advances.data()));
  }
  Pixels CharPicture(char c, int level) { return TakePixels(TextCharMask(style_, static_cast<unsigned char>(c), 0, level)); }
};

Pixels MaskFromRows(const std::vector<std::vector<int>>& rows) {
  DibOwner mask(MaskNew(static_cast<int>(rows[0].size()), static_cast<int>(rows.size())));
  DibLock lock(mask.get());
  for (std::size_t y = 0; y < rows.size(); ++y)
    for (std::size_t x = 0; x < rows[y].size(); ++x)
      DibPutPixel(lock.head, static_cast<int>(x), static_cast<int>(y), static_cast<std::uint32_t>(rows[y][x]));
  return TakePixels(MaskDilate(mask.get()));
}

// Largest low byte in the 3x3 square around (x, y) of p.
int MaxAround(const Pixels& p, int x, int y) {
  int best = 0;
  for (int ny = y - 1; ny <= y + 1; ++ny)
    for (int nx = x - 1; nx <= x + 1; ++nx)
      if (nx >= 0 && ny >= 0 && nx < p.width && ny < p.height) best = std::max(best, p.At(nx, ny) & 0xFF);
  return best;
}

TEST(MaskDilate, IsAThreeByThreeMaximumThatDropsWhatFallsOutside) {
  Pixels dilated = MaskFromRows({{200, 0, 0, 0, 0},  //
                                 {0, 0, 0, 0, 0},
                                 {0, 0, 0, 90, 0},
                                 {0, 0, 0, 0, 120}});
  EXPECT_EQ(dilated.values, (std::vector<std::int32_t>{200, 200, 0,  0,  0,  200, 200, 90, 90, 90,  //
                                                       0,   0,   90, 120, 120, 0,  0,  90, 120, 120}));
}

TEST_F(TextMask, GlyphsMergeByMaximumNeverByAddition) {
  int width = 0, height = 0;
  for (int level : {255, 128}) {
    Pixels single = MaskOf("A", 0, level, AdvancesOf(style_, "A", 100, &width, &height), 60);
    // Two copies laid on the same place give exactly one copy.
    Pixels stacked = MaskOf("AA", 0, level, {0, 0}, 60);
    EXPECT_EQ(stacked.values, single.values) << "level " << level;
    // Overlapping boxes: each pixel is the larger of the two glyphs there.
    Pixels pair = MaskOf("AV", 0, level, {8, 0}, 60);
    Pixels a = CharPicture('A', level);
    Pixels v = CharPicture('V', level);
    for (int y = 0; y < 50; ++y)
      for (int x = 0; x < 60; ++x) {
        int fromA = x < a.width && y < a.height ? a.At(x, y) & 0xFF : 0;
        int fromV = x >= 8 && x - 8 < v.width && y < v.height ? v.At(x - 8, y) & 0xFF : 0;
        ASSERT_EQ(pair.At(x, y), std::max(fromA, fromV)) << x << "," << y;
      }
  }
}

TEST_F(TextMask, LevelScalesCoverageAndZeroIsBlank) {
  Pixels full = CharPicture('R', 255);
  Pixels half = CharPicture('R', 128);
  ASSERT_EQ(full.values.size(), half.values.size());
  for (std::size_t i = 0; i < full.values.size(); ++i) {
    // All three channels carry the level, and the level is multiplied in.
    EXPECT_EQ(half.values[i], (half.values[i] & 0xFF) * 0x010101);
    EXPECT_LE(half.values[i] & 0xFF, 128);
    EXPECT_NEAR(half.values[i] & 0xFF, (full.values[i] & 0xFF) * 128 / 255, 1);
  }
  EXPECT_TRUE(std::any_of(full.values.begin(), full.values.end(), [](std::int32_t v) { return v != 0; }));
  int width = 0, height = 0;
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Rent", 100, &width, &height);
  Pixels blank = MaskOf("Rent", 0, 0, advances, width);
  EXPECT_TRUE(std::all_of(blank.values.begin(), blank.values.end(), [](std::int32_t v) { return v == 0; }));
}

TEST_F(TextMask, NegativeXLosesWhatFallsOffAndNothingWraps) {
  int width = 0, height = 0;
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Hi", 100, &width, &height);
  const int canvas = width + 30;
  Pixels placed = MaskOf("Hi", 0, 255, advances, canvas);
  Pixels shifted = MaskOf("Hi", -10, 255, advances, canvas);
  for (int y = 0; y < 50; ++y)
    for (int x = 0; x < canvas; ++x) {
      int expected = x + 10 < canvas ? placed.At(x + 10, y) : 0;
      ASSERT_EQ(shifted.At(x, y), expected) << x << "," << y;
    }
  // The cut-off part really had ink, so something was lost.
  int lost = 0;
  for (int y = 0; y < 50; ++y)
    for (int x = 0; x < 10; ++x) lost += placed.At(x, y);
  EXPECT_GT(lost, 0);
}

TEST_F(TextMask, TrailingBlankAddsAdvanceButNoPixels) {
  int widthA = 0, widthWithBlank = 0, height = 0;
  AdvancesOf(style_, "A", 100, &widthA, &height);
  std::vector<std::int32_t> advances = AdvancesOf(style_, "A ", 100, &widthWithBlank, &height);
  EXPECT_GT(advances[1], 0);
  EXPECT_EQ(widthWithBlank, widthA + advances[1]);
  EXPECT_EQ(MaskOf("A ", 3, 255, advances, widthWithBlank + 6).values,
            MaskOf("A", 3, 255, advances, widthWithBlank + 6).values);
}

// The outline holds the complement of coverage on the glyphs (0 under full
// cover, 55 under 200) and elsewhere the dilation of the glyphs at their level;
// cover and atLevel sit at (shift, shift) in the ring.
void ExpectRing(const Pixels& ring, const Pixels& cover, const Pixels& atLevel, int shift) {
  int full = 0, soft = 0;
  for (int y = 0; y < ring.height; ++y)
    for (int x = 0; x < ring.width; ++x) {
      int cx = x - shift, cy = y - shift;
      int source = cx >= 0 && cy >= 0 && cx < cover.width && cy < cover.height ? cover.At(cx, cy) & 0xFF : 0;
      ASSERT_EQ(ring.At(x, y), source != 0 ? 255 - source : MaxAround(atLevel, cx, cy)) << x << "," << y;
      full += source == 255;
      soft += source != 0 && source < 255;
    }
  EXPECT_GT(full, 0);
  EXPECT_GT(soft, 0);
}

TEST_F(TextMask, OutlineIsTheRingAroundTheGlyphs) {
  int width = 0, height = 0;
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Ring", 90, &width, &height);
  Pixels cover = MaskOf("Ring", 2, 255, advances, width + 4);
  ExpectRing(TakePixels(TextOutlineMask(style_, 2, 0, "Ring", width + 4, 50, advances.data())), cover, cover, 0);
  // A single character's ring keeps a one-pixel margin.
  Pixels atLevel = CharPicture('O', 160);
  Pixels ring = TakePixels(CharOutlineMask(style_, 'O', 160));
  ASSERT_EQ(ring.width, atLevel.width + 2);
  ASSERT_EQ(ring.height, atLevel.height + 2);
  ExpectRing(ring, CharPicture('O', 255), atLevel, 1);
}

class TextMeasurement : public GdiStarted {
 protected:
  TextStyle style_ = TextStyleMake(nullptr, "TIMES NEW ROMAN", 54, 1, 0, 1);
};

TEST_F(TextMeasurement, CharacterSpaceScalesAdvancesWithTruncationButNotTheHeight) {
  FontMetrics metrics{};
  ASSERT_EQ(FontMetricsOf(&style_.logfont, &metrics), 1);
  const std::string text = "This space for rent... ";
  int oddSeen = 0;
  for (int space : {50, 90, 100, 150}) {
    int width = 0, height = 0;
    std::vector<std::int32_t> advances = AdvancesOf(style_, text, space, &width, &height);
    EXPECT_EQ(height, metrics.height);  // the cell height, not that of a measured box
    int sum = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char single[2] = {text[i], '\0'};
      int measured = MeasuredWidth(style_, single);
      oddSeen += measured % 2;
      ASSERT_EQ(advances[i], measured * space / 100) << space << " '" << text[i] << "'";
      sum += advances[i];
    }
    EXPECT_EQ(width, sum);
  }
  EXPECT_GT(oddSeen, 0);  // some halving really truncated
  int width = -1, height = -1;
  TextMeasure(nullptr, "", style_, 90, &width, &height, nullptr);
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, metrics.height);
}

TEST_F(TextMeasurement, AccentCompensationMeasuresThePlainLetter) {
  int width = 0, height = 0;
  // Sharp s folds to B, which is much wider in this face.
  EXPECT_EQ(AdvancesOf(style_, "\xDF", 100, &width, &height, 0)[0], MeasuredWidth(style_, "\xDF"));
  EXPECT_EQ(AdvancesOf(style_, "\xDF", 100, &width, &height, 1)[0], MeasuredWidth(style_, "B"));
  EXPECT_NE(MeasuredWidth(style_, "\xDF"), MeasuredWidth(style_, "B"));
  EXPECT_EQ(AdvancesOf(style_, "\xE9", 100, &width, &height, 1)[0], MeasuredWidth(style_, "e"));
}

TEST(AccentFold, FoldsTheFiftySevenAccentedLettersAndNothingElse) {
  const std::string from =
      "\xC0\xC1\xC2\xC3\xC4\xC5\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD"
      "\xDF\xE0\xE1\xE2\xE3\xE4\xE5\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB"
      "\xFC\xFD\xFF";
  std::string folded;
  for (char c : from) folded.push_back(static_cast<char>(AccentFold(static_cast<unsigned char>(c))));
  EXPECT_EQ(folded, "AAAAAACEEEEIIIINOOOOOOUUUUYBaaaaaaceeeeiiiionoooooouuuuyy");
  int unchanged = 0;
  for (int code = 1; code < 256; ++code)
    unchanged += AccentFold(static_cast<unsigned char>(code)) == code;
  EXPECT_EQ(unchanged, 255 - 57);
}

}  // namespace
