// Support for the GIF tests: a deliberately plain GIF reader that walks the
// blocks of a file, decodes LZW the textbook way and notes what the encoder
// did (clear codes, widest code), so that the writer is checked against an
// independent reading rather than against itself; and the makings of tasks
// and frames to hand to the host.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "host/reference_host.h"
#include "plugin/host_interface.h"
#include "raster/dib.h"
#include "tests/test_folder.h"

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
  for (std::uint32_t entry = 0; entry < 256; ++entry) {
    std::uint8_t colour[3] = {std::uint8_t(entry), std::uint8_t(entry * 7 + seed), std::uint8_t(255 - entry)};
    std::memcpy(task.palette + 3 * entry, colour, 3);
  }
  return task;
}

inline std::int64_t TestPointer(const void* address) { return reinterpret_cast<std::int64_t>(address); }

inline std::vector<std::uint8_t> TestReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A frame for the host's code 2.
inline ImageRecord TestImage(DibHandle dib, std::uint32_t number, std::uint32_t delay, std::int32_t transparentIndex,
                             std::uint32_t transparentFlag) {
  ImageRecord record{};
  record.size = sizeof(ImageRecord);
  record.version = kInterfaceVersion;
  record.image = dib;
  record.imageNumber = number;
  record.delay = delay;
  record.transparentIndex = transparentIndex;
  record.transparentFlag = transparentFlag;
  return record;
}

struct TestLzwStats {
  int clearCodes = 0, widestCode = 0;
  bool ok = false;  // ended on the end code at the end of the data, no code out of turn
};

// Decodes a bare code stream (no sub-blocks), the table holding whole strings.
inline std::vector<std::uint8_t> TestLzwDecode(const std::vector<std::uint8_t>& data, int minimumCodeSize,
                                               TestLzwStats* stats) {
  const std::size_t clearCode = std::size_t{1} << minimumCodeSize;
  std::vector<std::vector<std::uint8_t>> table;
  std::vector<std::uint8_t> out, previous;  // previous is empty right after a clear code
  int width = 0;
  auto clear = [&] {
    table.assign(clearCode + 2, {});  // the clear and end codes stand for no string
    for (std::size_t code = 0; code < clearCode; ++code) table[code] = {static_cast<std::uint8_t>(code)};
    width = minimumCodeSize + 1;
    previous.clear();
  };
  clear();
  for (std::size_t bit = 0; bit + width <= data.size() * 8;) {
    std::size_t code = 0;
    for (int i = 0; i < width; ++i, ++bit) code |= std::size_t{data[bit / 8] >> (bit % 8) & 1u} << i;
    stats->widestCode = std::max(stats->widestCode, width);
    if (code == clearCode) {
      stats->clearCodes += 1;
      clear();
      continue;
    }
    if (code == clearCode + 1) {
      stats->ok = (bit + 7) / 8 == data.size();  // nothing but padding behind it
      return out;
    }
    if (code > table.size() || (code == table.size() && previous.empty())) return out;  // not known yet
    std::vector<std::uint8_t> text = code < table.size() ? table[code] : previous;
    if (code == table.size()) text.push_back(previous[0]);
    out.insert(out.end(), text.begin(), text.end());
    if (!previous.empty() && table.size() < 4096) {
      previous.push_back(text[0]);
      table.push_back(previous);
      if (table.size() == std::size_t{1} << width && width < 12) width += 1;
    }
    previous = text;
  }
  return out;
}

// delay, disposal and transparent are -1 without a control block (or
// without a transparent index).
struct TestGifFrame {
  int left = 0, top = 0, width = 0, height = 0, delay = -1, disposal = -1, transparent = -1, codeSize = 0;
  bool localTable = false;
  TestLzwStats lzw;
  std::vector<std::uint8_t> indices;
};

// ok: every block was understood and the trailer reached; loopCount is -1
// without a NETSCAPE2.0 block.
struct TestGif {
  bool ok = false;
  int width = 0, height = 0, tableEntries = 0, loopCount = -1;
  std::vector<std::uint8_t> table;
  std::vector<std::string> comments;
  std::vector<TestGifFrame> frames;
};

