// GIF89a encoder: blocks, colour table and a variable-width LZW coder.
#include "host/gif_writer.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "host/interrupt_cleanup.h"

namespace {

constexpr int kLzwMaxBits = 12;
constexpr int kLzwTableSize = 1 << kLzwMaxBits;  // 4096 codes

// Codes in least-significant-bit-first order, as GIF packs them.
struct BitPacker {
  std::vector<std::uint8_t>* out;
  std::uint32_t pending = 0;
  int pendingBits = 0;

  void Put(int code, int width) {
    pending |= static_cast<std::uint32_t>(code) << pendingBits;
    pendingBits += width;
    while (pendingBits >= 8) {
      out->push_back(static_cast<std::uint8_t>(pending));
      pending >>= 8;
      pendingBits -= 8;
    }
  }
  void Flush() {
    if (pendingBits > 0) out->push_back(static_cast<std::uint8_t>(pending));
    pending = 0;
    pendingBits = 0;
  }
};

// The string table: (prefix code, next index) -> code, open addressing over
// twice the number of codes so probes stay short. A slot holds the 20-bit
// key and the 12-bit code together, so a probe is one load.
struct LzwDictionary {
  static constexpr int kSlots = 2 * kLzwTableSize;
  static constexpr std::uint32_t kEmpty = 0xFFFFFFFF;
  std::vector<std::uint32_t> slots = std::vector<std::uint32_t>(kSlots, kEmpty);

