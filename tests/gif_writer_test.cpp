#include "host/gif_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gif_test_support.h"

namespace {

// Encodes and decodes back; a failed round trip or a stream that does not end
// cleanly on the end code fails the test.
TestLzwStats ExpectRoundTrip(const std::vector<std::uint8_t>& indices, int codeSize) {
  TestLzwStats stats;
  std::vector<std::uint8_t> decoded =
      TestLzwDecode(GifLzwEncode(indices.data(), indices.size(), codeSize), codeSize, &stats);
  EXPECT_TRUE(decoded == indices && stats.ok) << "code size " << codeSize << ", length " << indices.size();
  return stats;
}

GifAnimation SmallAnimation(int depth, std::vector<GifFrame> frames) {
  GifAnimation animation{};
  animation.width = 4;
  animation.height = 3;
  animation.depth = depth;
  animation.frames = std::move(frames);
  for (int i = 0; i < 768; ++i) animation.palette[i] = static_cast<std::uint8_t>(i * 7);
  return animation;
}

}  // namespace

TEST(GifLzw, RoundTripsAtEveryCodeSizeForRunsNoiseAndTinyInputs) {
  for (int codeSize = 2; codeSize <= 8; ++codeSize) {
    int levels = 1 << codeSize;
    for (const auto& input : {std::vector<std::uint8_t>{},
                              {0},
                              {static_cast<std::uint8_t>(levels - 1), 0},
                              std::vector<std::uint8_t>(5000, 1),
                              TestNoise(3000, levels, codeSize),
                              TestNoise(20000, 2, 7 * codeSize)}) {
      EXPECT_GE(ExpectRoundTrip(input, codeSize).clearCodes, 1);  // every stream starts with one
    }
  }
}

TEST(GifLzw, LargeFramesGrowToTwelveBitsAndClearAFullTable) {
  // Many colours fill the table fast; few colours make long strings, so it
  // fills through every width from 3 bits.
  struct Case {
    std::vector<std::uint8_t> indices;
    int codeSize, minimumClears;
  };
  for (const Case& test : {Case{TestNoise(400 * 300, 256, 12345), 8, 11}, Case{TestNoise(200 * 200, 4, 99), 2, 2}}) {
    TestLzwStats stats = ExpectRoundTrip(test.indices, test.codeSize);
    EXPECT_EQ(stats.widestCode, 12);
    EXPECT_GE(stats.clearCodes, test.minimumClears);
  }
}

TEST(GifLzw, EndCodeFollowsTheDecodersWidthAtEveryLength) {
  // The last code makes the decoder add an entry that may widen the end
  // code; walking the length across several width steps meets each case.
  std::vector<std::uint8_t> noisy = TestNoise(1200, 4, 5);
  for (std::size_t length = 1; length <= noisy.size(); ++length) {
    ExpectRoundTrip({noisy.begin(), noisy.begin() + length}, 2);
  }
}

TEST(GifLzw, StopsOncePastItsLimitAndCodesInFullWithinIt) {
  std::vector<std::uint8_t> noise = TestNoise(30000, 64, 3);
  std::vector<std::uint8_t> full = GifLzwEncode(noise.data(), noise.size(), 6);
  std::vector<std::uint8_t> cut = GifLzwEncode(noise.data(), noise.size(), 6, full.size() / 2);
  EXPECT_GT(cut.size(), full.size() / 2);
  EXPECT_LT(cut.size(), full.size());
  EXPECT_EQ(GifLzwEncode(noise.data(), noise.size(), 6, full.size()), full);

  // The whole file likewise; a table left by a wider image does not leak
  // into the next one.
  GifAnimation animation = SmallAnimation(8, {{200, 150, TestNoise(30000, 256, 4), 5, -1, kGifDisposalKeep},
                                              {200, 150, noise, 5, -1, kGifDisposalKeep}});
  std::vector<std::uint8_t> file = GifEncode(animation);
  EXPECT_GT(GifEncode(animation, file.size() / 2).size(), file.size() / 2);
  EXPECT_EQ(GifEncode(animation, file.size()), file);
  EXPECT_EQ(TestGifParse(file).frames.at(1).indices, noise);
}

