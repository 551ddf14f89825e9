// Text as 8-bit masks. Each character is measured alone, rasterised alone
// and placed by an advance computed here, so effects can space, move or
// change single letters. Text is 8-bit in the system's code page.
#pragma once

#include <cstdint>

#include "raster/dib.h"
#include "raster/gdi_command.h"

// What every text function receives, as the generator read it from the dialog.
struct TextStyle {
  void* dialog;
  int antialias;  // MainAntialias
  int fontSize;   // MainFontSize
  int bold;       // MainFontBold
  int italic;     // MainFontItalic
  const char* face;
  FontSpec logfont;  // the font as made for the text
};

// The style of a font made as the generators make it: the font size is the
// cell height.
TextStyle TextStyleMake(void* dialog, const char* face, int fontSize, int bold, int italic, int antialias);

// A zeroed 8-bit mask with the grey colour table; null on failure.
DibHandle MaskNew(int width, int height);

// Width of the text with each character's advance scaled by characterSpace
// per cent (truncated), and the font's cell height. advances, if given, has
// one entry per byte. With the setting AccentCompensation on, an accented
// letter measures as its plain letter. Always 1.
int TextMeasure(void* dialog, const char* text, const TextStyle& style, int characterSpace, int* width, int* height,
                std::int32_t* advances);

// One character on black in grey level: 24-bit, of its measured box; the
// red channel is coverage times level. Null on failure.
DibHandle TextCharMask(const TextStyle& style, unsigned char character, int cellHeight, int level);

// A width by height mask with the characters laid from (x, y) by advances,
// merged by maximum. Null on failure.
DibHandle TextMask(const TextStyle& style, int x, int y, const char* text, int width, int height, int level,
                   const std::int32_t* advances);

// A text laid once, as TextMask lays it, on a mask that holds every character
// picture whole; the text's left top lies at (originX, originY) in it. Frames
// that only move the text take their part of it instead of laying it again.
struct LaidText {
  DibOwner mask;
  int originX;
  int originY;
};

// Lays the text at level into laid. 0 on failure.
int TextLay(const TextStyle& style, const char* text, int level, const std::int32_t* advances, LaidText* laid);

// The width by height part of a laid text with the text's left top at
// (x, y): the same mask TextMask gives for that place and size. Null on
// failure.
DibHandle LaidTextPart(const LaidText& laid, int x, int y, int width, int height);

// 3 by 3 maximum filter of a mask. Null on failure.
DibHandle MaskDilate(DibHandle mask);

// The one-pixel ring around the text, with the complement of coverage on
// the glyphs' soft edge and 0 where they cover fully. Null on failure.
DibHandle TextOutlineMask(const TextStyle& style, int x, int y, const char* text, int width, int height,
                          const std::int32_t* advances);

// The same ring around a full-cover text mask. Null on failure.
DibHandle MaskRing(DibHandle cover);

// The same ring around one character at level, in a mask with a margin of
// one pixel all round. Null on failure.
DibHandle CharOutlineMask(const TextStyle& style, unsigned char character, int level);

// The plain letter an accented code measures as, or the code itself.
unsigned char AccentFold(unsigned char code);
