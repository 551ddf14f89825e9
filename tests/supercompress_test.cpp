#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "colour/palette.h"
#include "colour/quantise.h"
#include "colour/remap.h"
#include "colour/stamp.h"
#include "colour/supercompress.h"
#include "colour_test_frames.h"

namespace {

using colourtest::Frames;
using colourtest::Grey;
using colourtest::MakeBitmap;
using colourtest::PixelsOf;
using colourtest::Rgb;

struct HostCall {
  std::uint32_t code;
  std::int64_t argument;
  std::string text;  // code 10 only
  std::int64_t total;
};
std::vector<HostCall> gCalls;

std::int64_t RecordingHost(TaskRecord*, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument) {
  HostCall call{code, argument, "", 0};
  if (code == kHostStatusText) {
    call.text = reinterpret_cast<const char*>(pointerArgument);
  } else {
    call.total = pointerArgument;
  }
  gCalls.push_back(call);
  return 1;
}

// Runs the stage on the list; the running picture is freed on return.
std::vector<std::int32_t> RunningPictureAfter(Frames& frames, std::int32_t deltaColour) {
  DibHandle previous = nullptr;
  EXPECT_EQ(Supercompress(&frames.list, &previous, deltaColour, nullptr), 1);
  DibOwner owner(previous);
  return previous == nullptr ? std::vector<std::int32_t>{} : PixelsOf(previous);
}

TEST(Supercompress, IdenticalFramesGetFullMasksAndRemapToOneFlatField) {
  std::vector<std::int32_t> pixels = {Rgb(9, 0, 0), Grey(200), Grey(200), Rgb(0, 0, 77), Grey(10), Grey(200)};
  Frames frames;
  for (int f = 0; f < 3; ++f) frames.Add(MakeBitmap(3, 2, pixels));
  EXPECT_EQ(RunningPictureAfter(frames, Grey(200)), pixels);

  EXPECT_EQ(frames.At(0).mask, nullptr);
  EXPECT_EQ(frames.At(0).transparentIndex, -1);
  for (int f = 1; f < 3; ++f) {
    FrameRecord record = frames.At(f);
    ASSERT_NE(record.mask, nullptr);
    EXPECT_EQ(record.transparentIndex, Grey(200));
    EXPECT_EQ(PixelsOf(record.mask), std::vector<std::int32_t>(6, 1));
    DibLock mask(record.mask);
    EXPECT_EQ(mask.head->biBitCount, 1);
    EXPECT_EQ(mask.head->biClrUsed, 2u);
    EXPECT_EQ(MemSize(record.mask), 48u + 4u * 2u);
    const std::uint8_t* table = reinterpret_cast<const std::uint8_t*>(mask.head) + 40;
    const std::uint8_t blackThenWhite[8] = {0, 0, 0, 0, 255, 255, 255, 0};
    EXPECT_EQ(std::memcmp(table, blackThenWhite, 8), 0);
  }

  // After the remap every pixel of frame 2 is the delta index, whose table
  // entry becomes the background colour.
  std::array<std::uint8_t, 768> palette{};
  FixedPaletteBuild(palette.data(), nullptr, 8);
  DibOwner remapped(RemapPlain(frames.At(1).image, palette.data(), 8, 4, RemapOptions{}));
  ASSERT_EQ(SupercompressApplyMask(remapped.get(), frames.At(1).mask, 4, Rgb(1, 2, 3)), 1);
  EXPECT_EQ(PixelsOf(remapped.get()), std::vector<std::int32_t>(6, 4));
  DibLock lock(remapped.get());
  const std::uint8_t* entry = reinterpret_cast<const std::uint8_t*>(lock.head) + 40 + 4 * 4;
  EXPECT_EQ(entry[0], 3);
  EXPECT_EQ(entry[1], 2);
  EXPECT_EQ(entry[2], 1);
  EXPECT_EQ(entry[3], 0);
}

TEST(Supercompress, ComparesWithTheRunningPictureNotTheFrameBefore) {
  Frames frames;
  frames.Add(MakeBitmap(2, 1, {Grey(1), Grey(2)}));
  frames.Add(MakeBitmap(2, 1, {Grey(5), Grey(2)}));
  frames.Add(MakeBitmap(2, 1, {Grey(5), Grey(3)}));
  frames.Add(MakeBitmap(2, 1, {Grey(1), Grey(3)}));
  EXPECT_EQ(RunningPictureAfter(frames, 0), (std::vector<std::int32_t>{Grey(1), Grey(3)}));
  EXPECT_EQ(PixelsOf(frames.At(1).mask), (std::vector<std::int32_t>{0, 1}));
  EXPECT_EQ(PixelsOf(frames.At(2).mask), (std::vector<std::int32_t>{1, 0}));
  EXPECT_EQ(PixelsOf(frames.At(3).mask), (std::vector<std::int32_t>{0, 1}));
}

TEST(Supercompress, ReportsItsStatusAndProgressToTheHost) {
  HostRecord host{};
  host.callback = RecordingHost;
  for (int count : {1, 3}) {
    gCalls.clear();
    Frames frames;
    for (int f = 0; f < count; ++f) frames.Add(MakeBitmap(1, 1, {Grey(f)}));
    DibHandle previous = nullptr;
    ASSERT_EQ(Supercompress(&frames.list, &previous, 0, &host), 1);
    DibOwner owner(previous);
    {
      // A single frame only makes the clone: byte for byte the frame.
      DibLock clone(previous);
      DibLock first(frames.At(0).image);
      ASSERT_EQ(MemSize(previous), MemSize(frames.At(0).image));
      if (count == 1) EXPECT_EQ(std::memcmp(clone.head, first.head, MemSize(previous)), 0);
    }
    ASSERT_EQ(gCalls.size(), static_cast<std::size_t>(count + 2));
    EXPECT_EQ(gCalls[0].code, kHostStatusText);
    EXPECT_EQ(gCalls[0].text, "Supercompressing");
    for (int i = 0; i < count; ++i) {
      EXPECT_EQ(gCalls[i + 1].code, kHostProgress);
      EXPECT_EQ(gCalls[i + 1].argument, i);
      EXPECT_EQ(gCalls[i + 1].total, count);
    }
    EXPECT_EQ(gCalls.back().code, kHostProgress);
    EXPECT_EQ(gCalls.back().argument, 0);
    EXPECT_EQ(gCalls.back().total, 0);
    EXPECT_EQ(frames.At(0).mask, nullptr);
  }
}

TEST(SupercompressApplyMask, IndexMinusOneIsCutToThePixelAndItsEntryLandsInTheHead) {
  // A fixed palette has no delta slot: index -1 becomes 255 at 8 bits and 15
  // at 4, and the colour goes into biClrImportant.
  DibOwner mask(MakeBitmap(2, 1, {1, 0}, 1));
  for (int depth : {8, 4}) {
    DibOwner image(MakeBitmap(2, 1, {3, 3}, depth));
    ASSERT_EQ(SupercompressApplyMask(image.get(), mask.get(), -1, 1), 1);
    EXPECT_EQ(PixelsOf(image.get()), (std::vector<std::int32_t>{(1 << depth) - 1, 3})) << depth;
    DibLock lock(image.get());
    EXPECT_EQ(lock.head->biClrImportant, 0x00010000u) << depth;
  }
  DibOwner image(MakeBitmap(2, 1, {3, 3}, 8));
  SupercompressApplyMask(image.get(), mask.get(), 7, -1);  // no background colour: all bytes 255
  DibLock lock(image.get());
  const std::uint8_t* entry = reinterpret_cast<const std::uint8_t*>(lock.head) + 40 + 7 * 4;
  EXPECT_EQ(entry[0] & entry[1] & entry[2] & entry[3], 255);
}

TEST(StampColourIndex, StampsOnlyTheExactColourAndKeepsDepthAndTable) {
  std::array<std::uint8_t, 768> palette{};
  FixedPaletteBuild(palette.data(), nullptr, 1);
  DibOwner image(MakeBitmap(4, 1, {1, 2, 3, 4}, 4, palette.data()));
  DibOwner source(MakeBitmap(4, 1, {Rgb(10, 20, 30), Rgb(11, 20, 30), Rgb(10, 20, 30), Rgb(10, 20, 31)}));
  DibOwner stamped(StampColourIndex(image.get(), source.get(), Rgb(10, 20, 30) | 0x7F000000, 9));
  ASSERT_NE(stamped, nullptr);
  EXPECT_EQ(PixelsOf(stamped.get()), (std::vector<std::int32_t>{9, 2, 9, 4}));
  EXPECT_EQ(PixelsOf(image.get()), (std::vector<std::int32_t>{1, 2, 3, 4}));
  DibLock a(image.get());
  DibLock b(stamped.get());
  EXPECT_EQ(b.head->biBitCount, 4);
  EXPECT_EQ(std::memcmp(reinterpret_cast<const std::uint8_t*>(a.head) + 40,
                        reinterpret_cast<const std::uint8_t*>(b.head) + 40, 64), 0);
}

TEST(StampColourIndex, ExactlyTwoHundredFiftyFiveColoursLeaveSlot255ForTheBackground) {
  // A masked background reserves one slot: 255 colours stay exact, the
  // palette takes eight bits, and the background is stamped to index 255.
  std::int32_t background = Grey(0);
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 255; ++i) pixels.push_back(Rgb(i, 255 - i, 40));
  pixels[17] = background;
  pixels.push_back(background);
  Frames frames;
  frames.Add(MakeBitmap(16, 16, pixels));
  std::array<std::uint8_t, 768> palette{};
  int colours = 255;
  ASSERT_EQ(OctreeQuantise(&colours, palette.data(), &frames.list), 1);
  ASSERT_EQ(colours, 255);
  PaletteSortByLuminance(palette.data(), colours);
  EXPECT_EQ(PaletteDepthForEntries(colours + 1), 8);
  std::memset(&palette[255 * 3], 0, 3);  // the background colour's slot

  DibOwner remapped(RemapPlain(frames.At(0).image, palette.data(), 8, colours, RemapOptions{}));
  DibOwner stamped(StampColourIndex(remapped.get(), frames.At(0).image, background, 255));
  std::vector<std::int32_t> indexes = PixelsOf(stamped.get());
  EXPECT_EQ(indexes[17], 255);
  EXPECT_EQ(indexes[255], 255);
  EXPECT_EQ(PixelsOf(remapped.get())[17], 0);  // black sorts first
  for (int i = 0; i < 255; ++i) {
    if (i == 17) continue;
    ASSERT_LT(indexes[i], 255) << i;
    const std::uint8_t* entry = &palette[indexes[i] * 3];
    ASSERT_EQ(Rgb(entry[0], entry[1], entry[2]), pixels[i]) << i;
  }
}

}  // namespace
