#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "colour/palette.h"
#include "colour/stamp.h"
#include "colour/supercompress.h"
#include "colour_test_frames.h"

namespace {

using colourtest::BytesOf;
using colourtest::Frames;
using colourtest::Grey;
using colourtest::MakeBitmap;
using colourtest::PixelsOf;
using colourtest::Rgb;
using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<std::int32_t>;

// Each call as "code argument pointer-argument", with the text in place of the pointer for code 10.
std::vector<std::string> gCalls;

std::int64_t RecordingHost(TaskRecord*, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument) {
  std::string call = std::to_string(code) + " " + std::to_string(argument) + " ";
  gCalls.push_back(call + (code == kHostStatusText ? reinterpret_cast<const char*>(pointerArgument)
                                                    : std::to_string(pointerArgument)));
  return 1;
}

// count colour-table entries of a bitmap from index on.
Bytes TableBytes(DibHandle dib, int index, int count) {
  Bytes bytes = BytesOf(dib);
  return {bytes.begin() + kDibHeadSize + index * 4, bytes.begin() + kDibHeadSize + (index + count) * 4};
}

// Runs the stage on the list; the running picture is freed on return.
Pixels RunningPictureAfter(Frames& frames, std::int32_t deltaColour) {
  DibHandle previous = nullptr;
  EXPECT_EQ(Supercompress(&frames.list, &previous, deltaColour, nullptr), 1);
  DibOwner owner(previous);
  return previous == nullptr ? Pixels{} : PixelsOf(previous);
}

TEST(Supercompress, IdenticalFramesGetFullMasksThatMakeOneFlatFieldOfTheDeltaIndex) {
  Pixels pixels = {Rgb(9, 0, 0), Grey(200), Grey(200), Rgb(0, 0, 77), Grey(10), Grey(200)};
  Frames frames;
  for (int f = 0; f < 3; ++f) frames.Add(MakeBitmap(3, 2, pixels));
  EXPECT_EQ(RunningPictureAfter(frames, Grey(200)), pixels);
  EXPECT_EQ(frames.At(0).mask, nullptr);
  EXPECT_EQ(frames.At(0).transparentIndex, -1);
  for (int f = 1; f < 3; ++f) {
    FrameRecord record = frames.At(f);
    EXPECT_EQ(record.transparentIndex, Grey(200));
    // A 1-bit mask of two table entries, black then white, and one padded row each.
    ASSERT_EQ(MemSize(record.mask), 48u + 4u * 2u);
    EXPECT_EQ(DibLock(record.mask).head->biClrUsed, 2u);
    EXPECT_EQ(TableBytes(record.mask, 0, 2), (Bytes{0, 0, 0, 0, 255, 255, 255, 0}));
    EXPECT_EQ(PixelsOf(record.mask), Pixels(6, 1));
  }
  // Once reduced, every pixel of frame 2 is the delta index, whose table
  // entry becomes the background colour.
  DibOwner remapped(MakeBitmap(3, 2, {0, 1, 2, 3, 4, 5}, 8));
  ASSERT_EQ(SupercompressApplyMask(remapped.get(), frames.At(1).mask, 4, Rgb(1, 2, 3)), 1);
  EXPECT_EQ(PixelsOf(remapped.get()), Pixels(6, 4));
  EXPECT_EQ(TableBytes(remapped.get(), 4, 1), (Bytes{3, 2, 1, 0}));
}

TEST(Supercompress, ComparesWithTheRunningPictureNotTheFrameBefore) {
  Frames frames;
  for (Pixels pixels : {Pixels{Grey(1), Grey(2)}, {Grey(5), Grey(2)}, {Grey(5), Grey(3)}, {Grey(1), Grey(3)}}) {
    frames.Add(MakeBitmap(2, 1, pixels));
  }
  EXPECT_EQ(RunningPictureAfter(frames, 0), (Pixels{Grey(1), Grey(3)}));
  EXPECT_EQ(PixelsOf(frames.At(1).mask), (Pixels{0, 1}));
  EXPECT_EQ(PixelsOf(frames.At(2).mask), (Pixels{1, 0}));
  EXPECT_EQ(PixelsOf(frames.At(3).mask), (Pixels{0, 1}));
}

TEST(Supercompress, ReportsItsStatusAndProgressToTheHostAndClonesASingleFrame) {
  HostRecord host{};
  host.callback = RecordingHost;
  for (int count : {1, 3}) {
    gCalls.clear();
    Frames frames;
    for (int f = 0; f < count; ++f) frames.Add(MakeBitmap(1, 1, {Grey(f)}));
    DibHandle previous = nullptr;
    ASSERT_EQ(Supercompress(&frames.list, &previous, 0, &host), 1);
    DibOwner owner(previous);
    if (count == 1) {
      EXPECT_EQ(BytesOf(previous), BytesOf(frames.At(0).image));
    }
    std::vector<std::string> expected = {"10 0 Supercompressing"};
    for (int i = 0; i < count; ++i) expected.push_back("13 " + std::to_string(i) + " " + std::to_string(count));
    expected.push_back("13 0 0");
    EXPECT_EQ(gCalls, expected) << count;
  }
}

TEST(SupercompressApplyMask, IndexMinusOneIsCutToThePixelAndItsEntryLandsInTheHead) {
  // A fixed palette has no delta slot: index -1 becomes 255 at 8 bits and 15
  // at 4, and the colour goes into biClrImportant.
  DibOwner mask(MakeBitmap(2, 1, {1, 0}, 1));
  for (int depth : {8, 4}) {
    DibOwner image(MakeBitmap(2, 1, {3, 3}, depth));
    ASSERT_EQ(SupercompressApplyMask(image.get(), mask.get(), -1, 1), 1);
    EXPECT_EQ(PixelsOf(image.get()), (Pixels{(1 << depth) - 1, 3})) << depth;
    EXPECT_EQ(DibLock(image.get()).head->biClrImportant, 0x00010000u) << depth;
    SupercompressApplyMask(image.get(), mask.get(), 7, -1);  // no background colour: all bytes 255
    EXPECT_EQ(TableBytes(image.get(), 7, 1), (Bytes{255, 255, 255, 255})) << depth;
  }
}

TEST(StampColourIndex, StampsOnlyTheExactColourAndKeepsDepthAndTable) {
  std::array<std::uint8_t, 768> palette{};
  FixedPaletteBuild(palette.data(), nullptr, 1);
  // Nine pixels: a whole group of four that matches, one with a miss in it
  // (a near colour in each component), and one left over that matches.
  const std::int32_t c = Rgb(10, 20, 30);
  DibOwner source(MakeBitmap(9, 1, {c, c, c, c, Rgb(11, 20, 30), c, Rgb(10, 21, 30), Rgb(10, 20, 31), c}));
  for (int depth : {4, 8}) {
    DibOwner image(MakeBitmap(9, 1, {1, 2, 3, 4, 5, 6, 7, 8, 1}, depth, palette.data()));
    DibOwner stamped(StampColourIndex(image.get(), source.get(), c | 0x7F000000, 9));
    ASSERT_NE(stamped, nullptr);
    EXPECT_EQ(PixelsOf(stamped.get()), (Pixels{9, 9, 9, 9, 5, 9, 7, 8, 9})) << depth;
    EXPECT_EQ(PixelsOf(image.get()), (Pixels{1, 2, 3, 4, 5, 6, 7, 8, 1})) << depth;
    EXPECT_EQ(DibLock(stamped.get()).head->biBitCount, depth);
    EXPECT_EQ(TableBytes(stamped.get(), 0, 16), TableBytes(image.get(), 0, 16)) << depth;
  }
}

}  // namespace
