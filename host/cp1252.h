// Text typed on the command line arrives as UTF-8; the renderer takes it in
// Windows-1252, one byte per character, and shows it back in UTF-8.
#pragma once

#include <string>

// Converts utf8 into out. On failure returns 0 and describes the first
// offending character in error: a malformed sequence, or a character that
// Windows-1252 cannot represent.
int Utf8ToCodePage(const std::string& utf8, std::string* out, std::string* error);

// The code page's text in UTF-8; every byte has a character.
std::string CodePageToUtf8(const std::string& text);
