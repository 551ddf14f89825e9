// The ten fixed palette rows and the luminance sort.
#include "colour/palette.h"

#include <cstring>

#include "colour/palette_tables.h"
#include "raster/dib.h"

namespace {

constexpr std::uint8_t kFourLevels[4] = {0, 85, 170, 255};
constexpr std::uint8_t kEightLevels[8] = {0, 36, 72, 108, 144, 180, 216, 255};
constexpr std::uint8_t kBlueExtremes[2] = {0, 255};

constexpr std::uint8_t kWindowsSixteen[48] = {
    0x00, 0x00, 0x00, 0x80, 0x00, 0x00, 0x00, 0x80, 0x00, 0x80, 0x80, 0x00, 0x00, 0x00, 0x80, 0x80,
    0x00, 0x80, 0x00, 0x80, 0x80, 0x80, 0x80, 0x80, 0xC0, 0xC0, 0xC0, 0xFF, 0x00, 0x00, 0x00, 0xFF,
    0x00, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0x00, 0xFF, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
};

constexpr std::uint8_t kEightCorners[24] = {
    0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0xFF, 0x00, 0xFF, 0xFF, 0x00,
    0x00, 0x00, 0xFF, 0xFF, 0x00, 0xFF, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
};

struct Levels {
  const std::uint8_t* values;
  int count;
};

// Every combination of the three level sets, red slowest and blue fastest.
void FillCube(std::uint8_t* palette, Levels red, Levels green, Levels blue) {
  for (int r = 0; r < red.count; ++r) {
    for (int g = 0; g < green.count; ++g) {
      for (int b = 0; b < blue.count; ++b) {
        *palette++ = red.values[r];
        *palette++ = green.values[g];
        *palette++ = blue.values[b];
      }
    }
  }
}

constexpr Levels kFour{kFourLevels, 4};
constexpr Levels kEight{kEightLevels, 8};

struct FixedPaletteRow {
  int entries;
  int depth;
  void (*fill)(std::uint8_t* palette);
};

const FixedPaletteRow kFixedPaletteRows[] = {
    {2, 1, [](std::uint8_t* p) { std::memset(p + 3, 255, 3); }},
    {16, 4, [](std::uint8_t* p) { std::memcpy(p, kWindowsSixteen, sizeof kWindowsSixteen); }},
    {32, 5, [](std::uint8_t* p) { FillCube(p, kFour, kFour, Levels{kBlueExtremes, 2}); }},
    {64, 6, [](std::uint8_t* p) { FillCube(p, kFour, kFour, kFour); }},
    {128, 7, [](std::uint8_t* p) { FillCube(p, kFour, kEight, kFour); }},
    {216, 8, [](std::uint8_t* p) { std::memcpy(p, kPaletteSafe216, sizeof kPaletteSafe216); }},
    {256, 8, [](std::uint8_t* p) { FillCube(p, kEight, kEight, kFour); }},
    {256, 8, [](std::uint8_t* p) { std::memcpy(p, kPaletteCubeWithGray, sizeof kPaletteCubeWithGray); }},
    {256, 8,
     [](std::uint8_t* p) {
       for (int i = 0; i < 256; ++i) std::memset(p + i * 3, i, 3);
     }},
    {8, 3, [](std::uint8_t* p) { std::memcpy(p, kEightCorners, sizeof kEightCorners); }},
};
constexpr int kFixedPaletteRowCount = sizeof kFixedPaletteRows / sizeof kFixedPaletteRows[0];

int LuminanceOfEntry(const std::uint8_t* entry) { return Luminance(entry[0], entry[1], entry[2]); }

}  // namespace

int FixedPaletteBuild(std::uint8_t* palette, int* depth, int row) {
  if (row < 0 || row >= kFixedPaletteRowCount) row = kFixedPaletteDefaultRow;
  const FixedPaletteRow& chosen = kFixedPaletteRows[row];
  if (palette != nullptr) {
    std::memset(palette, 0, kPaletteBytes);
    chosen.fill(palette);
  }
  if (depth != nullptr) *depth = chosen.depth;
  return chosen.entries;
}

void PaletteSortByLuminance(std::uint8_t* palette, int count) {
  if (count < 2) return;
  bool swapped = true;
  while (swapped) {
    swapped = false;
    for (int i = 0; i + 1 < count; ++i) {
      std::uint8_t* entry = palette + i * 3;
      if (LuminanceOfEntry(entry + 3) < LuminanceOfEntry(entry)) {
        std::uint8_t held[3];
        std::memcpy(held, entry, 3);
        std::memcpy(entry, entry + 3, 3);
        std::memcpy(entry + 3, held, 3);
        swapped = true;
      }
    }
  }
}

int PaletteDepthForEntries(int entries) {
  for (int depth = 1; depth <= 8; ++depth) {
    if (entries <= 1 << depth) return depth;
  }
  return 24;
}
