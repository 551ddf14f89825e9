// The two fixed palettes that are kept as data rather than worked out:
// red, green, blue triples.
#pragma once

#include <cstdint>

extern const std::uint8_t kPaletteSafe216[648];
extern const std::uint8_t kPaletteCubeWithGray[768];
