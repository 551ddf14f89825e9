// The 8-bit code page of text headless: Windows-1252. The plug-in uses the
// system's own code page through the platform instead.
#pragma once

#include <cstdint>

// Unicode code point of a byte. The five bytes that have no character
// (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the control of the same number.
std::uint32_t CodePageToUnicode(unsigned char code);

// The byte of a code point, or -1 if the code page has no character for it
// (the five unassigned bytes included).
int CodePageFromUnicode(std::uint32_t codePoint);
