// The GDI+ engine behind the drawing service, run under Wine. Wine 8's GDI+
// departs from Windows in ways these tests must not paper over, so they
// check only what holds on both: the single-bit text hint is ignored
// (pictures stay grey with antialias off), and a 54-pixel font reports a
// cell height of 55. Wine also counts trailing blanks in a measured box; the
// engine takes them out again, so a lone blank is the padding alone and
// advances are the font's own, as on Windows.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "tests/text_test_support.h"

namespace {

class GdiPlusText : public GdiStarted {
 protected:
  static TextStyle Style(const char* face, int size, int bold = 0, int italic = 0, int antialias = 1) {
    return TextStyleMake(nullptr, face, size, bold, italic, antialias);
  }
};

TEST_F(GdiPlusText, OnlyStartStopAndTextAreServed) {
  for (std::uint32_t code : {0u, 3u, 8u, 9u}) {
    GdiOp op{};
    op.op = code;
    EXPECT_EQ(GdiCommand(&op), 0) << code;
  }
  GdiOp unbuiltMode = CharTextOp(Style("Times New Roman", 20), "A", kTextOutlinePath);
  EXPECT_EQ(GdiCommand(&unbuiltMode), 0);
}

TEST_F(GdiPlusText, CellHeightComesFromTheDeviceFont) {
  FontMetrics metrics{};
  TextStyle style = Style("TIMES NEW ROMAN", 32);
  ASSERT_EQ(FontMetricsOf(&style.logfont, &metrics), 1);
  EXPECT_EQ(metrics.height, 32);
  EXPECT_EQ(metrics.ascent + metrics.descent, metrics.height);
  style = Style("TIMES NEW ROMAN", 54);
  ASSERT_EQ(FontMetricsOf(&style.logfont, &metrics), 1);
  EXPECT_GE(metrics.height, 54);  // Wine: 55, Windows: 54
  EXPECT_LE(metrics.height, 55);
}

TEST_F(GdiPlusText, MeasureSubtractsALoneBlankAboveCode32Only) {
  TextStyle style = Style("TIMES NEW ROMAN", 54);
  int blankBox = RasterOf(style, " ", 0xFFFFFF).width;
  EXPECT_GT(blankBox, 0);
  EXPECT_EQ(MeasuredWidth(style, " "), blankBox);
  for (const char* text : {"A", "W", "i"}) {
    int box = RasterOf(style, text, 0xFFFFFF).width;
    EXPECT_EQ(MeasuredWidth(style, text), box - blankBox) << text;
    EXPECT_GT(box - blankBox, 0) << text;
  }
  EXPECT_GT(MeasuredWidth(style, "W"), MeasuredWidth(style, "i"));
}

// GDI's advance width of one character in the style's font.
int GdiAdvance(const TextStyle& style, char c) {
  LOGFONTA logfont;
  std::memcpy(&logfont, &style.logfont, sizeof logfont);
  HFONT font = CreateFontIndirectA(&logfont);
  HDC dc = GetDC(nullptr);
  HGDIOBJ previous = SelectObject(dc, font);
  INT width = 0;
  GetCharWidth32A(dc, static_cast<unsigned char>(c), static_cast<unsigned char>(c), &width);
  SelectObject(dc, previous);
  ReleaseDC(nullptr, dc);
  DeleteObject(font);
  return width;
}

TEST_F(GdiPlusText, AdvancesAreTheFontsOwnAndABlankIsThePaddingAlone) {
  TextStyle style = Style("TIMES NEW ROMAN", 54, 1);
  for (char c : {'W', 'i', 'n', 'e', 'U', 'I'}) {
    char text[2] = {c, 0};
    EXPECT_NEAR(MeasuredWidth(style, text), GdiAdvance(style, c), 2) << c;
  }
  // The box of a letter is its advance plus the padding; a blank's box is
  // that padding and no more.
  int paddedW = RasterOf(style, "W", 0xFFFFFF).width;
  EXPECT_NEAR(MeasuredWidth(style, " "), paddedW - GdiAdvance(style, 'W'), 2);
}

TEST_F(GdiPlusText, WindowsFaceNamesAndStylesReachTheirFonts) {
  TextStyle windowsName = Style("TIMES NEW ROMAN", 54);
  TextStyle sans = Style("Arial", 54);
  EXPECT_NE(RasterOf(windowsName, "a", 0xFFFFFF).values, RasterOf(sans, "a", 0xFFFFFF).values);
  // Serif 'a' is 909 units, bold 'a' 1024: bold is wider.
  EXPECT_GT(MeasuredWidth(Style("TIMES NEW ROMAN", 54, 1), "a"), MeasuredWidth(windowsName, "a"));
  EXPECT_NE(RasterOf(Style("TIMES NEW ROMAN", 54, 0, 1), "l", 0xFFFFFF).values,
            RasterOf(windowsName, "l", 0xFFFFFF).values);
}

TEST_F(GdiPlusText, RasterIsTheColourScaledByCoverageOnBlack) {
  Pixels smooth = RasterOf(Style("TIMES NEW ROMAN", 54), "A", 0xFFFFFF);
  int greys = 0;
  int full = 0;
  for (std::int32_t value : smooth.values) {
    ASSERT_EQ(value, (value & 0xFF) * 0x010101);  // grey: all channels alike
    greys += (value & 0xFF) != 0 && (value & 0xFF) != 255;
    full += value == 0xFFFFFF;
  }
  EXPECT_GT(greys, 0);
  EXPECT_GT(full, 0);
  // Antialias off asks for single-bit coverage; Wine ignores the hint, so
  // only the size of the picture is checked here.
  Pixels sharp = RasterOf(Style("TIMES NEW ROMAN", 54, 0, 0, 0), "A", 0xFFFFFF);
  EXPECT_EQ(sharp.width, smooth.width);
  EXPECT_EQ(sharp.height, smooth.height);
}

}  // namespace
