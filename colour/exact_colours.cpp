// Counting distinct colours over all frames, up to 256 of them.
#include "colour/exact_colours.h"

namespace {

int ListedSlot(std::int32_t colour) {
  return static_cast<int>((static_cast<std::uint32_t>(colour) * 2654435761u) >> 23);
}

// Lists the colour unless it is listed already; true if it was new.
bool ListIfNew(ExactColours* exact, std::int32_t colour) {
  int slot = ListedSlot(colour);
  while (exact->listedSlots[slot] != 0) {
    if (exact->listedSlots[slot] == colour + 1) return false;
    slot = (slot + 1) & (kListedSlots - 1);
  }
  exact->listedSlots[slot] = colour + 1;
  exact->colours[exact->listed++] = colour;
  return true;
}

}  // namespace

void ExactColoursScan(ExactColours* exact, const DibHead* head) {
  int width = head->biWidth;
  int height = head->biHeight;
  // A run of equal pixels needs one search: the list only grows.
  std::int32_t lastListed = -1;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* row = DibRow(head, y);
    for (int x = 0; x < width; ++x) {
      if (exact->listed == 256) {  // from here on every pixel counts
        exact->distinct += static_cast<std::int64_t>(height - y) * width - x;
        return;
      }
      const std::uint8_t* pixel = row + x * 3;
      std::int32_t colour = pixel[0] << 16 | pixel[1] << 8 | pixel[2];
      if (colour == lastListed) continue;
      lastListed = colour;
      if (ListIfNew(exact, colour)) exact->distinct += 1;
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
