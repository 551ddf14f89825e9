// Counting distinct colours over all frames, up to 256 of them.
#include "colour/exact_colours.h"

namespace {

bool IsListed(const ExactColours* exact, std::int32_t colour) {
  for (int i = 0; i < exact->listed; ++i) {
    if (exact->colours[i] == colour) return true;
  }
  return false;
}

}  // namespace

void ExactColoursScan(ExactColours* exact, const DibHead* head) {
  // A run of equal pixels needs one search: the list only grows.
  std::int32_t lastListed = -1;
  for (int y = 0; y < head->biHeight; ++y) {
    for (int x = 0; x < head->biWidth; ++x) {
      std::int32_t colour = DibGetPixel(head, x, y);
      if (exact->listed == 256) {
        exact->distinct += 1;
        continue;
      }
      if (colour == lastListed || IsListed(exact, colour)) {
        lastListed = colour;
        continue;
      }
      exact->colours[exact->listed++] = colour;
      exact->distinct += 1;
      lastListed = colour;
    }
  }
}

void ExactColoursToPalette(const ExactColours* exact, std::uint8_t* palette) {
  for (int i = 0; i < exact->listed; ++i) {
    palette[i * 3] = static_cast<std::uint8_t>(exact->colours[i]);
    palette[i * 3 + 1] = static_cast<std::uint8_t>(exact->colours[i] >> 8);
    palette[i * 3 + 2] = static_cast<std::uint8_t>(exact->colours[i] >> 16);
  }
}
