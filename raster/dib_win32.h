// The bitmap store meeting the graphics device interface: resources, GDI
// bitmaps, drawing on a device context, and drawing with GDI into a block.
#pragma once

#include <windows.h>

#include <cstdint>

#include "raster/dib.h"

// A store bitmap open for drawing with GDI through a DIB section.
struct DibSectionPair {
  DibHandle dib;         // the 24-bit block; null after a close that frees it
  DibHead* head;         // its locked head
  HBITMAP section;       // the DIB section drawing goes to
  HGDIOBJ previous;      // bitmap selected in memoryDc before the section
  void* pixels;          // the section's own rows
  HDC memoryDc;
  HDC screenDc;
  RECT rect;             // 0, 0, width, height
  std::uint32_t reserved;
};

constexpr unsigned kDibSectionKeep = 1;  // DibSectionClose flag: the caller keeps the block

// Resource id of type RT_RCDATA in module holding a whole 24- or 32-bit BMP
// file, flattened onto background (COLORREF, -1 for the button face colour).
DibHandle DibFromResource(HMODULE module, int resourceId, std::int32_t background);
// The pixels of a GDI bitmap; anything deeper than 8 bits comes out as 24.
DibHandle DibFromGdiBitmap(HBITMAP bitmap);
// Shows the bitmap at x, y at its own size, through a palette at 8 bits or less.
void DibDraw(HDC dc, int x, int y, DibHandle dib);

// A palette made, selected and realised in a device context.
struct DibPaletteSelection {
  HDC dc;
  HPALETTE palette;   // null when nothing was selected
  HPALETTE previous;
};
// Selects a palette of count colours (red, green, blue triples) into dc:
// 2 to 16 colours become 16, 17 or more 256; above 256 nothing is selected.
// 1 on success, 0 when the palette could not be made.
int DibDisplayPalette(HDC dc, const std::uint8_t* palette, int count, DibPaletteSelection* selection);
// Selects the previous palette back and deletes the made one.
void DibDisplayPaletteRelease(DibPaletteSelection* selection);

// Opens a zeroed 24-bit block of width by height for drawing on pair->memoryDc.
// 1, or 0 with everything undone. The first argument is not used.
int DibSectionOpen(void* unused, int width, int height, DibSectionPair* pair);
// Copies what was drawn into the block and releases the GDI objects. Unless
// flags has kDibSectionKeep the block is freed and pair->dib set to null.
int DibSectionClose(DibSectionPair* pair, unsigned flags);
