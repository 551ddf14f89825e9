// Asks fontconfig the question the text engine asks, and looks at whose
// family the answer is.
#include <fontconfig/fontconfig.h>
#include <strings.h>

#include "host/font_match.h"
#include "raster/font_config_freetype.h"

namespace {

bool HasFamily(FcPattern* match, const std::string& name, std::string* first) {
  FcChar8* family = nullptr;
  for (int index = 0; FcPatternGetString(match, FC_FAMILY, index, &family) == FcResultMatch; ++index) {
    const char* text = reinterpret_cast<const char*>(family);
    if (index == 0) *first = text;
    if (strcasecmp(text, name.c_str()) == 0) return true;
  }
  return false;
}

}  // namespace

int FontFamilyFound(const char* name, int bold, int italic, std::string* used) {
  used->clear();
  FcPattern* match = nullptr;
  if (FontConfigMatch(name, bold != 0, italic != 0, &match) != FontMatchResult::kMatched) return 1;  // nothing to compare with
  bool found = HasFamily(match, name, used);
  FcPatternDestroy(match);
  return found ? 1 : 0;
}
