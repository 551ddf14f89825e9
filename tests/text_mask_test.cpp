// Mask building on top of the drawing service, in both builds: merging,
// placement, the outline ring and the accent table. Pixel-exact glyph shapes
// are the engine's; these tests check only the rules laid over them.
#include <algorithm>
#include <utility>

#include "tests/text_test_support.h"

namespace {

class TextMask : public GdiStarted {
 protected:
  TextStyle style_ = TextStyleMake(nullptr, "Times New Roman", 40, 0, 0, 1);
  TextStyle measured_ = TextStyleMake(nullptr, "TIMES NEW ROMAN", 54, 1, 0, 1);
  int width_ = 0, height_ = 0;

  Pixels MaskOf(const std::string& text, int x, int level, const std::vector<std::int32_t>& advances, int canvas) {
    return TakePixels(::TextMask(style_, x, 0, text.c_str(), canvas, 50, level, advances.data()));
  }
  Pixels CharPicture(char c, int level) { return TakePixels(TextCharMask(style_, static_cast<unsigned char>(c), 0, level)); }
};

// Largest low byte in the 3x3 square around (x, y) of p.
int MaxAround(const Pixels& p, int x, int y) {
  int best = 0;
  for (int ny = y - 1; ny <= y + 1; ++ny)
    for (int nx = x - 1; nx <= x + 1; ++nx)
      if (nx >= 0 && ny >= 0 && nx < p.width && ny < p.height) best = std::max(best, p.At(nx, ny) & 0xFF);
  return best;
}

TEST(MaskDilate, IsAThreeByThreeMaximumThatDropsWhatFallsOutside) {
  DibOwner mask(MaskNew(5, 4));
  {
    DibLock lock(mask.get());
    DibPutPixel(lock.head, 0, 0, 200);
    DibPutPixel(lock.head, 3, 2, 90);
    DibPutPixel(lock.head, 4, 3, 120);
  }
  Pixels dilated = TakePixels(MaskDilate(mask.get()));
  EXPECT_EQ(dilated.values, (std::vector<std::int32_t>{200, 200, 0,  0,  0,  200, 200, 90, 90, 90,  //
                                                       0,   0,   90, 120, 120, 0,  0,  90, 120, 120}));
}

TEST_F(TextMask, GlyphsMergeByMaximumNeverByAddition) {
  for (int level : {255, 128}) {
    Pixels single = MaskOf("A", 0, level, AdvancesOf(style_, "A", 100, &width_, &height_), 60);
    // Two copies laid on the same place give exactly one copy.
    Pixels stacked = MaskOf("AA", 0, level, {0, 0}, 60);
    EXPECT_EQ(stacked.values, single.values) << "level " << level;
    // Overlapping boxes: each pixel is the larger of the two glyphs there,
    // wherever the pair lies, cut off on any side.
    Pixels a = CharPicture('A', level);
    Pixels v = CharPicture('V', level);
    const std::int32_t advances[] = {8, 0};
    for (auto [left, top] : {std::pair(0, 0), std::pair(-5, -7), std::pair(20, 9)}) {
      Pixels pair = TakePixels(::TextMask(style_, left, top, "AV", 40, 30, level, advances));
      for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
          int ax = x - left, vx = ax - 8, cy = y - top;
          int fromA = cy >= 0 && cy < a.height && ax >= 0 && ax < a.width ? a.At(ax, cy) & 0xFF : 0;
          int fromV = cy >= 0 && cy < v.height && vx >= 0 && vx < v.width ? v.At(vx, cy) & 0xFF : 0;
          ASSERT_EQ(pair.At(x, y), std::max(fromA, fromV)) << x << "," << y << " at " << left << "," << top;
        }
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
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Rent", 100, &width_, &height_);
  Pixels blank = MaskOf("Rent", 0, 0, advances, width_);
  EXPECT_TRUE(std::all_of(blank.values.begin(), blank.values.end(), [](std::int32_t v) { return v == 0; }));
}

TEST_F(TextMask, NegativeXLosesWhatFallsOffAndNothingWraps) {
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Hi", 100, &width_, &height_);
  const int canvas = width_ + 30;
  Pixels placed = MaskOf("Hi", 0, 255, advances, canvas);
  Pixels shifted = MaskOf("Hi", -10, 255, advances, canvas);
  int lost = 0;  // ink in the cut-off part, so something really was lost
  for (int y = 0; y < 50; ++y)
    for (int x = 0; x < canvas; ++x) {
      int expected = x + 10 < canvas ? placed.At(x + 10, y) : 0;
      ASSERT_EQ(shifted.At(x, y), expected) << x << "," << y;
      lost += x < 10 ? placed.At(x, y) : 0;
    }
  EXPECT_GT(lost, 0);
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
  std::vector<std::int32_t> advances = AdvancesOf(style_, "Ring", 90, &width_, &height_);
  Pixels cover = MaskOf("Ring", 2, 255, advances, width_ + 4);
  ExpectRing(TakePixels(TextOutlineMask(style_, 2, 0, "Ring", width_ + 4, 50, advances.data())), cover, cover, 0);
  // A single character's ring keeps a one-pixel margin.
  Pixels atLevel = CharPicture('O', 160);
  Pixels ring = TakePixels(CharOutlineMask(style_, 'O', 160));
  ASSERT_EQ(std::pair(ring.width, ring.height), std::pair(atLevel.width + 2, atLevel.height + 2));
  ExpectRing(ring, CharPicture('O', 255), atLevel, 1);
}

TEST_F(TextMask, CharacterSpaceScalesAdvancesWithTruncationButNotTheHeight) {
  FontMetrics metrics{};
  ASSERT_EQ(FontMetricsOf(&measured_.logfont, &metrics), 1);
  const std::string text = "This space for rent... ";
  int oddSeen = 0;
  for (int space : {50, 90, 100, 150}) {
    std::vector<std::int32_t> advances = AdvancesOf(measured_, text, space, &width_, &height_);
    EXPECT_EQ(height_, metrics.height);  // the cell height, not that of a measured box
    int sum = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char single[2] = {text[i], '\0'};
      int measured = MeasuredWidth(measured_, single);
      oddSeen += measured % 2;
      ASSERT_EQ(advances[i], measured * space / 100) << space << " '" << text[i] << "'";
      sum += advances[i];
    }
    EXPECT_EQ(width_, sum);
  }
  EXPECT_GT(oddSeen, 0);  // some halving really truncated
  width_ = height_ = -1;
  TextMeasure(nullptr, "", measured_, 90, &width_, &height_, nullptr);
  EXPECT_EQ(std::pair(width_, height_), std::pair(0, metrics.height));
}

TEST_F(TextMask, AccentCompensationMeasuresThePlainLetter) {
  // Sharp s folds to B, which is much wider in this face.
  EXPECT_EQ(AdvancesOf(measured_, "\xDF", 100, &width_, &height_, 0)[0], MeasuredWidth(measured_, "\xDF"));
  EXPECT_EQ(AdvancesOf(measured_, "\xDF", 100, &width_, &height_, 1)[0], MeasuredWidth(measured_, "B"));
  EXPECT_NE(MeasuredWidth(measured_, "\xDF"), MeasuredWidth(measured_, "B"));
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
  for (int code = 1; code < 256; ++code) unchanged += AccentFold(static_cast<unsigned char>(code)) == code;
  EXPECT_EQ(unchanged, 255 - 57);
}

}  // namespace
