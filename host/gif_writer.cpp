// GIF89a encoder: blocks, colour table and images, and the file written safely.
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

void PutFrame(std::vector<std::uint8_t>* out, const GifFrame& frame, int codeSize, std::size_t limit) {
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
  std::size_t codesLimit = limit > out->size() ? limit - out->size() : 0;
  std::vector<std::uint8_t> codes = GifLzwEncode(frame.indices.data(), frame.indices.size(), codeSize, codesLimit);
  PutSubBlocks(out, codes.data(), codes.size());
}

}  // namespace

int GifPaletteBits(int depth) { return std::clamp(depth, 1, 8); }

int GifTableBits(const GifAnimation& animation) {
  // The highest index has as many bits as all the indices ORed together,
  // which is the cheaper to find.
  int any = 1;  // a table has at least two entries
  for (const GifFrame& frame : animation.frames) {
    std::uint64_t eight = 0;  // eight indices at a time
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= frame.indices.size(); at += sizeof word) {
      std::memcpy(&word, frame.indices.data() + at, sizeof word);
      eight |= word;
    }
    for (; at < frame.indices.size(); ++at) eight |= frame.indices[at];
    for (; eight != 0; eight >>= 8) any |= static_cast<int>(eight & 0xFF);
    if (frame.transparentIndex > 0 && frame.transparentIndex < 256) any |= frame.transparentIndex;
  }
  return std::max(GifPaletteBits(animation.depth), BitsFor(any));
}

int GifCodeSizeFor(int bits) { return std::max(2, bits); }

std::vector<std::uint8_t> GifEncode(const GifAnimation& animation, std::size_t limit) {
  std::vector<std::uint8_t> out;
  int tableBits = GifTableBits(animation);
  PutHeader(&out, animation, tableBits);
  PutLoopForever(&out);
  // Comments go ahead of the first image, where every decoder reads them.
  for (const std::string& comment : animation.comments) PutComment(&out, comment);
  for (const GifFrame& frame : animation.frames) {
    PutFrame(&out, frame, GifCodeSizeFor(tableBits), limit);
    if (out.size() > limit) return out;
  }
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
