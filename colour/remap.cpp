// Remapping without dithering.
#include "colour/remap.h"

#include "colour/palette.h"

namespace {

constexpr int kOneBitLimit = 129;  // luminance from which a pixel is white at 1 bit

struct PlainRemap {
  int sourceBits;
  int targetBits;
  std::uint8_t sourcePalette[kPaletteBytes];
  std::uint8_t colourMap[256];  // source colour-table index to palette index
  int whiteIndex;
  int blackIndex;
  ColourSearch search;
};

int LuminanceBit(const std::uint8_t* rgb) { return Luminance(rgb[0], rgb[1], rgb[2]) < kOneBitLimit ? 0 : 1; }

void FindWhiteAndBlack(PlainRemap* remap) {
  const ColourSearch& search = remap->search;
  if (search.fastRemap != 0) {
    remap->whiteIndex = PaletteFindExact(search.palette, search.colours, 255, 255, 255);
    if (remap->whiteIndex < 0) remap->whiteIndex = ColourTableNearest(search.table, 32767);
    remap->blackIndex = PaletteFindExact(search.palette, search.colours, 0, 0, 0);
    if (remap->blackIndex < 0) remap->blackIndex = ColourTableNearest(search.table, 0);
  } else {
    remap->whiteIndex = NearestColour(255, 255, 255, search.palette, search.colours);
    remap->blackIndex = NearestColour(0, 0, 0, search.palette, search.colours);
  }
}

int IndexOf(PlainRemap* remap, std::int32_t value) {
  if (remap->sourceBits == 1) {
    if (remap->targetBits == 1) return value;
    return value != 0 ? remap->whiteIndex : remap->blackIndex;
  }
  if (remap->sourceBits <= 8) {
    if (remap->targetBits == 1) return LuminanceBit(remap->sourcePalette + value * 3);
    return remap->colourMap[value];
  }
  std::uint8_t rgb[3] = {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
                         static_cast<std::uint8_t>(value >> 16)};
  if (remap->targetBits == 1) return LuminanceBit(rgb);
  return ColourSearchFind(&remap->search, rgb[0], rgb[1], rgb[2]);
}

// A 24-bit source into an 8-bit target, the usual case, row by row; a run of
// one colour is searched once.
void RemapTrueColourToBytes(const DibHead* head, DibHead* target, ColourSearch* search) {
  int width = head->biWidth;
  for (int stored = 0; stored < head->biHeight; ++stored) {
    const std::uint8_t* from = DibRows(head) + static_cast<std::ptrdiff_t>(stored) * DibStride(24, width);
    std::uint8_t* to = DibRows(target) + static_cast<std::ptrdiff_t>(stored) * DibStride(8, width);
    std::int32_t lastColour = -1;
    int lastIndex = 0;
    for (int x = 0; x < width; ++x) {
      const std::uint8_t* pixel = from + x * 3;
      std::int32_t colour = ColourPack(pixel[2], pixel[1], pixel[0]);
      if (colour != lastColour) {
        lastColour = colour;
        lastIndex = ColourSearchFind(search, pixel[2], pixel[1], pixel[0]);
      }
      to[x] = static_cast<std::uint8_t>(lastIndex);
    }
  }
}

}  // namespace

DibHandle RemapPlain(DibHandle source, const std::uint8_t* palette, int depth, int colours,
                     const RemapOptions& options) {
  if (depth < 1 || depth > 8) return nullptr;
  DibLock sourceLock(source);
  if (sourceLock.head == nullptr) return nullptr;
  const DibHead* head = sourceLock.head;
  PlainRemap plain{};
  PlainRemap* remap = &plain;
  remap->sourceBits = head->biBitCount;
  if (remap->sourceBits <= 8) {
    int tableColours = DibPaletteOf(head, remap->sourcePalette);
    for (int i = 0; i < tableColours; ++i) {
      const std::uint8_t* rgb = remap->sourcePalette + i * 3;
      remap->colourMap[i] = static_cast<std::uint8_t>(NearestColour(rgb[0], rgb[1], rgb[2], palette, 1 << depth));
    }
  }
  ColourSearchInit(&remap->search, palette, colours, options.fastRemap);
  FindWhiteAndBlack(remap);

  DibOwner target(DibNew(head->biWidth, head->biHeight, palette, depth));
  DibLock targetLock(target.get());
  if (targetLock.head == nullptr) return nullptr;
  remap->targetBits = targetLock.head->biBitCount;
  if (remap->sourceBits == 24 && remap->targetBits == 8) {
    RemapTrueColourToBytes(head, targetLock.head, &remap->search);
    return target.release();
  }
  for (int y = head->biHeight - 1; y >= 0; --y) {
    for (int x = 0; x < head->biWidth; ++x) {
      std::int32_t value = DibGetPixel(head, x, y);
      DibPutPixel(targetLock.head, x, y, static_cast<std::uint32_t>(IndexOf(remap, value)));
    }
  }
  return target.release();
}
