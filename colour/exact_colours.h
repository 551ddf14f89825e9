// The list of exact colours that the quantiser keeps on the side, so that an
// animation with few colours keeps them unchanged.
#pragma once

#include <cstdint>

#include "raster/dib.h"

constexpr int kListedSlots = 512;

struct ExactColours {
  std::int32_t colours[256];  // COLORREF-shaped, in order of discovery
  int listed;
  std::int32_t listedSlots[kListedSlots];  // the listed colours plus 1, hashed; 0 for an empty slot
  // Pixels not found in the list: new colours while it has room, then every
  // pixel, so that it passes any limit once the list is full.
  std::int64_t distinct;
};

// Walks every pixel of a 24-bit bitmap, from the top row down. Starts from a
// zeroed record.
void ExactColoursScan(ExactColours* exact, const DibHead* head);

// Red, green, blue triples of the listed colours into the palette.
void ExactColoursToPalette(const ExactColours* exact, std::uint8_t* palette);
