// Support for the GIF tests: a deliberately plain GIF reader that walks the
// blocks of a file, decodes LZW the textbook way and notes what the encoder
// did (clear codes, widest code), so that the writer is checked against an
// independent reading rather than against itself; and the makings of tasks
// and frames to hand to the host.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "plugin/host_interface.h"
#include "raster/dib.h"

// Repeatable noise of values 0 to levels - 1.
inline std::vector<std::uint8_t> TestNoise(std::size_t count, int levels, std::uint32_t seed) {
  std::vector<std::uint8_t> values(count);
  for (std::uint8_t& value : values) {
    seed = seed * 1103515245u + 12345u;
    value = static_cast<std::uint8_t>((seed >> 16) % levels);
  }
  return values;
}

// A task whose 256 palette entries all differ, so that colours identify indices.
inline TaskRecord TestTask(int depth, int width, int height, std::uint32_t seed) {
  TaskRecord task{};
  task.size = sizeof(TaskRecord);
  task.version = kInterfaceVersion;
  task.bitsPerPixel = static_cast<std::uint32_t>(depth);
  task.width = static_cast<std::uint32_t>(width);
  task.height = static_cast<std::uint32_t>(height);
  for (int entry = 0; entry < 256; ++entry) {
    task.palette[3 * entry] = static_cast<std::uint8_t>(entry);
    task.palette[3 * entry + 1] = static_cast<std::uint8_t>(entry * 7 + seed);
    task.palette[3 * entry + 2] = static_cast<std::uint8_t>(255 - entry);
  }
  return task;
}

struct TestLzwStats {
  int clearCodes = 0;
  int widestCode = 0;
  bool ok = false;  // ended on the end code at the end of the data, no code out of turn
};

// Decodes a bare code stream (no sub-blocks).
inline std::vector<std::uint8_t> TestLzwDecode(const std::vector<std::uint8_t>& data, int minimumCodeSize,
                                               TestLzwStats* stats) {
  std::vector<std::uint8_t> out;
  const int clearCode = 1 << minimumCodeSize;
  const int endCode = clearCode + 1;
  std::vector<int> prefixOf(4096, -1);
  std::vector<std::uint8_t> suffixOf(4096, 0);
  for (int code = 0; code < clearCode; ++code) suffixOf[code] = static_cast<std::uint8_t>(code);
  int width = minimumCodeSize + 1;
  int nextCode = endCode + 1;
  int previous = -1;
  std::size_t bitPosition = 0;
  std::vector<std::uint8_t> text;

  auto stringOf = [&](int code) {
    text.clear();
    for (int walk = code; walk != -1; walk = prefixOf[walk]) text.insert(text.begin(), suffixOf[walk]);
  };

  while (bitPosition + width <= data.size() * 8) {
    int code = 0;
    for (int bit = 0; bit < width; ++bit, ++bitPosition) {
      code |= (data[bitPosition / 8] >> (bitPosition % 8) & 1) << bit;
    }
    if (width > stats->widestCode) stats->widestCode = width;
    if (code == clearCode) {
      stats->clearCodes += 1;
      width = minimumCodeSize + 1;
      nextCode = endCode + 1;
      previous = -1;
      continue;
    }
    if (code == endCode) {
      stats->ok = (bitPosition + 7) / 8 == data.size();  // nothing but padding behind it
      return out;
    }
    if (previous == -1) {
      if (code >= clearCode) return out;
      out.push_back(static_cast<std::uint8_t>(code));
      previous = code;
      continue;
    }
    if (code < nextCode) {
      stringOf(code);
    } else if (code == nextCode) {
      stringOf(previous);
      text.push_back(text[0]);
    } else {
      return out;  // a code the decoder cannot know yet
    }
    out.insert(out.end(), text.begin(), text.end());
    if (nextCode < 4096) {
      prefixOf[nextCode] = previous;
      suffixOf[nextCode] = text[0];
      nextCode += 1;
      if (nextCode == 1 << width && width < 12) width += 1;
    }
    previous = code;
  }
  return out;
}

struct TestGifFrame {
  int left = 0, top = 0, width = 0, height = 0;
  int delay = -1;  // -1 when the frame has no control block
  int disposal = -1;
  int transparent = -1;  // index, or -1
  bool localTable = false;
  int codeSize = 0;
  TestLzwStats lzw;
  std::vector<std::uint8_t> indices;
};

