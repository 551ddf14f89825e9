// The font configuration that the headless drawing service and the command
// line's font check share: fontconfig's own configuration, read once per
// process however often engines start, and the one question both ask of it.
#pragma once

#include <fontconfig/fontconfig.h>

// The process's configuration, loaded on first use; null if it cannot be.
FcConfig* FontConfig();

enum class FontMatchResult { kMatched, kNoFont, kOutOfMemory };

// The font fontconfig picks for the family name (in the code page), bold or
// not, italic or not, among scalable fonts. The caller destroys *match.
FontMatchResult FontConfigMatch(const char* family, bool bold, bool italic, FcPattern** match);
