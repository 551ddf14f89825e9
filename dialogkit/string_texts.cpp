#include "dialogkit/string_texts.h"

namespace {

constexpr const char* kStringTexts[kStringTextCount] = {
    "Ok",                  "Error opening file",  "Corrupted file",     "Error reading file",
    "Function cancelled",  "Unsupported function", "Memory error",      "Information error",
    "Unsupported format",  "Error renaming file", "Error creating file", "Error writing file",
    "Too many colours",    "Unsuitable image",    "Resource error",     "Library error",
};

}  // namespace

const char kStringTableErrorText[] = "String table error - this application may be damaged";

const char* StringText(int id) {
  if (id < 0 || id >= kStringTextCount) return kStringTableErrorText;
  return kStringTexts[id];
}