  static std::uint32_t Key(int prefix, int index) { return static_cast<std::uint32_t>(prefix << 8 | index); }
  static int SlotOf(std::uint32_t key) { return static_cast<int>((key * 2654435761u) >> 19 & (kSlots - 1)); }
  int Find(int prefix, int index) const {
    std::uint32_t key = Key(prefix, index);
    for (int slot = SlotOf(key);; slot = (slot + 1) & (kSlots - 1)) {
      std::uint32_t held = slots[slot];
      if (held == kEmpty) return -1;
      if (held >> 12 == key) return static_cast<int>(held & 0xFFF);
    }
  }
  void Add(int prefix, int index, int code) {
    std::uint32_t key = Key(prefix, index);
    int slot = SlotOf(key);
    while (slots[slot] != kEmpty && slots[slot] >> 12 != key) slot = (slot + 1) & (kSlots - 1);
    slots[slot] = key << 12 | static_cast<std::uint32_t>(code);
  }
  void Clear() { std::fill(slots.begin(), slots.end(), kEmpty); }
};

int BitsFor(int highestValue) {
  int bits = 1;
  while ((1 << bits) <= highestValue) ++bits;
  return bits;
}

void PutWord(std::vector<std::uint8_t>* out, int value) {
  out->push_back(static_cast<std::uint8_t>(value));
  out->push_back(static_cast<std::uint8_t>(value >> 8));
}

// Data cut into sub-blocks of at most 255 bytes, ended by an empty one.
void PutSubBlocks(std::vector<std::uint8_t>* out, const std::uint8_t* data, std::size_t size) {
  for (std::size_t start = 0; start < size; start += 255) {
    std::size_t length = std::min<std::size_t>(255, size - start);
    out->push_back(static_cast<std::uint8_t>(length));
    out->insert(out->end(), data + start, data + start + length);
  }
  out->push_back(0);
}

void PutHeader(std::vector<std::uint8_t>* out, const GifAnimation& animation, int tableBits) {
  int width = animation.width;
  int height = animation.height;
  for (const GifFrame& frame : animation.frames) {
    width = std::max(width, frame.left + frame.width);
    height = std::max(height, frame.top + frame.height);
  }
  for (char letter : std::string_view("GIF89a")) out->push_back(static_cast<std::uint8_t>(letter));
  PutWord(out, width);
  PutWord(out, height);
  // Global table present, 8 bits of colour resolution, table of 2^tableBits.
  out->push_back(static_cast<std::uint8_t>(0x80 | 7 << 4 | (tableBits - 1)));
  out->push_back(0);  // background colour index
  out->push_back(0);  // square pixels
  out->insert(out->end(), animation.palette, animation.palette + 3 * (1 << tableBits));
}

void PutLoopForever(std::vector<std::uint8_t>* out) {
  const std::uint8_t block[] = {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0};
  out->insert(out->end(), block, block + sizeof block);
}

void PutComment(std::vector<std::uint8_t>* out, const std::string& text) {
  out->push_back(0x21);
  out->push_back(0xFE);
  PutSubBlocks(out, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

void PutFrame(std::vector<std::uint8_t>* out, const GifFrame& frame, int codeSize) {
  bool transparent = frame.transparentIndex >= 0 && frame.transparentIndex < 256;
  out->push_back(0x21);
  out->push_back(0xF9);
  out->push_back(4);
  out->push_back(static_cast<std::uint8_t>(frame.disposal << 2 | (transparent ? 1 : 0)));
  PutWord(out, static_cast<int>(std::min<std::uint32_t>(frame.delay, 65535)));
  out->push_back(static_cast<std::uint8_t>(transparent ? frame.transparentIndex : 0));
  out->push_back(0);

  out->push_back(0x2C);
  PutWord(out, frame.left);
  PutWord(out, frame.top);
  PutWord(out, frame.width);
  PutWord(out, frame.height);
  out->push_back(0);  // no local table, not interlaced

  if (!frame.codes.empty()) {
    out->push_back(static_cast<std::uint8_t>(frame.codeSize));
    PutSubBlocks(out, frame.codes.data(), frame.codes.size());
    return;
  }
  out->push_back(static_cast<std::uint8_t>(codeSize));
  std::vector<std::uint8_t> codes = GifLzwEncode(frame.indices.data(), frame.indices.size(), codeSize);
  PutSubBlocks(out, codes.data(), codes.size());
}

// How many pixels from start the longest string in the dictionary covers
// when it starts from code, each pixel taking its index or else its other
// value.
std::size_t MatchLength(const LzwDictionary& dictionary, const std::uint8_t* indices, const std::uint8_t* others,
                        std::size_t start, std::size_t count, int code) {
  std::size_t position = start;
  for (; position < count; ++position) {
    int extended = dictionary.Find(code, indices[position]);
    if (extended < 0) extended = dictionary.Find(code, others[position]);
    if (extended < 0) break;
    code = extended;
  }
  return position - start;
}

// The coder behind both entry points. Where others is given, a pixel whose
// other value makes the current string longer takes it, and chosen records
// the value each pixel took.
std::vector<std::uint8_t> LzwCode(const std::uint8_t* indices, const std::uint8_t* others, std::uint8_t* chosen,
                                  std::size_t count, int minimumCodeSize, std::size_t limit) {
  std::vector<std::uint8_t> out;
  BitPacker packer{&out};
  LzwDictionary dictionary;
  const int clearCode = 1 << minimumCodeSize;
  const int endCode = clearCode + 1;
  int nextCode = endCode + 1;
  int width = minimumCodeSize + 1;
  packer.Put(clearCode, width);
  if (count == 0) {
    packer.Put(endCode, width);
    packer.Flush();
    return out;
  }

  int prefix = indices[0];
  for (std::size_t position = 1; position < count && out.size() <= limit; ++position) {
    int index = indices[position];
    int extended = dictionary.Find(prefix, index);
    if (others != nullptr && others[position] != index) {
      // Where both values grow the string, the one that grows it further.
      int alternative = dictionary.Find(prefix, others[position]);
      if (alternative >= 0 && (extended < 0 || MatchLength(dictionary, indices, others, position + 1, count, alternative) >
                                                   MatchLength(dictionary, indices, others, position + 1, count, extended))) {
        extended = alternative;
        chosen[position] = others[position];
      }
    }
    if (extended >= 0) {
      prefix = extended;
      continue;
    }
    packer.Put(prefix, width);
    // A pixel that starts a string takes the value that starts the longer one.
    if (others != nullptr && others[position] != index &&
        MatchLength(dictionary, indices, others, position + 1, count, others[position]) >
            MatchLength(dictionary, indices, others, position + 1, count, index)) {
      index = others[position];
      chosen[position] = others[position];
    }
    if (nextCode == kLzwTableSize) {
      // The table is full: start over, as the decoder will on this code.
      packer.Put(clearCode, width);
      dictionary.Clear();
      nextCode = endCode + 1;
      width = minimumCodeSize + 1;
    } else {
      dictionary.Add(prefix, index, nextCode);
      // The decoder adds each entry one code later than we do, so it widens
      // its reads exactly when our newest code no longer fits.
      if (nextCode == 1 << width) ++width;
      ++nextCode;
    }
    prefix = index;
  }
  packer.Put(prefix, width);
  // Reading that last code, the decoder adds its own entry, which may widen
  // the end code.
  if (nextCode == 1 << width && width < kLzwMaxBits) ++width;
  packer.Put(endCode, width);
  packer.Flush();
  return out;
}

}  // namespace

int GifPaletteBits(int depth) { return std::clamp(depth, 1, 8); }

int GifTableBits(const GifAnimation& animation) {
  int highest = 1;  // a table has at least two entries
  for (const GifFrame& frame : animation.frames) {
    for (std::uint8_t index : frame.indices) highest = std::max<int>(highest, index);
    if (frame.transparentIndex < 256) highest = std::max(highest, frame.transparentIndex);
  }
  return std::max(GifPaletteBits(animation.depth), BitsFor(highest));
}

int GifCodeSizeFor(int bits) { return std::max(2, bits); }

std::vector<std::uint8_t> GifLzwEncode(const std::uint8_t* indices, std::size_t count, int minimumCodeSize) {
  return LzwCode(indices, nullptr, nullptr, count, minimumCodeSize, SIZE_MAX);
}

std::vector<std::uint8_t> GifLzwEncodeChoosing(std::uint8_t* indices, const std::uint8_t* others, std::size_t count,
                                               int minimumCodeSize, std::size_t limit) {
  return LzwCode(indices, others, indices, count, minimumCodeSize, limit);
}

std::vector<std::uint8_t> GifEncode(const GifAnimation& animation) {
  std::vector<std::uint8_t> out;
  int tableBits = GifTableBits(animation);
  PutHeader(&out, animation, tableBits);
  PutLoopForever(&out);
  // Comments go ahead of the first image, where every decoder reads them.
  for (const std::string& comment : animation.comments) PutComment(&out, comment);
  for (const GifFrame& frame : animation.frames)
    PutFrame(&out, frame, GifCodeSizeFor(tableBits));
  out.push_back(0x3B);
  return out;
}

int GifWriteFile(const GifAnimation& animation, const std::string& path) {
  return GifWriteBytes(GifEncode(animation), path);
}

std::string GifWriteTarget(const std::string& path) {
  if (path == "-") return path;
  std::error_code error;
  std::filesystem::path target = path;
  for (int hops = 0; hops < 40 && std::filesystem::is_symlink(target, error); ++hops) {
    std::filesystem::path link = std::filesystem::read_symlink(target, error);
    if (error) break;
    target = link.is_absolute() ? link : target.parent_path() / link;
  }
  return target.string();
}

int GifWriteBytes(const std::vector<std::uint8_t>& bytes, const std::string& path) {
  std::string target = GifWriteTarget(path);
  if (target == "-") {
    if (isatty(fileno(stdout)) != 0) return (errno = ENOTTY), 0;
    return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0 ? 1 : 0;
  }
  std::error_code status;
  bool direct = std::filesystem::exists(target, status) && !std::filesystem::is_regular_file(target, status);
  std::string written = direct ? target : target + ".tmp";
  // Made before the file exists, so that nothing after it allocates: the
  // temporary file is then always either moved into place or removed.
  const std::filesystem::path from = written;
  const std::filesystem::path to = target;
  if (!direct) InterruptCleanupWatchFile(written);
  std::FILE* file = std::fopen(written.c_str(), "wb");
  if (file == nullptr) {
    InterruptCleanupRelease();
    return 0;
  }
  bool complete = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
  int saved = errno;
  if (std::fclose(file) != 0 && complete) {
    complete = false;
    saved = errno;
  }
  if (direct) return complete ? 1 : ((errno = saved), 0);
  std::error_code renamed;
  if (complete) std::filesystem::rename(from, to, renamed);
  bool moved = complete && !renamed;
  if (!moved) std::remove(written.c_str());
  InterruptCleanupRelease();
  if (moved) return 1;
  errno = complete ? renamed.value() : saved;
  return 0;
}
