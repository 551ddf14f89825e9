// The drawing service: one entry point, GdiCommand, that takes an op record
// and returns a status or a new 24-bit DibHandle on a black ground. Behind it
// sits GDI+ in the plug-in and FreeType with fontconfig headless; nothing
// here names a Windows type, so fonts travel as a plain FontSpec.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// A font as a device would be asked for it: the fields of the Windows
// LOGFONTA, in its order and layout, so the plug-in can hand it over as is.
struct FontSpec {
  std::int32_t height;  // above 0: cell height in pixels; below 0: em height
  std::int32_t width;
  std::int32_t escapement;
  std::int32_t orientation;
  std::int32_t weight;  // 400 normal, 700 bold
  std::uint8_t italic;
  std::uint8_t underline;
  std::uint8_t strikeOut;
  std::uint8_t charSet;
  std::uint8_t outPrecision;
  std::uint8_t clipPrecision;
  std::uint8_t quality;
  std::uint8_t pitchAndFamily;
  char faceName[32];
};
static_assert(sizeof(FontSpec) == 60);
static_assert(offsetof(FontSpec, weight) == 16 && offsetof(FontSpec, italic) == 20);
static_assert(offsetof(FontSpec, pitchAndFamily) == 27 && offsetof(FontSpec, faceName) == 28);

constexpr std::uint8_t kDefaultCharset = 1;

// The font the generators make: the given height, width 0, weight 400 or 700,
// italic as asked, default character set, everything else 0.
FontSpec FontSpecMake(const char* face, int height, int bold, int italic);

// The text metrics of a font that measurement needs, in pixels.
struct FontMetrics {
  std::int32_t height;  // cell height: ascent plus descent
  std::int32_t ascent;
  std::int32_t descent;
};

// Metrics of the font as the device realises it; 0 if it cannot be made.
int FontMetricsOf(const FontSpec* font, FontMetrics* metrics);

enum GdiOpCode : std::uint32_t {
  kGdiStart = 1,
  kGdiStop = 2,
  kGdiLine = 3,
  kGdiEllipse = 4,
  kGdiRectangle = 5,
  kGdiPolygon = 6,
  kGdiText = 7,
  kGdiGradient = 8,
};

enum GdiTextMode : std::uint32_t {
  kTextMeasure = 0,
  kTextOnContext = 1,
  kTextRaster = 2,
  kTextOutlinePath = 3,
  kTextFilledPath = 4,
};

// A new zeroed 24-bit bitmap open for filled shapes, as a device context on
// a bitmap is: operations 4, 5 and 6 with the canvas set draw into it.
struct GdiCanvas;

// One request. The caller clears the whole record and sets what the
// operation reads.
struct GdiOp {
  std::uint64_t token;  // written by start, read by stop
  void* owner;          // the dialog the drawing is for; not read
  DibRect bounds;       // the shape's box
  std::uint32_t op;
  std::uint32_t depth;  // of the mask the caller wants; not read
  std::uint32_t level;  // brush alpha of drawing on a context
  std::uint8_t palette[kPaletteBytes];  // the caller's grey ramp; not read
  std::int32_t antialias;  // above 0: smooth drawing
  std::int32_t lineX1, lineY1, lineX2, lineY2;
  std::int32_t lineWidth;
  std::int32_t lineCapKind;  // -1: the two caps below; 0: round; other: flat
  std::uint32_t lineColour;
  std::uint32_t lineStartCap, lineEndCap;
  std::int32_t shapePenWidth;
  std::uint32_t shapeFill;     // -1: none
  std::uint32_t shapeOutline;  // -1: none
  std::uint32_t shapeCorner;   // rounding in per cent
  std::int32_t textX, textY;
  std::int32_t textWidth, textHeight;  // results: the measured box
  std::int32_t fontSize;
  std::int32_t fontBold, fontItalic, fontUnderline;
  const char* fontFace;
  const char* text;  // 8-bit, in the system's code page
  std::uint32_t textColour;
  const FontSpec* fontLogfont;  // null: made from fontFace, fontSize and the flags
  std::uint32_t textMode;
  std::uint32_t textPenWidth;
  std::uint32_t polygonCount;
  const std::int32_t* polygonPoints;
  std::uint32_t polygonPenWidth;
  std::uint32_t polygonFill, polygonOutline;
  std::int32_t gradientWidth, gradientHeight;
  std::uint32_t gradientKind;
  std::uint32_t gradientColour1, gradientColour2;
  std::int32_t gradientAngle;
  std::int32_t gradientCentreX, gradientCentreY;
  // With a canvas, ellipse (4), rectangle (5) and polygon (6) fill their
  // shape there in shapeFill or polygonFill with no outline, and a line (3)
  // is drawn there with a pen of lineWidth in lineColour, by the platform's
  // GDI rules, each giving 1; the picture forms are not built.
  GdiCanvas* canvas;
};

// Code outside 1 to 8: 0. Start and stop: 1. Text: 1 when measuring, the
// new DibHandle when rasterising. A shape on a canvas: 1 when drawn. Every
// other picture: a DibHandle or 0. Start must come before any other operation, and stop after the last.
std::intptr_t GdiCommand(GdiOp* op);

// Whether memory ran out inside the drawing service since the last call, so
// that text measured or drawn may be missing from what was made. Asking
// clears it.
bool GdiTakeOutOfMemory();

// A canvas of width by height, or null. The block stays black until the close.
GdiCanvas* GdiCanvasOpen(int width, int height);
// Ends the drawing: the block of what was drawn, owned by the caller, or null
// if it could not be had.
DibHandle GdiCanvasClose(GdiCanvas* canvas);

// One filled shape with no outline on a canvas, through GdiCommand: 1 if drawn.
int GdiCanvasPolygon(GdiCanvas* canvas, const std::int32_t* points, int count, std::uint32_t colour);
int GdiCanvasEllipse(GdiCanvas* canvas, const DibRect& box, std::uint32_t colour);
int GdiCanvasRectangle(GdiCanvas* canvas, const DibRect& box, std::uint32_t colour);
// A line of a solid pen of penWidth with round ends, so that lines meeting at
// a point join round: 1 if drawn.
int GdiCanvasLine(GdiCanvas* canvas, int x1, int y1, int x2, int y2, int penWidth, std::uint32_t colour);

// The font a text operation uses: the record's own, else one made from its
// face, size and style flags.
FontSpec GdiOpFont(const GdiOp* op);
