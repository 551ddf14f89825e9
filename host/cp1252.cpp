#include "host/cp1252.h"

#include <cstdint>
#include <cstdio>

#include "raster/code_page.h"

namespace {

// Decodes one UTF-8 sequence at text[*at], advancing past it; -1 if malformed
// (bad lead or continuation byte, overlong form, surrogate, beyond U+10FFFF).
std::int32_t DecodeOne(const std::string& text, std::size_t* at) {
  auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  unsigned char lead = byte(*at);
  int extra = lead < 0x80 ? 0 : (lead & 0xE0) == 0xC0 ? 1 : (lead & 0xF0) == 0xE0 ? 2 : (lead & 0xF8) == 0xF0 ? 3 : -1;
  if (extra < 0 || *at + extra >= text.size()) return -1;
  std::int32_t value = extra == 0 ? lead : lead & (0x3F >> extra);
  for (int i = 1; i <= extra; ++i) {
    unsigned char next = byte(*at + i);
    if ((next & 0xC0) != 0x80) return -1;
    value = value << 6 | (next & 0x3F);
  }
  static constexpr std::int32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (value < kSmallest[extra] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return -1;
  *at += extra + 1;
  return value;
}

}  // namespace

int Utf8ToCodePage(const std::string& utf8, std::string* out, std::string* error) {
  out->clear();
  std::size_t at = 0;
  while (at < utf8.size()) {
    std::size_t start = at;
    std::int32_t codePoint = DecodeOne(utf8, &at);
    char message[160];
    if (codePoint < 0) {
      std::snprintf(message, sizeof message, "the text is not valid UTF-8 at byte %zu", start);
      *error = message;
      return 0;
    }
    int code = CodePageFromUnicode(static_cast<std::uint32_t>(codePoint));
    if (code < 0) {
      std::snprintf(message, sizeof message, "the character U+%04X \"%s\" cannot be written in Windows-1252",
                    static_cast<unsigned>(codePoint), utf8.substr(start, at - start).c_str());
      *error = message;
      return 0;
    }
    out->push_back(static_cast<char>(code));
  }
  return 1;
}

std::string CodePageToUtf8(const std::string& text) {
  std::string utf8;
  for (char byte : text) {
    std::uint32_t code = CodePageToUnicode(static_cast<unsigned char>(byte));
    if (code < 0x80) {
      utf8.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
      utf8.push_back(static_cast<char>(0xC0 | code >> 6));
      utf8.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
      utf8.push_back(static_cast<char>(0xE0 | code >> 12));
      utf8.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
      utf8.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
  }
  return utf8;
}
