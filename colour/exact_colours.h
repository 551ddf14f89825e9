// The list of exact colours that the quantiser keeps on the side, so that an
// animation with few colours keeps them unchanged.
#pragma once

#include <cstdint>

#include "raster/dib.h"

struct ExactColours {
  std::int32_t colours[256];  // COLORREF-shaped, in order of discovery
  int listed;
  // Pixels not found in the list: new colours while it has room, then every
  // pixel, so that it passes any limit once the list is full.
  std::int64_t distinct;
};

// Walks every pixel of a 24-bit bitmap, from the top row down.
void ExactColoursScan(ExactColours* exact, const DibHead* head);

// Red, green, blue triples of the listed colours into the palette.
void ExactColoursToPalette(const ExactColours* exact, std::uint8_t* palette);