TEST(GifLzw, AKeptFullTableCodesOnWithoutClearingAndWinsWhereTheImageRepeats) {
  // A block of noise that fills the table, then the same block again.
  std::vector<std::uint8_t> block = TestNoise(6000, 256, 21);
  std::vector<std::uint8_t> twice = block;
  twice.insert(twice.end(), block.begin(), block.end());
  std::vector<std::uint8_t> codes[2];
  for (GifFullTable full : {GifFullTable::kClear, GifFullTable::kKeep}) {
    bool filled = false;
    codes[static_cast<int>(full)] = GifLzwEncode(twice.data(), twice.size(), 8, SIZE_MAX, full, &filled);
    EXPECT_TRUE(filled);
    TestLzwStats stats;
    EXPECT_EQ(TestLzwDecode(codes[static_cast<int>(full)], 8, &stats), twice);
    EXPECT_TRUE(stats.ok);
    EXPECT_EQ(stats.clearCodes == 1, full == GifFullTable::kKeep);
  }
  EXPECT_LT(codes[1].size(), codes[0].size());
  bool filled = true;
  GifLzwEncode(block.data(), 1000, 8, SIZE_MAX, GifFullTable::kKeep, &filled);
  EXPECT_FALSE(filled);
}

TEST(GifLzw, ChoosingTakesOneOfEachPixelsValuesAndDecodesToWhatItTook) {
  // Pixels that may take a second value, singly and in runs, beside pixels
  // that may not; long enough inputs fill the table, kept or cleared.
  for (int codeSize : {2, 5, 8}) {
    const int levels = 1 << codeSize;
    for (std::size_t count : {std::size_t{1}, std::size_t{2}, std::size_t{700}, std::size_t{30000}}) {
      std::vector<std::uint8_t> indices = TestNoise(count, levels, static_cast<std::uint32_t>(count) + codeSize);
      std::vector<std::uint8_t> others = indices;
      std::vector<std::uint8_t> mode = TestNoise(count, 4, 77);
      for (std::size_t i = 0; i < count; ++i) {
        if (mode[i] == 0) others[i] = static_cast<std::uint8_t>(levels - 1 - indices[i]);
        if (mode[i] == 1 && i >= 50) indices[i] = indices[i - 50], others[i] = 0;  // runs, rows alike
      }
      for (int way = 0; way < 4; ++way) {
        GifChoosing how = way % 2 == 0 ? GifChoosing::kGrowing : GifChoosing::kLongest;
        GifFullTable full = way < 2 ? GifFullTable::kClear : GifFullTable::kKeep;
        std::vector<std::uint8_t> chosen = indices;
        std::vector<std::uint8_t> codes =
            GifLzwEncodeChoosing(chosen.data(), others.data(), count, codeSize, SIZE_MAX, how, full);
        for (std::size_t i = 0; i < count; ++i)
          ASSERT_TRUE(chosen[i] == indices[i] || chosen[i] == others[i]) << i;
        TestLzwStats stats;
        EXPECT_EQ(TestLzwDecode(codes, codeSize, &stats), chosen) << codeSize << " " << count << " " << way;
        EXPECT_TRUE(stats.ok);
        EXPECT_EQ(GifLzwEncode(chosen.data(), count, codeSize, SIZE_MAX, full), codes);
      }
    }
  }
}

