// The texts of the string table, by id, written in this one place: the
// resource script's string table is generated from it at build time, and
// headless lookups read it directly.
#pragma once

struct StringTextRow {
  int id;
  const char* text;
};

constexpr int kStringMemoryError = 6;
constexpr int kStringPaletteFirst = 1600;  // the palette list's labels, by MainPalette row
constexpr int kStringPaletteCount = 9;

extern const StringTextRow kStringTextRows[];
extern const int kStringTextRowCount;

// What a lookup gives when the table does not have the id.
extern const char kStringTableErrorText[];

// The text of a string id, or kStringTableErrorText for an id the table
// does not have.
const char* StringText(int id);
