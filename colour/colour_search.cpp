// Palette search for the remap stage.
#include "colour/colour_search.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

int ClampColours(int colours) { return std::clamp(colours, 0, 256); }

// The table of the last palette searched.
struct LastTable {
  bool valid = false;
  ColourTable table;
};
LastTable gLastTable;

int ExactSlot(std::int32_t colour) {
  return static_cast<int>((static_cast<std::uint32_t>(colour) * 2654435761u) >> 22);
}

void BuildExactHash(ColourTable* table) {
  std::fill(table->exactColour, table->exactColour + kExactSlots, -1);
  for (int i = 0; i < ClampColours(table->colours); ++i) {
    std::int32_t colour = table->packed[i];
    int slot = ExactSlot(colour);
    while (table->exactColour[slot] != -1 && table->exactColour[slot] != colour) slot = (slot + 1) & (kExactSlots - 1);
    if (table->exactColour[slot] == colour) continue;  // an earlier entry has it
    table->exactColour[slot] = colour;
    table->exactIndex[slot] = static_cast<std::uint8_t>(i);
  }
}

ColourChoice ChoiceOf(const std::uint8_t* palette, int index) {
  const std::uint8_t* entry = palette + index * 3;
  return static_cast<ColourChoice>(ColourPack(entry[0], entry[1], entry[2])) | static_cast<ColourChoice>(index) << 24;
}

// Every cell starts unfilled; a cell that palette colours lie in takes the
// first entry of the first of them, or is sent to the hash if there are more.
void MarkExactCells(ColourTable* table) {
  std::fill(table->state, table->state + 32768, kCellUnfilled);
  for (int i = 0; i < ClampColours(table->colours); ++i) {
    int key = ColourLookupKey(table->red[i], table->green[i], table->blue[i]);
    if ((table->state[key] & kCellHoldsExact) == 0) {
      table->state[key] |= kCellHoldsExact;
      table->exact[key] = ChoiceOf(table->palette, i);
    } else if (table->packed[ChoiceIndex(table->exact[key])] != table->packed[i]) {
      table->state[key] |= kCellShared;
    }
  }
}

// Far enough from every colour that an entry past the given colours never is
// the nearest, near enough that its distance shifted by 8 still fits an int.
constexpr int kUnusedComponent = 600;

void TableReset(ColourTable* table, const std::uint8_t* palette, int colours) {
  table->colours = colours;
  std::memcpy(table->palette, palette, sizeof table->palette);
  for (int i = 0; i < 256; ++i) {
    bool given = i < ClampColours(colours);
    table->red[i] = given ? palette[i * 3] : kUnusedComponent;
    table->green[i] = given ? palette[i * 3 + 1] : kUnusedComponent;
    table->blue[i] = given ? palette[i * 3 + 2] : kUnusedComponent;
    table->packed[i] = given ? ColourPack(palette[i * 3], palette[i * 3 + 1], palette[i * 3 + 2]) : -1;
  }
  BuildExactHash(table);
  MarkExactCells(table);
}

// NearestColour over the table's entries. Each distance carries its index in
// the low byte, so the one minimum is the lowest distance and, among equal
// ones, the lowest index; the exact match NearestColour looks for first is
// the first entry at distance 0, so it is this minimum too. The loop always
// runs over 256 entries, has no branch and vectorises.
int NearestEntry(const ColourTable* table, int red, int green, int blue) {
  if (table->colours < 1) return 0;
  std::int32_t best = INT32_MAX;
  for (int i = 0; i < 256; ++i) {
    std::int32_t dr = red - table->red[i];
    std::int32_t dg = green - table->green[i];
    std::int32_t db = blue - table->blue[i];
    best = std::min(best, (3 * dr * dr + 4 * dg * dg + 2 * db * db) << 8 | i);
  }
  return best & 0xFF;
}

}  // namespace

int ColourTableNearest(ColourTable* table, int key) {
  std::uint8_t& state = table->state[key];
  if ((state & kCellUnfilled) != 0) {
    int nearest = NearestEntry(table, (key & 31) * 8, (key >> 5 & 31) * 8, (key >> 10 & 31) * 8);
    table->nearest[key] = ChoiceOf(table->palette, nearest);
    if ((state & kCellHoldsExact) == 0) table->exact[key] = table->nearest[key];
    state &= ~kCellUnfilled;
  }
  return ChoiceIndex(table->nearest[key]);
}

ColourChoice ColourTableChooseSlow(ColourTable* table, int red, int green, int blue) {
  int key = ColourLookupKey(red, green, blue);
  ColourTableNearest(table, key);
  std::int32_t colour = ColourPack(red, green, blue);
  if ((table->state[key] & kCellShared) != 0) {
    for (int slot = ExactSlot(colour);; slot = (slot + 1) & (kExactSlots - 1)) {
      if (table->exactColour[slot] == colour) return ChoiceOf(table->palette, table->exactIndex[slot]);
      if (table->exactColour[slot] == -1) return table->nearest[key];
    }
  }
  ColourChoice exact = table->exact[key];
  return static_cast<std::int32_t>(exact & 0xFFFFFF) == colour ? exact : table->nearest[key];
}

ColourChoice ColourSearchNearest(ColourSearch* search, int red, int green, int blue) {
  std::int32_t colour = ColourPack(red, green, blue);
  if (colour != search->lastColour) {
    search->lastColour = colour;
    search->lastChoice = ChoiceOf(search->palette, NearestEntry(search->table, red, green, blue));
  }
  return search->lastChoice;
}

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
  ColourTable* table = &gLastTable.table;
  bool same = gLastTable.valid && table->colours == colours &&
              std::memcmp(table->palette, palette, sizeof table->palette) == 0;
  if (!same) {
    TableReset(table, palette, colours);
    gLastTable.valid = true;
  }
  search->table = table;
  search->lastColour = -1;
  search->lastChoice = 0;
}
