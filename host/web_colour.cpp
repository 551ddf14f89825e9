#include "host/web_colour.h"

#include <cstdio>
#include <cstring>

namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

int WebColourParse(const char* text, std::uint32_t* colour) {
  if (text[0] == '#') ++text;
  if (std::strlen(text) != 6) return 0;
  std::uint32_t channels[3];
  for (int i = 0; i < 3; ++i) {
    int high = HexDigit(text[2 * i]);
    int low = HexDigit(text[2 * i + 1]);
    if (high < 0 || low < 0) return 0;
    channels[i] = static_cast<std::uint32_t>(high * 16 + low);
  }
  *colour = channels[0] | channels[1] << 8 | channels[2] << 16;
  return 1;
}

void WebColourFormat(std::uint32_t colour, char* out) {
  std::snprintf(out, 7, "%02X%02X%02X", colour & 255, colour >> 8 & 255, colour >> 16 & 255);
}
