// Animated GIF89a output: one global colour table, an endless loop, one
// image per frame with its delay, disposal and transparent index, and comment
// blocks. An animation is gathered in memory and encoded whole when it is
// written, so the colour table and code size can cover every index that any
// frame holds, and the file appears only once it is complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/gif_lzw.h"

// What a decoder does with a frame's area before the next frame is drawn.
enum GifDisposal : std::uint8_t {
  kGifDisposalUnspecified = 0,
  kGifDisposalKeep = 1,        // leave it: transparent pixels of the next frame show this one
  kGifDisposalBackground = 2,  // clear it: transparent pixels of the next frame show what lies behind
};

// Sizes are 16-bit fields in the file.
constexpr int kGifMaxSide = 65535;

struct GifFrame {
  int width;
  int height;
  std::vector<std::uint8_t> indices;  // width * height palette indices, rows from the top
  std::uint32_t delay;                // hundredths of a second; above 65535 is written as 65535
  std::int32_t transparentIndex;      // -1 for none
  GifDisposal disposal;
  int left = 0;  // place on the logical screen
  int top = 0;
  // The image already coded, at this LZW minimum code size; empty to code
  // the indices when the file is made.
  std::vector<std::uint8_t> codes{};
  int codeSize = 0;
};

struct GifAnimation {
  int width;  // logical screen; grown to the largest frame when written
  int height;
  int depth;                  // bits per pixel of the palette: 2^depth entries, at least 2, at most 256
  std::uint8_t palette[768];  // 256 triples of red, green, blue
  std::vector<GifFrame> frames;
  std::vector<std::string> comments;
};

// The LZW minimum code size of an image whose indices are all below 2^bits.
int GifCodeSizeFor(int bits);

// Bits of the table that a depth asks for: 1 to 8.
int GifPaletteBits(int depth);

// Bits of the global colour table: the animation's depth, widened when a
// frame holds an index (or names a transparent index) beyond it. The widened
// entries come from the rest of the 256-entry palette.
int GifTableBits(const GifAnimation& animation);

// The whole file. Once it passes limit bytes the encoder stops, and what it
// returns is only known to be longer than limit.
std::vector<std::uint8_t> GifEncode(const GifAnimation& animation, std::size_t limit = SIZE_MAX);

// Writes the file through a temporary file beside path that is renamed over
// path on success and removed on failure, so a failed write leaves what was
// there. A path that is a symbolic link is written through: the file it
// names is replaced and the link stays. A path that names something other
// than a regular file (a device, a pipe) is written directly, and "-" is
// standard output, refused when that is a terminal. 1 on success; 0 on
// failure, with errno saying why.
int GifWriteFile(const GifAnimation& animation, const std::string& path);
int GifWriteBytes(const std::vector<std::uint8_t>& bytes, const std::string& path);

// The file a write to path replaces: path itself, or what its symbolic
// links lead to. "-" stays as it is.
std::string GifWriteTarget(const std::string& path);
