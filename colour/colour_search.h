// Finding the palette index for a colour: the nearest-colour search, the
// 15-bit lookup table built from it, and the rule that picks between them.
#pragma once

#include <cstdint>

// Index of the first exact match, else of the entry with the lowest
// 3 dr^2 + 4 dg^2 + 2 db^2, ties to the lowest index. 0 when colours < 1.
int NearestColour(int red, int green, int blue, const std::uint8_t* palette, int colours);

inline int ColourLookupKey(int red, int green, int blue) { return (red >> 3) | (green >> 3) << 5 | (blue >> 3) << 10; }

constexpr int kExactSlots = 1024;  // open addressing, at most 256 entries in use

struct ColourSearch {
  const std::uint8_t* palette;
  int colours;
  int fastRemap;
  std::uint8_t table[32768];  // nearest index to each 15-bit colour, at its lower corner
  // The first entry of each palette colour, hashed by 24-bit colour: an
  // exact match costs one probe or two, however long the palette is.
  std::int32_t exactColour[kExactSlots];  // -1 for an empty slot
  std::uint8_t exactIndex[kExactSlots];
  std::int32_t lastColour;  // runs of one colour are searched once
  int lastIndex;
};

// Builds the table over the first colours entries of the palette. A table
// depends on those entries alone, so the last one made is kept and reused
// while the palette stays the same, as it does for all frames of a build.
void ColourSearchInit(ColourSearch* search, const std::uint8_t* palette, int colours, int fastRemap);

inline int ColourExactSlot(std::int32_t colour) {
  return static_cast<int>((static_cast<std::uint32_t>(colour) * 2654435761u) >> 22);
}

// The first entry of exactly this colour, or -1.
inline int ColourSearchExact(const ColourSearch* search, std::int32_t colour) {
  for (int slot = ColourExactSlot(colour);; slot = (slot + 1) & (kExactSlots - 1)) {
    if (search->exactColour[slot] == colour) return search->exactIndex[slot];
    if (search->exactColour[slot] == -1) return -1;
  }
}

// With fastRemap on: the first exact entry, else the table. Off: NearestColour.
// Every pixel of a remap comes here, so it is inline.
inline int ColourSearchFind(ColourSearch* search, int red, int green, int blue) {
  std::int32_t colour = red | green << 8 | blue << 16;
  if (colour == search->lastColour) return search->lastIndex;
  int index;
  if (search->fastRemap != 0) {
    index = ColourSearchExact(search, colour);
    if (index < 0) index = search->table[ColourLookupKey(red, green, blue)];
  } else {
    index = NearestColour(red, green, blue, search->palette, search->colours);
  }
  search->lastColour = colour;
  search->lastIndex = index;
  return index;
}

// First entry exactly of this colour, or -1.
int PaletteFindExact(const std::uint8_t* palette, int colours, int red, int green, int blue);
