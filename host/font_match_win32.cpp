// Asks GDI whether any font of the family is installed; when none is, the
// text engine falls back on a family of its own choosing.
#include <windows.h>

#include <cstring>

#include "host/font_match.h"

namespace {

int CALLBACK NoteFamily(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM found) {
  *reinterpret_cast<int*>(found) = 1;
  return 0;
}

}  // namespace

int FontFamilyFound(const char* name, int, int, std::string* used) {
  used->clear();
  LOGFONTA wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  std::strncpy(wanted.lfFaceName, name, LF_FACESIZE - 1);
  HDC screen = GetDC(nullptr);
  int found = 0;
  EnumFontFamiliesExA(screen, &wanted, NoteFamily, reinterpret_cast<LPARAM>(&found), 0);
  ReleaseDC(nullptr, screen);
  return found;
}
