// Palette search for the remap stage.
#include "colour/colour_search.h"

#include <algorithm>
#include <cstring>

namespace {

int ClampColours(int colours) { return colours > 256 ? 256 : colours; }

// The table of one palette, kept from the last ColourSearchInit.
struct LookupCache {
  bool valid = false;
  int colours = 0;
  std::uint8_t palette[768];
  std::uint8_t table[32768];
};
LookupCache gLookupCache;

struct Entry {
  int red, green, blue, index;
};

// The nearest entry to every 15-bit colour at once. Entries are sorted by
// red; the search of a colour starts at the entry nearest in red and walks
// outwards on both sides until the red term alone exceeds the best distance
// found, with the answer for the colour before as the first bound. Equal
// distances go to the lower index, so the result is exactly NearestColour's
// (whose exact-match walk finds the entry at distance 0 that the distance
// walk also finds first).
void BuildLookupTable(const std::uint8_t* palette, int colours, std::uint8_t* table) {
  colours = ClampColours(colours);
  if (colours < 1) {
    std::memset(table, 0, 32768);
    return;
  }
  Entry entries[256];
  for (int i = 0; i < colours; ++i)
    entries[i] = {palette[i * 3], palette[i * 3 + 1], palette[i * 3 + 2], i};
  std::stable_sort(entries, entries + colours, [](const Entry& a, const Entry& b) { return a.red < b.red; });
  int start[32];  // first sorted entry whose red is at least each table red
  for (int r = 0, at = 0; r < 32; ++r) {
    while (at < colours && entries[at].red < r * 8) ++at;
    start[r] = at;
  }
  int previous = 0;  // the sorted entry nearest to the last colour, a close first guess for this one
  for (int key = 0; key < 32768; ++key) {
    int red = (key & 31) * 8;
    int green = (key >> 5 & 31) * 8;
    int blue = (key >> 10 & 31) * 8;
    int bestDistance = 1 << 30;
    int best = 0;
    int bestAt = previous;
    auto consider = [&](const Entry& entry) {
      int dg = green - entry.green;
      int db = blue - entry.blue;
      int dr = red - entry.red;
      int distance = 3 * dr * dr + 4 * dg * dg + 2 * db * db;
      if (distance < bestDistance || (distance == bestDistance && entry.index < best)) {
        bestDistance = distance;
        best = entry.index;
        bestAt = static_cast<int>(&entry - entries);
      }
    };
    consider(entries[previous]);
    int up = start[key & 31];
    int down = up - 1;
    while (up < colours || down >= 0) {
      int upReach = up < colours ? 3 * (entries[up].red - red) * (entries[up].red - red) : 1 << 30;
      int downReach = down >= 0 ? 3 * (red - entries[down].red) * (red - entries[down].red) : 1 << 30;
      if (std::min(upReach, downReach) > bestDistance) break;
      if (upReach <= downReach) consider(entries[up++]);
      else consider(entries[down--]);
    }
    table[key] = static_cast<std::uint8_t>(best);
    previous = bestAt;
  }
}

void BuildExactHash(ColourSearch* search) {
  std::fill(search->exactColour, search->exactColour + kExactSlots, -1);
  for (int i = 0; i < ClampColours(search->colours); ++i) {
    const std::uint8_t* entry = search->palette + i * 3;
    std::int32_t colour = entry[0] | entry[1] << 8 | entry[2] << 16;
    int slot = ColourExactSlot(colour);
    while (search->exactColour[slot] != -1 && search->exactColour[slot] != colour) slot = (slot + 1) & (kExactSlots - 1);
    if (search->exactColour[slot] == colour) continue;  // an earlier entry has it
    search->exactColour[slot] = colour;
    search->exactIndex[slot] = static_cast<std::uint8_t>(i);
  }
}

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
  std::size_t used = 3u * static_cast<std::size_t>(std::clamp(colours, 0, 256));
  LookupCache& cache = gLookupCache;
  if (!cache.valid || cache.colours != colours || std::memcmp(cache.palette, palette, used) != 0) {
    BuildLookupTable(palette, colours, cache.table);
    std::memcpy(cache.palette, palette, used);
    cache.colours = colours;
    cache.valid = true;
  }
  std::memcpy(search->table, cache.table, sizeof search->table);
  BuildExactHash(search);
  search->lastColour = -1;
  search->lastIndex = 0;
}
