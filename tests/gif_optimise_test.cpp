#include "host/gif_optimise.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/gif_test_support.h"

namespace {

using Colour = std::array<int, 3>;  // -1s where nothing is shown

// The pictures a file shows, image after image, composed here from the
// file's own bytes: opaque pixels replace what is there, and a background
// disposal clears the image's place.
std::vector<std::vector<Colour>> Pictures(const std::vector<std::uint8_t>& file) {
  TestGif gif = TestGifParse(file);
  EXPECT_TRUE(gif.ok);
  std::vector<Colour> screen(static_cast<std::size_t>(gif.width) * gif.height, Colour{-1, -1, -1});
  std::vector<std::vector<Colour>> pictures;
  for (const TestGifFrame& frame : gif.frames) {
    for (int y = 0; y < frame.height; ++y)
      for (int x = 0; x < frame.width; ++x) {
        int index = frame.indices.at(static_cast<std::size_t>(y) * frame.width + x);
        if (index == frame.transparent) continue;
        const std::uint8_t* entry = &gif.table.at(3 * static_cast<std::size_t>(index));
        screen[static_cast<std::size_t>(frame.top + y) * gif.width + frame.left + x] = {entry[0], entry[1], entry[2]};
      }
    pictures.push_back(screen);
    for (int y = 0; frame.disposal == kGifDisposalBackground && y < frame.height; ++y)
      for (int x = 0; x < frame.width; ++x)
        screen[static_cast<std::size_t>(frame.top + y) * gif.width + frame.left + x] = {-1, -1, -1};
  }
  return pictures;
}

// An animation without frames, its table of distinct colours.
GifAnimation Empty(int width, int height) {
  GifAnimation animation{};
  animation.width = width;
  animation.height = height;
  animation.depth = 8;
  TaskRecord task = TestTask(8, width, height, 1);
  std::memcpy(animation.palette, task.palette, sizeof animation.palette);
  return animation;
}

// The optimised file, which must show the plain one's pictures.
std::vector<std::uint8_t> OptimisedFile(const GifAnimation& plain) {
  GifAnimation optimised;
  EXPECT_EQ(GifOptimise(plain, &optimised), 1);
  std::vector<std::uint8_t> file = GifEncode(optimised);
  EXPECT_EQ(Pictures(file), Pictures(GifEncode(plain)));
  return file;
}

GifFrame Full(int width, int height, std::uint8_t fill) {
  return {width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height, fill), 8, -1,
          kGifDisposalKeep};
}

}  // namespace

TEST(GifOptimise, ImagesAtTheStartOfAnAnimationTakeFewBitsWhenTheyNeedFewColours) {
  // A spot grows in two colours over a background, then a wide band of a
  // hundred colours ends the animation. Numbered by first change, the
  // spot's colours take the lowest numbers and its images small codes.
  constexpr int kWidth = 160, kHeight = 40;
  GifAnimation plain = Empty(kWidth, kHeight);
  GifFrame picture = Full(kWidth, kHeight, 250);
  plain.frames.push_back(picture);
  for (int step = 1; step <= 6; ++step) {
    for (int y = 0; y < step; ++y)
      for (int x = 0; x < 2 * step; ++x) picture.indices[static_cast<std::size_t>(y + 10) * kWidth + x + 10] = 200 + (x + y) % 2;
    plain.frames.push_back(picture);
  }
  std::vector<std::uint8_t> band = TestNoise(kWidth * 20, 100, 7);
  std::copy(band.begin(), band.end(), picture.indices.begin() + 20 * kWidth);
  plain.frames.push_back(picture);

  std::vector<std::uint8_t> file = OptimisedFile(plain);
  TestGif gif = TestGifParse(file);
  ASSERT_EQ(gif.frames.size(), plain.frames.size());
  for (std::size_t i = 1; i + 1 < gif.frames.size(); ++i) EXPECT_LE(gif.frames[i].codeSize, 2) << "image " << i;
  EXPECT_LE(file.size(), GifEncode(plain).size());
}

TEST(GifOptimise, AnImageWhoseRestRepeatsKeepsItsFullTable) {
  // A picture of one block of noise drawn twice, that fills the coder's
  // table in the first: coded on with the table kept, the second comes cheap.
  constexpr int kWidth = 128, kHeight = 96;
  GifAnimation plain = Empty(kWidth, kHeight);
  std::vector<std::uint8_t> block = TestNoise(kWidth * kHeight / 2, 256, 5);
  GifFrame picture = Full(kWidth, kHeight, 0);
  std::copy(block.begin(), block.end(), picture.indices.begin());
  std::copy(block.begin(), block.end(), picture.indices.begin() + static_cast<std::ptrdiff_t>(block.size()));
  plain.frames.push_back(picture);

  std::vector<std::uint8_t> file = OptimisedFile(plain);
  TestGif gif = TestGifParse(file);
  ASSERT_EQ(gif.frames.size(), 1u);
  EXPECT_EQ(gif.frames[0].lzw.clearCodes, 1);
  EXPECT_EQ(gif.frames[0].lzw.widestCode, 12);
  EXPECT_LT(file.size(), GifEncode(plain).size());
}

TEST(GifOptimise, UnchangedNoiseBetweenTwoChangesIsLeftTransparent) {
  // Two spots change at opposite ends of a picture of noise in three
  // colours; the box around them holds the noise between, which drawn again
  // would cost most, and the codes are no narrower for leaving it out.
  constexpr int kWidth = 120, kHeight = 30;
  GifAnimation plain = Empty(kWidth, kHeight);
  GifFrame picture = Full(kWidth, kHeight, 0);
  picture.indices = TestNoise(picture.indices.size(), 3, 9);
  plain.frames.push_back(picture);
  for (int y = 5; y < 25; ++y)
    for (int x : {2, 3, 116, 117}) picture.indices[static_cast<std::size_t>(y) * kWidth + x] = 1;
  plain.frames.push_back(picture);

  std::vector<std::uint8_t> file = OptimisedFile(plain);
  TestGif gif = TestGifParse(file);
  ASSERT_EQ(gif.frames.size(), 2u);
  EXPECT_GE(gif.frames[1].transparent, 0);
  EXPECT_LT(file.size(), GifEncode(plain).size() * 6 / 10);
}
