// Asks fontconfig the question the text engine asks, and looks at whose
// family the answer is.
#include <fontconfig/fontconfig.h>
#include <strings.h>

#include "host/font_match.h"

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
  FcConfig* config = FcInitLoadConfigAndFonts();
  if (config == nullptr) return 1;  // nothing to compare with
  FcPattern* pattern = FcPatternCreate();
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(name));
  FcPatternAddInteger(pattern, FC_WEIGHT, bold != 0 ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern, FC_SLANT, italic != 0 ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(config, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(config, pattern, &result);
  FcPatternDestroy(pattern);
  bool found = match == nullptr || HasFamily(match, name, used);
  if (match != nullptr) FcPatternDestroy(match);
  FcConfigDestroy(config);
  return found ? 1 : 0;
}
