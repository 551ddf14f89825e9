// Files written through the reference host must read the same in three
// independent decoders: giflib (raw frames), ImageMagick (coalesced
// frames) and Pillow (coalesced frames). Pixels, delays, disposal,
// transparency, the comment and the endless loop are all compared with what
// the frames handed to the host say.
#include <gif_lib.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/gif_decoders_posix.h"
#include "tests/gif_test_support.h"
#include "tests/test_folder.h"

namespace {

struct Scenario {
  std::string name;
  TaskRecord task;
  int dibDepth;                       // 1, 4, 8, or 24 for a true-colour frame
  std::vector<TestHostFrame> frames;  // pixels: the indices the file must hold
  std::string comment = "";           // empty for none
  std::string path = "";              // the plain file
  std::string optimisedPath = "";     // the same frames, optimised
};

TestHostFrame Noise(int width, int height, int levels, std::uint32_t seed, std::uint32_t delay,
                    std::int32_t transparentIndex = -1, std::uint32_t transparentFlag = 0) {
  std::vector<std::uint8_t> noise = TestNoise(std::size_t(width) * height, levels, seed);
  return {width, height, {noise.begin(), noise.end()}, delay, transparentIndex, transparentFlag};
}

// Noise whose second half repeats its first: the coder's table fills in the
// first half, and the optimised file keeps it for the second.
TestHostFrame NoiseTwice(int width, int height, std::uint32_t seed, std::uint32_t delay) {
  TestHostFrame frame = Noise(width, height, 256, seed, delay);
  std::size_t half = frame.pixels.size() / 2;
  std::copy_n(frame.pixels.begin(), half, frame.pixels.begin() + static_cast<std::ptrdiff_t>(half));
  return frame;
}

TestHostFrame Mark(TestHostFrame frame, std::uint32_t mark, bool (*marked)(std::size_t)) {
  for (std::size_t i = 0; i < frame.pixels.size(); ++i) frame.pixels[i] = marked(i) ? mark : frame.pixels[i];
  return frame;
}

std::vector<Scenario> MakeScenarios(const std::filesystem::path& folder) {
  auto unchanged = [](std::size_t i) { return i % 5 != 0; };
  auto everyThird = [](std::size_t i) { return i % 3 == 0; };
  std::vector<Scenario> scenarios = {
      // A plain indexed animation; the last frame is smaller than the screen.
      {"indexed", TestTask(4, 23, 17, 1), 4,
       {Noise(23, 17, 16, 1, 5), Noise(23, 17, 16, 2, 10), Noise(20, 10, 16, 3, 250)},
       "CREATED BY...\r\n\r\nfor more information."},
      // Supercompression: index 199 marks pixels that did not change, so the
      // frame before must show through.
      {"supercompressed", TestTask(8, 31, 9, 2), 8,
       {Noise(31, 9, 199, 4, 7), Mark(Noise(31, 9, 199, 5, 7, 199), 199, unchanged),
        Mark(Noise(31, 9, 199, 6, 7, 199), 199, unchanged)}},
      // The Transparent option: the reserved index 3 on every frame, so each
      // frame shows alone over what lies behind.
      {"transparent", TestTask(2, 12, 6, 3), 4,
       {Noise(12, 6, 4, 7, 20, 3, 1), Noise(12, 6, 4, 8, 20, 3, 1), Noise(12, 6, 4, 9, 20, 3, 1)}},
      // Supercompression over a fixed palette: the unchanged pixels carry 255,
      // far beyond an 8-entry table, and no transparency is announced.
      {"beyond_table", TestTask(3, 9, 4, 4), 8, {Noise(9, 4, 8, 10, 10), Mark(Noise(9, 4, 8, 11, 10), 255, everyThird)}},
      {"true_colour", TestTask(8, 10, 5, 7), 24, {Noise(10, 5, 256, 16, 6)}},
      // Large frames: a full coder table kept, and unchanged pixels among
      // changed ones.
      {"repeating", TestTask(8, 128, 96, 8), 8,
       {NoiseTwice(128, 96, 17, 4), Mark(NoiseTwice(128, 96, 17, 4), 9, everyThird)}},
  };
  for (Scenario& scenario : scenarios) {
    scenario.path = (folder / (scenario.name + ".gif")).string();
    scenario.optimisedPath = (folder / (scenario.name + "-optimised.gif")).string();
    std::vector<TestHostFrame> handed = scenario.frames;
    for (TestHostFrame& frame : handed)
      for (std::uint32_t& value : frame.pixels) {
        const std::uint8_t* colour = scenario.task.palette + 3 * value;
        if (scenario.dibDepth > 8) value = colour[0] | colour[1] << 8 | colour[2] << 16;  // a COLORREF
      }
    TestHostWrite(scenario.path, scenario.task, scenario.dibDepth, handed, scenario.comment);
    TestHostWrite(scenario.optimisedPath, scenario.task, scenario.dibDepth, handed, scenario.comment, true);
  }
  return scenarios;
}

// Written once for all three decoders into a folder of this run's own (each
// test runs as a process of its own), removed when the test ends.
struct ScenarioFiles {
  TestFolder folder{"lwmotio3_gif_decoders"};
  std::vector<Scenario> scenarios = MakeScenarios(folder.path);
};

const std::vector<Scenario>& Scenarios() {
  static const ScenarioFiles files;
  return files.scenarios;
}

int ExpectedDisposal(const TestHostFrame& frame) {
  return frame.transparentFlag != 0 && frame.transparentIndex >= 0 ? 2 : 1;
}

// Each frame drawn over the screen as the frames before left it; transparent
// pixels let the screen show through.
std::vector<Rgba> CoalescedColours(const Scenario& scenario) {
  int width = static_cast<int>(scenario.task.width);
  Rgba screen(std::size_t(width) * scenario.task.height * 4, 0);
  std::vector<Rgba> frames;
  for (const TestHostFrame& frame : scenario.frames) {
    for (int at = 0; at < frame.width * frame.height; ++at) {
      const std::uint8_t* colour = scenario.task.palette + 3 * frame.pixels[at];
      std::uint8_t* pixel = &screen[(at / frame.width * width + at % frame.width) * 4];
      if (std::int32_t(frame.pixels[at]) == frame.transparentIndex) continue;
      std::copy(colour, colour + 3, pixel);
      pixel[3] = 255;
    }
    frames.push_back(screen);
    for (int at = 0; ExpectedDisposal(frame) == 2 && at < frame.width * frame.height; ++at) {
      screen[(at / frame.width * width + at % frame.width) * 4 + 3] = 0;
    }
  }
  return frames;
}

Rgba FromHex(const std::string& hex) {
  Rgba bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2)
    bytes.push_back(std::uint8_t(std::stoi(hex.substr(at, 2), nullptr, 16)));
  return bytes;
}

}  // namespace

