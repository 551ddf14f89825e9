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

// Every shape picture is 8 larger than its box in both directions, the shape
// inset by 4 and by half the pen.
std::intptr_t GdiEllipse(GdiOp* op) {
  int width = op->bounds.right - op->bounds.left + 8;
  int height = op->bounds.bottom - op->bounds.top + 8;
  int pen = op->shapePenWidth;
  int inset = pen / 2 + 4;
  DibHandle picture = GdiEllipsePicture(op, width, height, inset, inset, width - pen - 8, height - pen - 8);
  return reinterpret_cast<std::intptr_t>(picture);
}

constexpr std::uint32_t kLineCapFlat = 0;
constexpr std::uint32_t kLineCapRound = 2;

// The picture is the box of the two ends grown by GdiLineMargin on every side.
std::intptr_t GdiLine(GdiOp* op) {
  int margin = GdiLineMargin(op->lineWidth);
  int left = op->lineX1 < op->lineX2 ? op->lineX1 : op->lineX2;
  int top = op->lineY1 < op->lineY2 ? op->lineY1 : op->lineY2;
  int width = (op->lineX1 < op->lineX2 ? op->lineX2 - op->lineX1 : op->lineX1 - op->lineX2) + 2 * margin;
  int height = (op->lineY1 < op->lineY2 ? op->lineY2 - op->lineY1 : op->lineY1 - op->lineY2) + 2 * margin;
  std::uint32_t startCap = op->lineCapKind == -1  ? op->lineStartCap
                           : op->lineCapKind == 0 ? kLineCapRound
                                                  : kLineCapFlat;
  std::uint32_t endCap = op->lineCapKind == -1 ? op->lineEndCap : op->lineCapKind == 0 ? kLineCapRound : kLineCapFlat;
  DibHandle picture = GdiLinePicture(op, width, height, op->lineX1 - left + margin, op->lineY1 - top + margin,
                                     op->lineX2 - left + margin, op->lineY2 - top + margin, startCap, endCap);
  return reinterpret_cast<std::intptr_t>(picture);
}

struct GdiOpRow {
  std::uint32_t op;
  std::intptr_t (*run)(GdiOp* op);  // null: a picture operation not built yet
};

constexpr GdiOpRow kGdiOps[] = {
    {kGdiStart, GdiStart},     {kGdiStop, GdiStop},         {kGdiLine, GdiLine}, {kGdiEllipse, GdiEllipse},
    {kGdiRectangle, nullptr},  {kGdiPolygon, nullptr},      {kGdiText, GdiText}, {kGdiGradient, nullptr},
};

}  // namespace

std::intptr_t GdiCommand(GdiOp* op) {
  for (const GdiOpRow& row : kGdiOps)
    if (row.op == op->op) return row.run != nullptr ? row.run(op) : 0;
  return 0;
}

int GdiLineMargin(int lineWidth) { return lineWidth + 4 + lineWidth / 2; }

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
