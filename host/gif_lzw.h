// GIF's LZW coding of one image's indices.
#pragma once

#include <cstddef>
#include <cstdint>  // SIZE_MAX
#include <vector>

// What the LZW coder does once its table holds all 4096 strings: start over
// with a clear code, or go on with the strings it has (decoders stop adding
// strings then), which codes smaller where the rest of the image repeats
// what came before.
enum class GifFullTable : std::uint8_t { kClear, kKeep };

// The LZW code stream of one image, without the code-size byte and before it
// is cut into sub-blocks: a clear code first, codes growing from
// minimumCodeSize + 1 to 12 bits, what full says once the table is full, and
// the end code last. Once the codes pass limit bytes the coder stops, and
// what it returns is only known to be longer than limit. filled, where given,
// says whether the table filled.
std::vector<std::uint8_t> GifLzwEncode(const std::uint8_t* indices, std::size_t count, int minimumCodeSize,
                                       std::size_t limit = SIZE_MAX, GifFullTable full = GifFullTable::kClear,
                                       bool* filled = nullptr);

// How a coder chooses where each pixel may show either of two values. Each
// codes smaller than the other on some images.
enum class GifChoosing : std::uint8_t {
  // A pixel keeps its index unless its other value grows the current string
  // where the index does not, or grows it further, or starts a longer one.
  kGrowing,
  // Each string is the longest the dictionary holds over the values its
  // pixels may take; among strings of one length a pixel keeps the value of
  // the pixel before it, then its index.
  kLongest,
};

// As GifLzwEncode, where each pixel may show either of two values: its index
// or its value in others, chosen as how says. The values taken are written
// back to indices, and coding them with GifLzwEncode gives the same codes.
// It stops as GifLzwEncode does.
std::vector<std::uint8_t> GifLzwEncodeChoosing(std::uint8_t* indices, const std::uint8_t* others, std::size_t count,
                                               int minimumCodeSize, std::size_t limit, GifChoosing how,
                                               GifFullTable full = GifFullTable::kClear, bool* filled = nullptr);