TEST(GifDecoders, GiflibFramesOfTheOptimisedFileComposeAsThePlainOnes) {
  for (const Scenario& scenario : Scenarios()) {
    SCOPED_TRACE(scenario.name);
    std::vector<Rgba> expected = CoalescedColours(scenario);
    std::vector<Rgba> optimised = GiflibComposited(scenario.optimisedPath);
    ASSERT_EQ(optimised.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) ExpectSameVisiblePixels(expected[i], optimised[i], "frame");
    EXPECT_LE(std::filesystem::file_size(scenario.optimisedPath), std::filesystem::file_size(scenario.path));
  }
}

TEST(GifDecoders, GiflibReadsEveryFrameAsHandedOver) {
  for (const Scenario& scenario : Scenarios()) {
    SCOPED_TRACE(scenario.name);
    int error = 0;
    GifFileType* gif = DGifOpenFileName(scenario.path.c_str(), &error);
    ASSERT_NE(gif, nullptr) << GifErrorString(error);
    ASSERT_EQ(DGifSlurp(gif), GIF_OK) << GifErrorString(gif->Error);
    EXPECT_EQ(std::pair(gif->SWidth, gif->SHeight), std::pair(int(scenario.task.width), int(scenario.task.height)));
    ASSERT_EQ(gif->ImageCount, static_cast<int>(scenario.frames.size()));
    ASSERT_NE(gif->SColorMap, nullptr);
    // The table is the task's palette, as far as it reaches.
    EXPECT_EQ(std::memcmp(gif->SColorMap->Colors, scenario.task.palette, 3 * gif->SColorMap->ColorCount), 0);

    std::string comment;
    int loopCount = -1;
    bool inComment = false;
    const SavedImage& first = gif->SavedImages[0];
    for (int b = 0; b < first.ExtensionBlockCount; ++b) {
      const ExtensionBlock& block = first.ExtensionBlocks[b];
      inComment = block.Function == COMMENT_EXT_FUNC_CODE || (inComment && block.Function == CONTINUE_EXT_FUNC_CODE);
      if (inComment) comment.append(reinterpret_cast<const char*>(block.Bytes), block.ByteCount);
      if (block.Function == APPLICATION_EXT_FUNC_CODE && block.ByteCount == 11 &&
          std::memcmp(block.Bytes, "NETSCAPE2.0", 11) == 0 && b + 1 < first.ExtensionBlockCount) {
        const ExtensionBlock& data = first.ExtensionBlocks[b + 1];
        if (data.ByteCount == 3 && data.Bytes[0] == 1) loopCount = data.Bytes[1] | data.Bytes[2] << 8;
      }
    }
    EXPECT_EQ(loopCount, 0);
    EXPECT_EQ(comment, scenario.comment);

    for (int i = 0; i < gif->ImageCount; ++i) {
      SCOPED_TRACE(i);
      const TestHostFrame& frame = scenario.frames[i];
      const GifImageDesc& desc = gif->SavedImages[i].ImageDesc;
      ASSERT_EQ(std::vector<int>({desc.Left, desc.Top, desc.Width, desc.Height}),
                std::vector<int>({0, 0, frame.width, frame.height}));
      EXPECT_EQ(desc.ColorMap, nullptr);
      const GifByteType* raster = gif->SavedImages[i].RasterBits;
      EXPECT_EQ(std::vector<std::uint32_t>(raster, raster + frame.width * frame.height), frame.pixels);
      GraphicsControlBlock control;
      ASSERT_EQ(DGifSavedExtensionToGCB(gif, i, &control), GIF_OK);
      EXPECT_EQ(std::vector<int>({control.DelayTime, control.DisposalMode, control.TransparentColor}),
                std::vector<int>({int(frame.delay), ExpectedDisposal(frame), frame.transparentIndex}));
    }
    DGifCloseFile(gif, &error);
  }
}

