// The texts of the string table, by id, written in this one place for
// every lookup to share.
#pragma once

constexpr int kStringTextCount = 16;
constexpr int kStringMemoryError = 6;

// What a lookup gives when the table does not have the id.
extern const char kStringTableErrorText[];

// The text of a string id, or kStringTableErrorText for an id outside the
// table.
const char* StringText(int id);
