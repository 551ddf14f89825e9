#include "dialogkit/string_texts.h"

const StringTextRow kStringTextRows[] = {
    {0, "Ok"},
    {1, "Error opening file"},
    {2, "Corrupted file"},
    {3, "Error reading file"},
    {4, "Function cancelled"},
    {5, "Unsupported function"},
    {6, "Memory error"},
    {7, "Information error"},
    {8, "Unsupported format"},
    {9, "Error renaming file"},
    {10, "Error creating file"},
    {11, "Error writing file"},
    {12, "Too many colours"},
    {13, "Unsuitable image"},
    {14, "Resource error"},
    {15, "Library error"},
    {1600, "Black and white"},
    {1601, "Sixteen-color Windows"},
    {1602, "32-color orthogonal"},
    {1603, "64-color orthogonal"},
    {1604, "128-color orthogonal"},
    {1605, "216-color safe"},
    {1606, "256-color orthogonal"},
    {1607, "256-color with gray"},
    {1608, "256 gray levels"},
};
const int kStringTextRowCount = sizeof kStringTextRows / sizeof kStringTextRows[0];

const char kStringTableErrorText[] = "String table error - this application may be damaged";

const char* StringText(int id) {
  for (const StringTextRow& row : kStringTextRows)
    if (row.id == id) return row.text;
  return kStringTableErrorText;
}
