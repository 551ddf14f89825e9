// Shared by the text tests: the drawing service started for a whole suite,
// and short ways to ask it about one character.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/settings.h"
#include "raster/gdi_command.h"
#include "raster/text.h"

class GdiStarted : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    GdiOp start{};
    start.op = kGdiStart;
    ASSERT_EQ(GdiCommand(&start), 1);
    token_ = start.token;
  }
  static void TearDownTestSuite() {
    GdiOp stop{};
    stop.op = kGdiStop;
    stop.token = token_;
    GdiCommand(&stop);
  }
  static inline std::uint64_t token_ = 0;
};

// A pixel grid copied out of a bitmap, each pixel as DibGetPixel gives it.
struct Pixels {
  int width = 0, height = 0;
  std::vector<std::int32_t> values;
  std::int32_t At(int x, int y) const { return values[static_cast<std::size_t>(y) * width + x]; }
};

// Copies and frees the bitmap; an empty grid for null.
inline Pixels TakePixels(DibHandle dib) {
  if (dib == nullptr) return {};
  DibOwner owner(dib);
  DibLock lock(dib);
  Pixels pixels{lock.head->biWidth, lock.head->biHeight, {}};
  for (int y = 0; y < pixels.height; ++y)
    for (int x = 0; x < pixels.width; ++x) pixels.values.push_back(DibGetPixel(lock.head, x, y));
  return pixels;
}

// One text operation on a string in the style's font, drawn in white.
inline GdiOp CharTextOp(const TextStyle& style, const char* text, std::uint32_t mode) {
  GdiOp op{};
  op.op = kGdiText;
  op.textMode = mode;
  op.text = text;
  op.textColour = 0xFFFFFF;
  op.antialias = style.antialias;
  op.fontLogfont = &style.logfont;
  return op;
}

// Mode 0 width of a string.
inline int MeasuredWidth(const TextStyle& style, const char* text) {
  GdiOp op = CharTextOp(style, text, kTextMeasure);
  EXPECT_EQ(GdiCommand(&op), 1);
  return op.textWidth;
}

// Mode 2 picture of a string in colour.
inline Pixels RasterOf(const TextStyle& style, const char* text, std::uint32_t colour) {
  GdiOp op = CharTextOp(style, text, kTextRaster);
  op.textColour = colour;
  return TakePixels(reinterpret_cast<DibHandle>(GdiCommand(&op)));
}

// The advances TextMeasure gives for text at a character space, with the
// accent setting as given and put back afterwards.
inline std::vector<std::int32_t> AdvancesOf(const TextStyle& style, const std::string& text, int characterSpace,
                                            int* width, int* height, std::uint32_t accentCompensation = 0) {
  std::vector<std::int32_t> advances(text.size());
  std::uint32_t saved = AccentCompensation;
  AccentCompensation = accentCompensation;
  TextMeasure(nullptr, text.c_str(), style, characterSpace, width, height, advances.data());
  AccentCompensation = saved;
  return advances;
}
