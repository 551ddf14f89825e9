// The built-in palettes, the luminance that all colour reduction shares, and
// the sort that puts a made palette in order of brightness.
#pragma once

#include <cstdint>

// Rows 0 to 9; any other row number gives the 256-colour orthogonal row.
constexpr int kFixedPaletteDefaultRow = 6;

// 77 r / 255 + 150 g / 255 + 28 b / 255, each term truncated by itself.
inline int Luminance(int red, int green, int blue) {
  return (77 * red / 255 + 150 * green / 255 + 28 * blue / 255) & 0xFF;
}

// Clears the 768-byte palette (when not null), fills the row's entries and
// reports its depth (when not null). Returns the number of entries.
int FixedPaletteBuild(std::uint8_t* palette, int* depth, int row);

// Stable ascending order by luminance, by whole bubble-sort passes.
void PaletteSortByLuminance(std::uint8_t* palette, int count);

// Bits per pixel for a palette of this many entries: 1 up to 2, 2 up to 4,
// ... 8 up to 256, 24 beyond.
int PaletteDepthForEntries(int entries);
