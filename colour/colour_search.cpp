// Palette search for the remap stage.
#include "colour/colour_search.h"

namespace {

int ClampColours(int colours) { return colours > 256 ? 256 : colours; }

}  // namespace

int PaletteFindExact(const std::uint8_t* palette, int colours, int red, int green, int blue) {
  colours = ClampColours(colours);
  for (int i = 0; i < colours; ++i) {
    const std::uint8_t* entry = palette + i * 3;
    if (entry[0] == red && entry[1] == green && entry[2] == blue) return i;
  }
  return -1;
}

int NearestColour(int red, int green, int blue, const std::uint8_t* palette, int colours) {
  if (colours < 1) return 0;
  int exact = PaletteFindExact(palette, colours, red, green, blue);
  if (exact >= 0) return exact;
  colours = ClampColours(colours);
  int best = 0;
  int bestDistance = 1000000;
  for (int i = 0; i < colours; ++i) {
    const std::uint8_t* entry = palette + i * 3;
    int dr = red - entry[0];
    int dg = green - entry[1];
    int db = blue - entry[2];
    int distance = 3 * dr * dr + 4 * dg * dg + 2 * db * db;
    if (distance < bestDistance) {
      bestDistance = distance;
      best = i;
    }
  }
  return best;
}

void ColourSearchInit(ColourSearch* search, const std::uint8_t* palette, int colours, int fastRemap) {
  search->palette = palette;
  search->colours = colours;
  search->fastRemap = fastRemap;
  for (int i = 0; i < 32768; ++i) {
    int red = (i & 31) * 8;
    int green = ((i >> 5) & 31) * 8;
    int blue = ((i >> 10) & 31) * 8;
    search->table[i] = static_cast<std::uint8_t>(NearestColour(red, green, blue, palette, colours));
  }
  search->lastColour = -1;
  search->lastIndex = 0;
}

int ColourSearchFind(ColourSearch* search, int red, int green, int blue) {
  std::int32_t colour = red | green << 8 | blue << 16;
  if (colour == search->lastColour) return search->lastIndex;
  int index;
  if (search->fastRemap != 0) {
    index = PaletteFindExact(search->palette, search->colours, red, green, blue);
    if (index < 0) index = search->table[ColourLookupKey(red, green, blue)];
  } else {
    index = NearestColour(red, green, blue, search->palette, search->colours);
  }
  search->lastColour = colour;
  search->lastIndex = index;
  return index;
}