inline TestGif TestGifParse(const std::vector<std::uint8_t>& file) {
  TestGif gif;
  std::size_t at = 6;
  auto byte = [&]() -> int { return at < file.size() ? file[at++] : -1; };
  auto word = [&]() { return (at += 2) <= file.size() ? file[at - 2] | file[at - 1] << 8 : -1; };
  auto subBlocks = [&]() {
    std::vector<std::uint8_t> data;
    for (int length = byte(); length > 0; length = byte())
      for (int i = 0; i < length; ++i) data.push_back(static_cast<std::uint8_t>(byte()));
    return data;
  };
  if (file.size() < 13 || std::memcmp(file.data(), "GIF89a", 6) != 0) return gif;
  gif.width = word();
  gif.height = word();
  int packed = byte();
  at += 2;
  if ((packed & 0x80) != 0) {
    gif.tableEntries = 2 << (packed & 7);
    gif.table.assign(file.begin() + at, file.begin() + at + 3 * gif.tableEntries);
    at += 3 * gif.tableEntries;
  }
  TestGifFrame pending;
  for (int introducer = byte(); introducer != 0x3B; introducer = byte()) {
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
      TestGifFrame& frame = gif.frames.emplace_back(std::exchange(pending, TestGifFrame{}));
      for (int* field : {&frame.left, &frame.top, &frame.width, &frame.height}) *field = word();
      frame.localTable = (byte() & 0x80) != 0;
      frame.codeSize = byte();
      frame.indices = TestLzwDecode(subBlocks(), frame.codeSize, &frame.lzw);
    } else {
      return gif;
    }
  }
  gif.ok = true;
  return gif;
}

// A bottom-up indexed or true-colour bitmap in the store's layout, built by
// hand so the tests do not lean on the bitmap constructors; values are pixel
// values, rows from the top. The colour table stays black: the host takes its
// colours from the task.
inline DibHandle TestMakeDib(int width, int height, int depth, const std::vector<std::uint32_t>& values) {
  std::size_t size =
      kDibHeadSize + DibColourTableBytes(depth) + static_cast<std::size_t>(DibStride(depth, width)) * height;
  DibHandle dib = MemAlloc(kMemMoveableZeroed, size);
  auto* head = static_cast<DibHead*>(MemLock(dib));
  head->biSize = kDibHeadSize;
  head->biWidth = width;
  head->biHeight = height;
  head->biPlanes = 1;
  head->biBitCount = static_cast<std::uint16_t>(depth);
  for (std::size_t i = 0; i < values.size(); ++i) DibPutPixel(head, int(i) % width, int(i) / width, values[i]);
  MemUnlock(dib);
  return dib;
}

// A frame to hand to the host: its size, pixel values from the top, delay and
// transparency.
struct TestHostFrame {
  int width, height;
  std::vector<std::uint32_t> pixels;
  std::uint32_t delay;
  std::int32_t transparentIndex;
  std::uint32_t transparentFlag;
};

// Runs one task through the reference host into path, the frames as bitmaps
// of dibDepth bits, then the comment if there is one; the plain file unless
// optimised is asked for.
inline void TestHostWrite(const std::string& path, TaskRecord task, int dibDepth,
                          const std::vector<TestHostFrame>& frames, const std::string& comment = "",
                          bool optimised = false) {
  ReferenceHostReset(path, false);
  ReferenceHostCurrent().plainOutput = !optimised;
  ASSERT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, TestPointer(&task)), 1);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const TestHostFrame& frame = frames[i];
    DibOwner dib(TestMakeDib(frame.width, frame.height, dibDepth, frame.pixels));
    ImageRecord image =
        TestImage(dib.get(), std::uint32_t(i), frame.delay, frame.transparentIndex, frame.transparentFlag);
    ASSERT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, TestPointer(&image)), 1);
  }
  if (!comment.empty()) {
    ASSERT_EQ(ReferenceHostCallback(&task, kHostAddComment, 0, TestPointer(comment.c_str())), 1);
  }
  ASSERT_EQ(ReferenceHostCallback(&task, kHostCloseTask, 1, 0), 1);
}
