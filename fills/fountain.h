// Gradients ("fountains"): a FountainSpec is flattened by FountainRamp into a
// table of colours as long as its shape needs, and a rasteriser paints the
// table; FountainStrip paints a FountainRecord's colour line from left to
// right. Every bitmap made here is a new 24-bit block owned by the caller,
// or null when an allocation or lock failed.
#pragma once

#include <cstdint>

#include "fills/fountain_record.h"
#include "raster/dib.h"

enum FountainShape : std::int32_t {
  kFountainLinear = 0,
  kFountainConical = 1,
  kFountainEllipses = 2,
  kFountainRectangles = 3,
};

// A ramp: ramp[0] is the count, the colours follow from ramp[1].
using FountainRampBlock = std::uint32_t*;
inline std::uint32_t* FountainRampColours(FountainRampBlock ramp) { return ramp + 1; }
void FountainRampFree(FountainRampBlock ramp);

// The spec flattened to count colours, or null. Free with FountainRampFree.
FountainRampBlock FountainRamp(const FountainSpec* spec, int count);

// The spec's shape painted at width by height.
DibHandle FountainRender(int width, int height, const FountainSpec* spec);

// 256 bands, turned by rotation degrees: with a spec, the spec's ramp
// running from the top at rotation 0 (from the right at 90); without one,
// from second to first, so that at 90 first is on the left.
DibHandle FountainLinear(std::uint32_t first, std::uint32_t second, int width, int height, int rotation,
                         const FountainSpec* spec);

// The record's colour line from the left edge to the right, segment by
// segment; a looped record ends in its start colour.
DibHandle FountainStrip(const FountainRecord* record, int width, int height);

// The pixel column of each of the 64 marker words for a line width wide.
void FountainMarkerPositions(const FountainRecord* record, int width, int positions[kFountainMaxMarkers]);

// qsort order of two marker words: by position, empty words last.
int FountainMarkerCompare(const void* a, const void* b);

// Whether a marker may be put at *position, searching next to the wish when
// it is taken; 1 with *position the place found, 0 when there is none.
int FountainFreePosition(const FountainRecord* record, int* position);