TEST(GifEncode, WritesHeaderLoopCommentAndFramesWithTheirControls) {
  GifAnimation animation = SmallAnimation(4, {{4, 3, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15}, 7, -1, kGifDisposalKeep},
                                              {3, 2, {1, 1, 1, 2, 2, 2}, 70000, 2, kGifDisposalBackground}});
  std::string longComment = std::string(700, 'x') + "CREATED BY...\r\n";
  animation.comments.push_back(longComment);

  TestGif gif = TestGifParse(GifEncode(animation));
  ASSERT_TRUE(gif.ok);  // a GIF89a ending on its trailer
  EXPECT_EQ(std::pair(gif.width, gif.height), std::pair(4, 3));
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(animation.palette, animation.palette + 48));
  EXPECT_EQ(gif.loopCount, 0);  // forever
  EXPECT_EQ(gif.comments, std::vector<std::string>{longComment});
  ASSERT_EQ(gif.frames.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const TestGifFrame& frame = gif.frames[i];
    EXPECT_EQ(frame.indices, animation.frames[i].indices);
    EXPECT_TRUE(frame.lzw.ok);
    EXPECT_EQ(frame.codeSize, 4);
    EXPECT_FALSE(frame.localTable);
    EXPECT_EQ(std::vector<int>({frame.left, frame.top, frame.width}),
              std::vector<int>({0, 0, animation.frames[i].width}));
  }
  // delay, transparent index, disposal; the delay is cut to the field's limit
  auto controls = [](const TestGifFrame& frame) {
    return std::vector<int>{frame.delay, frame.transparent, frame.disposal};
  };
  EXPECT_EQ(controls(gif.frames[0]), std::vector<int>({7, -1, 1}));
  EXPECT_EQ(controls(gif.frames[1]), std::vector<int>({65535, 2, 2}));
}

TEST(GifEncode, TableBitsCoverTheDepthAtLeastTwoEntriesAndEveryIndexUsed) {
  GifAnimation mono = SmallAnimation(1, {{2, 1, {1, 0}, 1, -1, kGifDisposalKeep}});
  TestGif gif = TestGifParse(GifEncode(mono));
  EXPECT_EQ(gif.tableEntries, 2);
  EXPECT_EQ(gif.frames.at(0).codeSize, 2);  // codes of at least two bits
  mono.depth = 24;                          // a true-colour task still has at most 256 entries
  EXPECT_EQ(GifTableBits(mono), 8);

  // An index beyond the task's table widens it from the palette.
  GifAnimation beyond = SmallAnimation(
      3, {{4, 1, {0, 7, 7, 0}, 5, -1, kGifDisposalKeep}, {4, 1, {255, 3, 255, 1}, 5, -1, kGifDisposalKeep}});
  gif = TestGifParse(GifEncode(beyond));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(beyond.palette, beyond.palette + 768));
  EXPECT_EQ(gif.frames.at(1).indices, beyond.frames[1].indices);
  EXPECT_EQ(gif.frames[0].codeSize, 8);

  // So does a transparent index beyond it.
  GifAnimation named = SmallAnimation(1, {{2, 1, {0, 1}, 5, 5, kGifDisposalKeep}});
  EXPECT_EQ(TestGifParse(GifEncode(named)).tableEntries, 8);
}

TEST(GifWriteFile, ReplacesTheTargetAndLeavesNoTemporaryFile) {
  TestFolder folder("lwmotio3_gif_writer");
  std::filesystem::path path = folder.File("out.gif");
  std::ofstream(path) << "old contents";
  GifAnimation animation = SmallAnimation(2, {{2, 2, {0, 1, 2, 3}, 9, -1, kGifDisposalKeep}});
  ASSERT_EQ(GifWriteFile(animation, path.string()), 1);
  EXPECT_EQ(TestReadFile(path.string()), GifEncode(animation));
  EXPECT_FALSE(std::filesystem::exists(path.string() + ".tmp"));

  std::filesystem::path missingFolder = folder.path / "no_such_folder" / "x.gif";
  EXPECT_EQ(GifWriteFile(animation, missingFolder.string()), 0);
  EXPECT_FALSE(std::filesystem::exists(missingFolder));
}
