// The headless engine behind the drawing service: faces through fontconfig,
// the cell-height meaning of a font height, and the exact measuring rules:
// a string is padded by a sixth of the em on each side, trailing blanks are
// left out, and a character's advance is its box less a lone blank's.
#include <cmath>

#include "tests/text_test_support.h"

namespace {

using FreeTypeText = GdiStarted;

TextStyle Style(const char* face, int size, int bold = 0, int italic = 0, int antialias = 1) {
  return TextStyleMake(nullptr, face, size, bold, italic, antialias);
}

// Liberation Serif: units per em 2048, Windows ascent 1825 and descent 443,
// line spacing 2355.
constexpr double kSerifEmAt54 = 54.0 * 2048 / (1825 + 443);

TEST_F(FreeTypeText, PositiveHeightIsTheCellAndNegativeTheEm) {
  TextStyle cell = Style("TIMES NEW ROMAN", 54);
  FontMetrics metrics{};
  ASSERT_EQ(FontMetricsOf(&cell.logfont, &metrics), 1);
  EXPECT_EQ(metrics.height, 54);
  EXPECT_EQ(metrics.ascent, std::lround(1825 * kSerifEmAt54 / 2048));
  EXPECT_EQ(metrics.ascent + metrics.descent, 54);
  // A lone blank is the padding alone: a sixth of the em on each side.
  Pixels blank = RasterOf(cell, " ", 0xFFFFFF);
  EXPECT_EQ(blank.width, static_cast<int>(kSerifEmAt54 / 3));  // 16
  EXPECT_EQ(blank.height, static_cast<int>(kSerifEmAt54 * 2355 / 2048));  // 56: line spacing

  TextStyle em = cell;
  em.logfont.height = -30;
  ASSERT_EQ(FontMetricsOf(&em.logfont, &metrics), 1);
  EXPECT_EQ(metrics.height, 27 + 6);  // rounded Windows ascent and descent at em 30
  EXPECT_EQ(RasterOf(em, " ", 0xFFFFFF).width, 10);
}

TEST_F(FreeTypeText, MeasureSubtractsALoneBlankAboveCode32Only) {
  TextStyle style = Style("TIMES NEW ROMAN", 54);
  int blankBox = RasterOf(style, " ", 0xFFFFFF).width;
  EXPECT_EQ(MeasuredWidth(style, " "), blankBox);
  EXPECT_EQ(MeasuredWidth(style, "\t"), blankBox);  // a control character has no glyph advance here
  for (const char* text : {"A", "W", "i", "."})
    EXPECT_EQ(MeasuredWidth(style, text), RasterOf(style, text, 0xFFFFFF).width - blankBox) << text;
  // The advance is the glyph's own, whole pixels: 'A' is 1479 units wide.
  EXPECT_NEAR(MeasuredWidth(style, "A"), 1479 * kSerifEmAt54 / 2048, 1.0);
  // Trailing blanks are left out of a box.
  EXPECT_EQ(RasterOf(style, "A  ", 0xFFFFFF).width, RasterOf(style, "A", 0xFFFFFF).width);
}

TEST_F(FreeTypeText, FaceNamesResolveThroughFontconfigWithStyles) {
  TextStyle windowsName = Style("TIMES NEW ROMAN", 54);
  EXPECT_EQ(RasterOf(windowsName, "Rag", 0xFFFFFF).values,
            RasterOf(Style("Liberation Serif", 54), "Rag", 0xFFFFFF).values);
  EXPECT_NE(MeasuredWidth(windowsName, "a"), MeasuredWidth(Style("Arial", 54), "a"));
  // Bytes are Windows-1252: 0x80 is the euro sign, 0xE9 e acute,
  // and 0x81 has no character.
  EXPECT_NE(RasterOf(windowsName, "\x80", 0xFFFFFF).values, RasterOf(windowsName, "\x81", 0xFFFFFF).values);
  EXPECT_NE(RasterOf(windowsName, "\xE9", 0xFFFFFF).values, RasterOf(windowsName, "e", 0xFFFFFF).values);
  // Serif 'a' is 909 units, bold and italic 'a' 1024.
  EXPECT_NEAR(MeasuredWidth(windowsName, "a"), 909 * kSerifEmAt54 / 2048, 1.0);
  EXPECT_NEAR(MeasuredWidth(Style("TIMES NEW ROMAN", 54, 1), "a"), 1024 * kSerifEmAt54 / 2048, 1.0);
  EXPECT_NEAR(MeasuredWidth(Style("TIMES NEW ROMAN", 54, 0, 1), "a"), 1024 * kSerifEmAt54 / 2048, 1.0);

}

TEST_F(FreeTypeText, RasterScalesTheColourByCoverageOrIsTwoValuedWithoutAntialias) {
  constexpr std::uint32_t kColour = 0x3080F0;  // red F0, green 80, blue 30
  auto channel = [](std::uint32_t value, int shift) { return static_cast<int>(value >> shift & 0xFF); };

  Pixels smooth = RasterOf(Style("TIMES NEW ROMAN", 54), "A", kColour);
  int greys = 0;
  for (std::int32_t value : smooth.values) {
    // Some one coverage gives all three channels.
    bool consistent = false;
    for (int c = 0; c < 256 && !consistent; ++c)
      consistent = channel(kColour, 0) * c / 255 == channel(value, 0) &&
                   channel(kColour, 8) * c / 255 == channel(value, 8) &&
                   channel(kColour, 16) * c / 255 == channel(value, 16);
    ASSERT_TRUE(consistent) << std::hex << value;
    greys += value != 0 && value != static_cast<std::int32_t>(kColour);
  }
  EXPECT_GT(greys, 0);

  Pixels sharp = RasterOf(Style("TIMES NEW ROMAN", 54, 0, 0, 0), "A", kColour);
  EXPECT_EQ(sharp.width, smooth.width);
  int set = 0;
  for (std::int32_t value : sharp.values) {
    ASSERT_TRUE(value == 0 || value == static_cast<std::int32_t>(kColour)) << std::hex << value;
    set += value != 0;
  }
  EXPECT_GT(set, 50);
}

TEST_F(FreeTypeText, OnlyStartStopAndTextAreServed) {
  for (std::uint32_t code : {0u, 3u, 8u, 9u}) {
    GdiOp op{};
    op.op = code;
    EXPECT_EQ(GdiCommand(&op), 0) << code;
  }
  TextStyle style = Style("TIMES NEW ROMAN", 20);
  GdiOp unbuiltMode = CharTextOp(style, "A", kTextOutlinePath);
  EXPECT_EQ(GdiCommand(&unbuiltMode), 0);
  // A second start and its stop leave the first one's engine running.
  GdiOp again{};
  again.op = kGdiStart;
  ASSERT_EQ(GdiCommand(&again), 1);
  again.op = kGdiStop;
  EXPECT_EQ(GdiCommand(&again), 1);
  EXPECT_GT(MeasuredWidth(style, "A"), 0);
}

}  // namespace
