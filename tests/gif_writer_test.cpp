#include "host/gif_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/gif_test_support.h"

namespace {

std::vector<std::uint8_t> RoundTrip(const std::vector<std::uint8_t>& indices, int codeSize, TestLzwStats* stats) {
  return TestLzwDecode(GifLzwEncode(indices.data(), indices.size(), codeSize), codeSize, stats);
}

GifAnimation SmallAnimation(int depth) {
  GifAnimation animation{};
  animation.width = 4;
  animation.height = 3;
  animation.depth = depth;
  for (int i = 0; i < 768; ++i) animation.palette[i] = static_cast<std::uint8_t>(i * 7);
  return animation;
}

GifFrame Frame(int width, int height, std::vector<std::uint8_t> indices, std::uint32_t delay,
               std::int32_t transparentIndex, GifDisposal disposal) {
  return GifFrame{width, height, std::move(indices), delay, transparentIndex, disposal};
}

std::vector<std::uint8_t> ReadWhole(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

TEST(GifLzw, RoundTripsAtEveryCodeSizeForRunsNoiseAndTinyInputs) {
  for (int codeSize = 2; codeSize <= 8; ++codeSize) {
    int levels = 1 << codeSize;
    std::vector<std::vector<std::uint8_t>> inputs = {{},
                                                     {0},
                                                     {static_cast<std::uint8_t>(levels - 1), 0},
                                                     std::vector<std::uint8_t>(5000, 1),
                                                     TestNoise(3000, levels, codeSize),
                                                     TestNoise(20000, 2, 7 * codeSize)};
    for (const auto& input : inputs) {
      TestLzwStats stats;
      EXPECT_EQ(RoundTrip(input, codeSize, &stats), input) << "code size " << codeSize << ", " << input.size();
      EXPECT_TRUE(stats.ok) << "code size " << codeSize << ", " << input.size();
      EXPECT_GE(stats.clearCodes, 1);  // every stream starts with one
    }
  }
}

TEST(GifLzw, LargeNoisyFrameGrowsToTwelveBitsAndClearsAFullTable) {
  std::vector<std::uint8_t> noisy = TestNoise(400 * 300, 256, 12345);
  TestLzwStats stats;
  EXPECT_EQ(RoundTrip(noisy, 8, &stats), noisy);
  EXPECT_TRUE(stats.ok);
  EXPECT_EQ(stats.widestCode, 12);
  EXPECT_GT(stats.clearCodes, 10);

  // Few colours: long strings, so the table fills through many widths.
  std::vector<std::uint8_t> fourColours = TestNoise(200 * 200, 4, 99);
  TestLzwStats small;
  EXPECT_EQ(RoundTrip(fourColours, 2, &small), fourColours);
  EXPECT_TRUE(small.ok);
  EXPECT_EQ(small.widestCode, 12);
  EXPECT_GT(small.clearCodes, 1);
}

TEST(GifLzw, EndCodeFollowsTheDecodersWidthAtEveryLength) {
  // The last code makes the decoder add an entry that may widen the end
  // code; walking the length across several width steps meets each case.
  std::vector<std::uint8_t> noisy = TestNoise(1200, 4, 5);
  for (std::size_t length = 1; length <= noisy.size(); ++length) {
    std::vector<std::uint8_t> input(noisy.begin(), noisy.begin() + length);
    TestLzwStats stats;
    ASSERT_EQ(RoundTrip(input, 2, &stats), input) << length;
    ASSERT_TRUE(stats.ok) << length;
  }
}

TEST(GifEncode, WritesHeaderLoopCommentAndFramesWithTheirControls) {
  GifAnimation animation = SmallAnimation(4);
  animation.frames.push_back(Frame(4, 3, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15}, 7, -1, kGifDisposalKeep));
  animation.frames.push_back(Frame(3, 2, {1, 1, 1, 2, 2, 2}, 70000, 2, kGifDisposalBackground));
  std::string longComment(700, 'x');
  longComment += "CREATED BY...\r\n";
  animation.comments.push_back(longComment);

  TestGif gif = TestGifParse(GifEncode(animation));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.signature, "GIF89a");
  EXPECT_EQ(gif.width, 4);
  EXPECT_EQ(gif.height, 3);
  EXPECT_EQ(gif.tableEntries, 16);
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(animation.palette, animation.palette + 48));
  EXPECT_EQ(gif.loopCount, 0);  // forever
  ASSERT_EQ(gif.comments.size(), 1u);
  EXPECT_EQ(gif.comments[0], longComment);
  ASSERT_EQ(gif.frames.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const TestGifFrame& frame = gif.frames[i];
    EXPECT_EQ(frame.indices, animation.frames[i].indices);
    EXPECT_TRUE(frame.lzw.ok);
    EXPECT_EQ(frame.codeSize, 4);
    EXPECT_FALSE(frame.localTable);
    EXPECT_EQ(frame.left, 0);
    EXPECT_EQ(frame.top, 0);
    EXPECT_EQ(frame.width, animation.frames[i].width);
  }
  EXPECT_EQ(gif.frames[0].delay, 7);
  EXPECT_EQ(gif.frames[0].transparent, -1);
  EXPECT_EQ(gif.frames[0].disposal, 1);
  EXPECT_EQ(gif.frames[1].delay, 65535);  // the field's limit
  EXPECT_EQ(gif.frames[1].transparent, 2);
  EXPECT_EQ(gif.frames[1].disposal, 2);
}

