// Whether the system has the font family that the settings ask for, or draws
// the text in another one.
#pragma once

#include <string>

// 1 when the family name (in the code page) is installed; otherwise 0, with
// the family drawn instead in used (empty when the system does not say).
int FontFamilyFound(const char* name, int bold, int italic, std::string* used);