struct TestGif {
  bool ok = false;  // every block was understood and the trailer reached
  std::string signature;
  int width = 0, height = 0;
  int tableEntries = 0;
  std::vector<std::uint8_t> table;
  int loopCount = -1;  // -1 without a NETSCAPE2.0 block
  std::vector<std::string> comments;
  std::vector<TestGifFrame> frames;
};

inline TestGif TestGifParse(const std::vector<std::uint8_t>& file) {
  TestGif gif;
  std::size_t at = 0;
  auto byte = [&]() -> int { return at < file.size() ? file[at++] : -1; };
  auto word = [&]() {
    int low = byte();
    return low | byte() << 8;
  };
  auto subBlocks = [&]() {
    std::vector<std::uint8_t> data;
    for (int length = byte(); length > 0; length = byte()) {
      for (int i = 0; i < length; ++i) data.push_back(static_cast<std::uint8_t>(byte()));
    }
    return data;
  };
  if (file.size() < 13) return gif;
  gif.signature.assign(file.begin(), file.begin() + 6);
  at = 6;
  gif.width = word();
  gif.height = word();
  int packed = byte();
  byte();
  byte();
  if ((packed & 0x80) != 0) {
    gif.tableEntries = 2 << (packed & 7);
    gif.table.assign(file.begin() + at, file.begin() + at + 3 * gif.tableEntries);
    at += 3 * gif.tableEntries;
  }
  TestGifFrame pending;
  while (at < file.size()) {
    int introducer = byte();
    if (introducer == 0x3B) {
      gif.ok = true;
      return gif;
    }
    if (introducer == 0x21) {
      int label = byte();
      std::vector<std::uint8_t> data = subBlocks();
      if (label == 0xF9 && data.size() == 4) {
        pending.disposal = data[0] >> 2 & 7;
        pending.delay = data[1] | data[2] << 8;
        pending.transparent = (data[0] & 1) != 0 ? data[3] : -1;
      } else if (label == 0xFE) {
        gif.comments.emplace_back(data.begin(), data.end());
      } else if (label == 0xFF && data.size() == 14 && std::memcmp(data.data(), "NETSCAPE2.0", 11) == 0) {
        gif.loopCount = data[12] | data[13] << 8;
      }
    } else if (introducer == 0x2C) {
      TestGifFrame frame = pending;
      pending = TestGifFrame{};
      frame.left = word();
      frame.top = word();
      frame.width = word();
      frame.height = word();
      frame.localTable = (byte() & 0x80) != 0;
      frame.codeSize = byte();
      frame.indices = TestLzwDecode(subBlocks(), frame.codeSize, &frame.lzw);
      gif.frames.push_back(std::move(frame));
    } else {
      return gif;
    }
  }
  return gif;
}

// A bottom-up indexed or true-colour bitmap in the store's layout, built by
// hand so the tests do not lean on the bitmap constructors.
inline DibHandle TestMakeDib(int width, int height, int depth, const std::uint8_t* palette) {
  std::size_t size =
      kDibHeadSize + DibColourTableBytes(depth) + static_cast<std::size_t>(DibStride(depth, width)) * height;
  DibHandle dib = MemAlloc(kMemMoveableZeroed, size);
  auto* head = static_cast<DibHead*>(MemLock(dib));
  head->biSize = kDibHeadSize;
  head->biWidth = width;
  head->biHeight = height;
  head->biPlanes = 1;
  head->biBitCount = static_cast<std::uint16_t>(depth);
  auto* table = reinterpret_cast<std::uint8_t*>(head) + kDibHeadSize;
  for (int entry = 0; palette != nullptr && entry < DibColourTableBytes(depth) / 4; ++entry) {
    table[4 * entry] = palette[3 * entry + 2];
    table[4 * entry + 1] = palette[3 * entry + 1];
    table[4 * entry + 2] = palette[3 * entry];
  }
  MemUnlock(dib);
  return dib;
}

// Puts pixel values, rows from the top, into a bitmap from TestMakeDib.
inline void TestFillDib(DibHandle dib, const std::vector<std::uint32_t>& values) {
  auto* head = static_cast<DibHead*>(MemLock(dib));
  for (int y = 0; y < head->biHeight; ++y) {
    for (int x = 0; x < head->biWidth; ++x) DibPutPixel(head, x, y, values[y * head->biWidth + x]);
  }
  MemUnlock(dib);
}
