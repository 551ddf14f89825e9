#include "raster/font_config_freetype.h"

#include <cstdlib>

FcConfig* FontConfig() {
  static const bool loaded = [] {
    if (!FcInit()) return false;
    std::atexit(FcFini);  // the configuration lives as long as the process
    return true;
  }();
  return loaded ? FcConfigGetCurrent() : nullptr;
}

FontMatchResult FontConfigMatch(const char* family, bool bold, bool italic, FcPattern** match) {
  *match = nullptr;
  FcConfig* config = FontConfig();
  if (config == nullptr) return FontMatchResult::kNoFont;
  // Building the query fails for lack of memory only.
  FcPattern* pattern = FcPatternCreate();
  if (pattern == nullptr) return FontMatchResult::kOutOfMemory;
  if (!FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family)) ||
      !FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR) ||
      !FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN) ||
      !FcPatternAddBool(pattern, FC_SCALABLE, FcTrue) || !FcConfigSubstitute(config, pattern, FcMatchPattern)) {
    FcPatternDestroy(pattern);
    return FontMatchResult::kOutOfMemory;
  }
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  *match = FcFontMatch(config, pattern, &result);
  FcPatternDestroy(pattern);
  if (*match != nullptr) return FontMatchResult::kMatched;
  return result == FcResultOutOfMemory ? FontMatchResult::kOutOfMemory : FontMatchResult::kNoFont;
}
