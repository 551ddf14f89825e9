#include "raster/code_page.h"

namespace {

// 0x80 to 0x9F; 0 marks a byte with no character.
constexpr std::uint16_t kHighControls[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

}  // namespace

std::uint32_t CodePageToUnicode(unsigned char code) {
  if (code < 0x80 || code > 0x9F) return code;
  std::uint16_t mapped = kHighControls[code - 0x80];
  return mapped != 0 ? mapped : code;
}

int CodePageFromUnicode(std::uint32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return static_cast<int>(codePoint);
  for (int i = 0; i < 32; ++i)
    if (kHighControls[i] != 0 && kHighControls[i] == codePoint) return 0x80 + i;
  return -1;
}
