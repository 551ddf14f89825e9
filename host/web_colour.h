// Colours as people write them on the command line: six hexadecimal digits,
// red first ("FF0000" is red), against the red-low numbers of the records.
#pragma once

#include <cstdint>

// 1 and the red-low colour for exactly six hex digits (an optional leading
// '#' allowed); 0 otherwise.
int WebColourParse(const char* text, std::uint32_t* colour);
// The red-low colour as "RRGGBB" in out, which has room for 7 bytes.
void WebColourFormat(std::uint32_t colour, char* out);
