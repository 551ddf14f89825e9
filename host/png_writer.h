// One 24-bit frame as a PNG file, for the headless renderer's frame folders.
#pragma once

#include "raster/dib.h"

// Writes the bitmap (24 bits deep) to path as an 8-bit RGB PNG. 1 on
// success; 0 on failure, with no file left behind.
int PngWrite(const char* path, DibHandle image);
