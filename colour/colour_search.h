// Finding the palette index for a colour: the nearest-colour search, the
// 15-bit lookup table built from it, and the rule that picks between them.
#pragma once

#include <cstdint>

// Index of the first exact match, else of the entry with the lowest
// 3 dr^2 + 4 dg^2 + 2 db^2, ties to the lowest index. 0 when colours < 1.
int NearestColour(int red, int green, int blue, const std::uint8_t* palette, int colours);

inline int ColourLookupKey(int red, int green, int blue) { return (red >> 3) | (green >> 3) << 5 | (blue >> 3) << 10; }

inline std::int32_t ColourPack(int red, int green, int blue) { return red | green << 8 | blue << 16; }

constexpr int kExactSlots = 1024;  // open addressing, at most 256 entries in use

// The entry a colour is given: its index in the top byte, its palette colour
// as ColourPack below.
using ColourChoice = std::uint32_t;
inline int ChoiceIndex(ColourChoice choice) { return static_cast<int>(choice >> 24); }
inline int ChoiceComponent(ColourChoice choice, int component) {
  return static_cast<int>(choice >> component * 8 & 0xFF);
}

// State bits of a cell of the 15-bit table.
constexpr std::uint8_t kCellUnfilled = 1;    // the nearest entry is not searched yet
constexpr std::uint8_t kCellShared = 2;      // several palette colours lie inside: ask the hash
constexpr std::uint8_t kCellHoldsExact = 4;  // one palette colour or more lies inside

// What the search knows of one palette. A remap asks for few of the 32768
// cells, so each is searched on first use; the palette is the same for every
// frame of a build, so the last table made is kept, cells and all, and reused
// while the palette stays the same.
struct ColourTable {
  int colours;  // as given by the caller
  std::uint8_t palette[768];
  std::int32_t packed[256];  // ColourPack of each entry, -1 past the given colours
  std::int32_t red[256];
  std::int32_t green[256];
  std::int32_t blue[256];
  // Per cell: the nearest entry to its lower corner; the first entry of the
  // one palette colour inside it, or else the nearest entry again, whose
  // colour lies outside the cell and so matches no pixel of it.
  ColourChoice nearest[32768];
  ColourChoice exact[32768];
  std::uint8_t state[32768];
  // The first entry of each palette colour, hashed by 24-bit colour: an
  // exact match costs one probe or two, however long the palette is.
  std::int32_t exactColour[kExactSlots];  // -1 for an empty slot
  std::uint8_t exactIndex[kExactSlots];
};

struct ColourSearch {
  const std::uint8_t* palette;
  int colours;
  int fastRemap;
  ColourTable* table;
  std::int32_t lastColour;  // runs of one colour are searched once
  ColourChoice lastChoice;
};

// Readies the search over the first colours entries of the palette.
void ColourSearchInit(ColourSearch* search, const std::uint8_t* palette, int colours, int fastRemap);

// The table's entry for a 15-bit colour: the nearest palette index to the
// cell's lower corner, searched now if it was not yet.
int ColourTableNearest(ColourTable* table, int key);

// The cells that are not filled or hold several palette colours.
ColourChoice ColourTableChooseSlow(ColourTable* table, int red, int green, int blue);

// The first exact entry, else the table's entry for the colour's cell.
inline ColourChoice ColourTableChoose(ColourTable* table, int red, int green, int blue) {
  int key = ColourLookupKey(red, green, blue);
  if ((table->state[key] & (kCellUnfilled | kCellShared)) != 0) return ColourTableChooseSlow(table, red, green, blue);
  ColourChoice exact = table->exact[key];
  return static_cast<std::int32_t>(exact & 0xFFFFFF) == ColourPack(red, green, blue) ? exact : table->nearest[key];
}

// NearestColour through the search's memory of the last colour.
ColourChoice ColourSearchNearest(ColourSearch* search, int red, int green, int blue);

// With fastRemap on: the first exact entry, else the table. Off: NearestColour.
// Every pixel of a remap comes here, so it is inline.
inline ColourChoice ColourSearchChoose(ColourSearch* search, int red, int green, int blue) {
  if (search->fastRemap != 0) return ColourTableChoose(search->table, red, green, blue);
  return ColourSearchNearest(search, red, green, blue);
}

inline int ColourSearchFind(ColourSearch* search, int red, int green, int blue) {
  return ChoiceIndex(ColourSearchChoose(search, red, green, blue));
}

// First entry exactly of this colour, or -1.
int PaletteFindExact(const std::uint8_t* palette, int colours, int red, int green, int blue);
