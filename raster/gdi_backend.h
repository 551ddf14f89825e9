// What the drawing service asks of the platform below it: starting and
// stopping the engine, and a text session that measures strings and
// rasterises them with one font. Implemented once with GDI+ and once with
// FreeType and fontconfig.
#pragma once

#include <cstdint>

#include "raster/gdi_command.h"

// 1 on success, with the engine's token; 0 if the engine cannot start.
int GdiBackendStart(std::uint64_t* token);
void GdiBackendStop(std::uint64_t token);

// Whether memory ran out in the engine since the last call: a font, glyph or
// picture that could not be made. Asking clears it.
bool GdiBackendTakeOutOfMemory();

struct GdiTextSession;

// The font of the op and a surface to measure on; null if the engine is not
// started or the font cannot be made.
GdiTextSession* GdiTextOpen(const GdiOp* op);
void GdiTextClose(GdiTextSession* session);

// Box of the string laid out alone at the origin, truncated to whole pixels.
// 0 (and a zero box) if it cannot be measured.
int GdiTextBox(GdiTextSession* session, const char* text, int* width, int* height);

// The canvas behind GdiCanvasOpen and GdiCanvasClose, and one filled shape
// on it: op is 4, 5 or 6 and its fill colour is not -1. 1 if drawn.
GdiCanvas* GdiBackendCanvasOpen(int width, int height);
DibHandle GdiBackendCanvasClose(GdiCanvas* canvas);
int GdiBackendCanvasFill(GdiCanvas* canvas, const GdiOp* op);
// A line (op 3) on the canvas with a solid pen of the op's lineWidth and
// lineColour, with round or flat ends. 1 if drawn.
int GdiBackendCanvasLine(GdiCanvas* canvas, const GdiOp* op, int roundEnds);

// The string drawn in colour (COLORREF) on black, at the origin of a 24-bit
// bitmap of the given size; antialias 0 draws with single-bit coverage.
DibHandle GdiTextPicture(GdiTextSession* session, const char* text, int width, int height, std::uint32_t colour,
                         int antialias);
