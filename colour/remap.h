// Reducing one frame to an indexed image of a given palette and depth, plain
// or with error diffusion.
#pragma once

#include <cstdint>

#include "colour/colour_search.h"
#include "raster/dib.h"

// The settings the remap stage reads.
struct RemapOptions {
  int fastRemap = 1;          // exact palette match first, then the 15-bit table
  int ditherBrightness = 20;  // shape of the 1-bit dither curve
  int ditherContrast = 20;
};

// A new bitmap of depth 1, 4 or 8 (from the depth wish) holding indexes into
// the palette, whose first colours entries count. Sources of 1, 4, 8 and 24
// bits; the source survives. Null on failure or a depth outside 1 to 8.
DibHandle RemapPlain(DibHandle source, const std::uint8_t* palette, int depth, int colours,
                     const RemapOptions& options);

// As RemapPlain, with error diffusion. Refuses a 1-bit source.
DibHandle RemapDithered(DibHandle source, const std::uint8_t* palette, int depth, int colours,
                        const RemapOptions& options);

// The 256-entry brightness and contrast curve of the 1-bit dither, 1 to 254.
void DitherCurve(int brightness, int contrast, std::uint8_t* curve);
