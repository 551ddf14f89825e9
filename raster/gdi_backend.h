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

struct GdiTextSession;

// The font of the op and a surface to measure on; null if the engine is not
// started or the font cannot be made.
GdiTextSession* GdiTextOpen(const GdiOp* op);
void GdiTextClose(GdiTextSession* session);

// Box of the string laid out alone at the origin, truncated to whole pixels.
// 0 (and a zero box) if it cannot be measured.
int GdiTextBox(GdiTextSession* session, const char* text, int* width, int* height);

// The string drawn in colour (COLORREF) on black, at the origin of a 24-bit
// bitmap of the given size; antialias 0 draws with single-bit coverage.
DibHandle GdiTextPicture(GdiTextSession* session, const char* text, int width, int height, std::uint32_t colour,
                         int antialias);

// A picture of width by height on black with an ellipse in the box at
// (left, top) of boxWidth by boxHeight: first the op's outline with a pen of
// shapePenWidth, then its fill, each unless it is -1.
DibHandle GdiEllipsePicture(const GdiOp* op, int width, int height, int left, int top, int boxWidth,
                            int boxHeight);
// A picture of width by height on black with a line of the op's lineWidth and
// lineColour from (x1, y1) to (x2, y2), ends as GDI+ LineCap values.
DibHandle GdiLinePicture(const GdiOp* op, int width, int height, int x1, int y1, int x2, int y2,
                         std::uint32_t startCap, std::uint32_t endCap);
