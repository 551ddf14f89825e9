// The drawing service's dispatch and the text rules it keeps on top of the
// engine: a character's advance is its measured box less a blank's, and a
// raster is always of the measured size.
#include "raster/gdi_command.h"

#include <cstring>

#include "raster/gdi_backend.h"

namespace {

// Start and stop report success whatever the engine says; a text operation
// of an engine that did not start simply finds no font.
std::intptr_t GdiStart(GdiOp* op) {
  GdiBackendStart(&op->token);
  return 1;
}

std::intptr_t GdiStop(GdiOp* op) {
  GdiBackendStop(op->token);
  return 1;
}

// The box that the engine reports carries side bearings and padding that a
// following character must not add to; a lone blank measures exactly that
// much, so subtracting it leaves the advance. Blanks and control characters
// keep their plain box.
std::intptr_t TextMeasureMode(GdiOp* op, GdiTextSession* session) {
  if (session == nullptr || static_cast<unsigned char>(op->text[0]) <= 32) return 1;
  int blankWidth = 0;
  int blankHeight = 0;
  GdiTextBox(session, " ", &blankWidth, &blankHeight);
  op->textWidth -= blankWidth;
  return 1;
}

std::intptr_t TextRasterMode(GdiOp* op, GdiTextSession* session) {
  if (session == nullptr) return 0;
  DibHandle picture = GdiTextPicture(session, op->text, op->textWidth, op->textHeight, op->textColour, op->antialias);
  return reinterpret_cast<std::intptr_t>(picture);
}

struct TextModeRow {
  std::uint32_t mode;
  std::intptr_t (*run)(GdiOp* op, GdiTextSession* session);
};

// Drawing on a device context (1) and the outline and filled paths (3, 4)
// have no caller yet and are not built: they give 0.
constexpr TextModeRow kTextModes[] = {
    {kTextMeasure, TextMeasureMode},
    {kTextRaster, TextRasterMode},
};

std::intptr_t GdiText(GdiOp* op) {
  const TextModeRow* row = nullptr;
  for (const TextModeRow& candidate : kTextModes)
    if (candidate.mode == op->textMode) row = &candidate;
  if (row == nullptr || op->text == nullptr) return 0;

  GdiTextSession* session = GdiTextOpen(op);
  op->textWidth = 0;
  op->textHeight = 0;
  if (session != nullptr) GdiTextBox(session, op->text, &op->textWidth, &op->textHeight);
  std::intptr_t result = row->run(op, session);
  GdiTextClose(session);
  return result;
}

// Shapes are drawn only on a canvas; a fill of -1 draws nothing there.
std::intptr_t GdiShape(GdiOp* op) {
  if (op->canvas == nullptr) return 0;
  std::uint32_t fill = op->op == kGdiPolygon ? op->polygonFill : op->shapeFill;
  if (fill == 0xFFFFFFFF) return 1;
  return GdiBackendCanvasFill(op->canvas, op);
}

constexpr std::uint32_t kLineCapRound = 2;

// A line is drawn only on a canvas. Kind 0 is round ends, -1 the start cap's
// kind for both ends, anything else flat.
std::intptr_t GdiLine(GdiOp* op) {
  if (op->canvas == nullptr) return 0;
  bool round = op->lineCapKind == 0 || (op->lineCapKind == -1 && op->lineStartCap == kLineCapRound);
  return GdiBackendCanvasLine(op->canvas, op, round ? 1 : 0);
}

struct GdiOpRow {
  std::uint32_t op;
  std::intptr_t (*run)(GdiOp* op);  // null: a picture operation not built yet
};

constexpr GdiOpRow kGdiOps[] = {
    {kGdiStart, GdiStart},    {kGdiStop, GdiStop},       {kGdiLine, GdiLine}, {kGdiEllipse, GdiShape},
    {kGdiRectangle, GdiShape}, {kGdiPolygon, GdiShape},  {kGdiText, GdiText}, {kGdiGradient, nullptr},
};

}  // namespace

std::intptr_t GdiCommand(GdiOp* op) {
  for (const GdiOpRow& row : kGdiOps)
    if (row.op == op->op) return row.run != nullptr ? row.run(op) : 0;
  return 0;
}

bool GdiTakeOutOfMemory() { return GdiBackendTakeOutOfMemory(); }

GdiCanvas* GdiCanvasOpen(int width, int height) {
  return width > 0 && height > 0 ? GdiBackendCanvasOpen(width, height) : nullptr;
}

DibHandle GdiCanvasClose(GdiCanvas* canvas) { return canvas != nullptr ? GdiBackendCanvasClose(canvas) : nullptr; }

int GdiCanvasPolygon(GdiCanvas* canvas, const std::int32_t* points, int count, std::uint32_t colour) {
  GdiOp op{};
  op.op = kGdiPolygon;
  op.canvas = canvas;
  op.polygonPoints = points;
  op.polygonCount = static_cast<std::uint32_t>(count);
  op.polygonFill = colour;
  op.polygonOutline = 0xFFFFFFFF;
  return static_cast<int>(GdiCommand(&op));
}

namespace {

int GdiCanvasBoxShape(GdiCanvas* canvas, std::uint32_t code, const DibRect& box, std::uint32_t colour) {
  GdiOp op{};
  op.op = code;
  op.canvas = canvas;
  op.bounds = box;
  op.shapeFill = colour;
  op.shapeOutline = 0xFFFFFFFF;
  return static_cast<int>(GdiCommand(&op));
}

}  // namespace

int GdiCanvasEllipse(GdiCanvas* canvas, const DibRect& box, std::uint32_t colour) {
  return GdiCanvasBoxShape(canvas, kGdiEllipse, box, colour);
}

int GdiCanvasLine(GdiCanvas* canvas, int x1, int y1, int x2, int y2, int penWidth, std::uint32_t colour) {
  GdiOp op{};
  op.op = kGdiLine;
  op.canvas = canvas;
  op.lineX1 = x1;
  op.lineY1 = y1;
  op.lineX2 = x2;
  op.lineY2 = y2;
  op.lineWidth = penWidth;
  op.lineColour = colour;
  return static_cast<int>(GdiCommand(&op));
}

int GdiCanvasRectangle(GdiCanvas* canvas, const DibRect& box, std::uint32_t colour) {
  return GdiCanvasBoxShape(canvas, kGdiRectangle, box, colour);
}

FontSpec FontSpecMake(const char* face, int height, int bold, int italic) {
  FontSpec font{};
  font.height = height;
  font.weight = bold != 0 ? 700 : 400;
  font.italic = italic != 0 ? 1 : 0;
  font.charSet = kDefaultCharset;
  std::strncpy(font.faceName, face != nullptr ? face : "", sizeof font.faceName - 1);
  return font;
}

FontSpec GdiOpFont(const GdiOp* op) {
  if (op->fontLogfont != nullptr) return *op->fontLogfont;
  return FontSpecMake(op->fontFace, op->fontSize, op->fontBold, op->fontItalic);
}