TEST(GifEncode, TableHasAtLeastTwoEntriesAndCodesAtLeastTwoBits) {
  GifAnimation animation = SmallAnimation(1);
  animation.frames.push_back(Frame(2, 1, {1, 0}, 1, -1, kGifDisposalKeep));
  TestGif gif = TestGifParse(GifEncode(animation));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.tableEntries, 2);
  EXPECT_EQ(gif.frames[0].codeSize, 2);

  animation.depth = 24;  // a true-colour task still has at most 256 entries
  EXPECT_EQ(GifTableBits(animation), 8);
}

TEST(GifEncode, IndicesBeyondTheTaskTableWidenTheTableFromThePalette) {
  GifAnimation animation = SmallAnimation(3);
  animation.frames.push_back(Frame(4, 1, {0, 7, 7, 0}, 5, -1, kGifDisposalKeep));
  animation.frames.push_back(Frame(4, 1, {255, 3, 255, 1}, 5, -1, kGifDisposalKeep));
  TestGif gif = TestGifParse(GifEncode(animation));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.tableEntries, 256);
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(animation.palette, animation.palette + 768));
  EXPECT_EQ(gif.frames[1].indices, animation.frames[1].indices);
  EXPECT_EQ(gif.frames[0].codeSize, 8);

  // A transparent index beyond the table widens it too.
  GifAnimation named = SmallAnimation(1);
  named.frames.push_back(Frame(2, 1, {0, 1}, 5, 5, kGifDisposalKeep));
  EXPECT_EQ(TestGifParse(GifEncode(named)).tableEntries, 8);
}

TEST(GifWriteFile, ReplacesTheTargetAndLeavesNoTemporaryFile) {
  std::filesystem::path path = std::filesystem::temp_directory_path() / "lwmotio3_gif_writer_test.gif";
  std::filesystem::path temporary = path.string() + ".tmp";
  std::filesystem::remove(path);
  { std::ofstream(path) << "old contents"; }
  GifAnimation animation = SmallAnimation(2);
  animation.frames.push_back(Frame(2, 2, {0, 1, 2, 3}, 9, -1, kGifDisposalKeep));
  ASSERT_EQ(GifWriteFile(animation, path.string()), 1);
  EXPECT_EQ(ReadWhole(path), GifEncode(animation));
  EXPECT_FALSE(std::filesystem::exists(temporary));
  std::filesystem::remove(path);

  std::filesystem::path missingFolder = std::filesystem::temp_directory_path() / "lwmotio3_no_such_folder" / "x.gif";
  EXPECT_EQ(GifWriteFile(animation, missingFolder.string()), 0);
  EXPECT_FALSE(std::filesystem::exists(missingFolder));
}