TEST(GifDecoders, ImageMagickReadsCoalescedFramesDelaysAndComment) {
  for (const Scenario& scenario : Scenarios()) {
    SCOPED_TRACE(scenario.name);
    std::string file = "'" + scenario.path + "'";
    std::ostringstream expectedControls;
    for (const TestHostFrame& frame : scenario.frames)
      expectedControls << frame.delay << (ExpectedDisposal(frame) == 2 ? " Background " : " None ") << frame.width
                       << ' ' << frame.height << '\n';
    EXPECT_EQ(RunCommand("/usr/bin/identify -format '%T %D %w %h\\n' " + file + " 2>&1"), expectedControls.str());
    EXPECT_EQ(RunCommand("/usr/bin/identify -format '%c' " + file + "'[0]' 2>&1"), scenario.comment);
    std::string verbose = RunCommand("/usr/bin/identify -verbose " + file + "'[0]' 2>&1");
    EXPECT_NE(verbose.find("Iterations: 0\n"), std::string::npos);
    Rgba expected;  // the frames one after another, as convert writes them out
    for (const Rgba& frame : CoalescedColours(scenario)) expected.insert(expected.end(), frame.begin(), frame.end());
    for (const std::string& path : {scenario.path, scenario.optimisedPath}) {
      std::string coalesced = RunCommand("/usr/bin/convert '" + path + "' -coalesce rgba:- 2>&1");
      ExpectSameVisiblePixels(expected, Rgba(coalesced.begin(), coalesced.end()), path);
    }
  }
}

TEST(GifDecoders, PillowReadsCoalescedFramesDelaysAndComment) {
  const std::vector<Scenario>& scenarios = Scenarios();
  // The python3 first on the search path may lack Pillow; the system's has it.
  std::filesystem::path script = std::filesystem::path(scenarios[0].path).parent_path() / "read.py";
  std::ofstream(script)
      << "import sys\n"
         "from PIL import Image, GifImagePlugin\n"
         "GifImagePlugin.LOADING_STRATEGY = GifImagePlugin.LoadingStrategy.RGB_ALWAYS\n"
         "im = Image.open(sys.argv[1])\n"
         "print(im.info.get('loop'), 'c' + im.info.get('comment', b'').hex(), im.n_frames)\n"
         "for i in range(im.n_frames):\n"
         "    im.seek(i)\n"
         "    print(im.info.get('duration'), im.disposal_method, im.convert('RGBA').tobytes().hex())\n";
  for (const Scenario& scenario : scenarios) {
    SCOPED_TRACE(scenario.name);
    std::istringstream optimised(
        RunCommand("/usr/bin/python3 '" + script.string() + "' '" + scenario.optimisedPath + "' 2>&1"));
    std::vector<Rgba> expectedFrames = CoalescedColours(scenario);
    std::string word;
    optimised >> word >> word >> word;  // loop, comment and count as below
    for (std::size_t i = 0; i < expectedFrames.size() && optimised >> word >> word >> word; ++i)
      ExpectSameVisiblePixels(expectedFrames[i], FromHex(word), "optimised frame " + std::to_string(i));

    std::istringstream lines(RunCommand("/usr/bin/python3 '" + script.string() + "' '" + scenario.path + "' 2>&1"));
    std::string loop, commentHex;
    std::size_t frameCount = 0;
    lines >> loop >> commentHex >> frameCount;
    EXPECT_EQ(loop, "0");
    Rgba comment = FromHex(commentHex.empty() ? "" : commentHex.substr(1));  // behind the "c"
    EXPECT_EQ(std::string(comment.begin(), comment.end()), scenario.comment);
    ASSERT_EQ(frameCount, scenario.frames.size());
    for (std::size_t i = 0; i < frameCount; ++i) {
      SCOPED_TRACE(i);
      std::uint32_t duration = 0;
      int disposal = -1;
      std::string pixelsHex;
      lines >> duration >> disposal >> pixelsHex;
      EXPECT_EQ(duration, scenario.frames[i].delay * 10);  // milliseconds
      EXPECT_EQ(disposal, ExpectedDisposal(scenario.frames[i]));
      ExpectSameVisiblePixels(expectedFrames[i], FromHex(pixelsHex), "coalesced frame");
    }
  }
}
