// Files written through the reference host must read the same in three
// independent decoders: giflib (raw frames), ImageMagick (raw and coalesced
// frames) and Pillow (coalesced frames). Pixels, delays, disposal,
// transparency, the comment and the endless loop are all compared with what
// the frames handed to the host say.
#include <gif_lib.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/reference_host.h"
#include "tests/gif_test_support.h"

namespace {

struct ScenarioFrame {
  int width;
  int height;
  int dibDepth;                       // 1, 4, 8, or 24 for a true-colour frame
  std::vector<std::uint8_t> indices;  // what the file must hold, rows from the top
  std::uint32_t delay;
  std::int32_t transparentIndex;
  std::uint32_t transparentFlag;
};

struct Scenario {
  std::string name;
  TaskRecord task;
  std::vector<ScenarioFrame> frames;
  std::string comment;  // empty for none
  std::filesystem::path path;
};

using Rgba = std::vector<std::uint8_t>;  // 4 bytes a pixel

std::vector<std::uint32_t> DibValues(const Scenario& scenario, const ScenarioFrame& frame) {
  std::vector<std::uint32_t> values;
  for (std::uint8_t index : frame.indices) {
    const std::uint8_t* colour = scenario.task.palette + 3 * index;
    values.push_back(frame.dibDepth > 8 ? colour[0] | colour[1] << 8 | colour[2] << 16 : index);
  }
  return values;
}

void WriteThroughHost(const Scenario& scenario) {
  ReferenceHostReset(scenario.path.string(), false);
  TaskRecord task = scenario.task;
  ASSERT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, reinterpret_cast<std::int64_t>(&task)), 1);
  for (std::size_t i = 0; i < scenario.frames.size(); ++i) {
    const ScenarioFrame& frame = scenario.frames[i];
    DibOwner dib(TestMakeDib(frame.width, frame.height, frame.dibDepth, task.palette));
    TestFillDib(dib.get(), DibValues(scenario, frame));
    ImageRecord image{};
    image.size = sizeof image;
    image.version = kInterfaceVersion;
    image.image = dib.get();
    image.transparentFlag = frame.transparentFlag;
    image.delay = frame.delay;
    image.imageNumber = static_cast<std::uint32_t>(i);
    image.transparentIndex = frame.transparentIndex;
    ASSERT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, reinterpret_cast<std::int64_t>(&image)), 1);
  }
  if (!scenario.comment.empty()) {
    ReferenceHostCallback(&task, kHostAddComment, 0, reinterpret_cast<std::int64_t>(scenario.comment.c_str()));
  }
  ASSERT_EQ(ReferenceHostCallback(&task, kHostCloseTask, 1, 0), 1);
}

std::vector<Scenario> MakeScenarios() {
  std::vector<Scenario> scenarios;
  std::filesystem::path folder = std::filesystem::temp_directory_path() / "lwmotio3_gif_decoders";
  std::filesystem::create_directories(folder);

  // A plain indexed animation; the last frame is smaller than the screen.
  Scenario indexed{"indexed", TestTask(4, 23, 17, 1), {}, "CREATED BY...\r\n\r\nfor more information.", {}};
  indexed.frames.push_back({23, 17, 4, TestNoise(23 * 17, 16, 1), 5, -1, 0});
  indexed.frames.push_back({23, 17, 4, TestNoise(23 * 17, 16, 2), 10, -1, 0});
  indexed.frames.push_back({20, 10, 4, TestNoise(20 * 10, 16, 3), 250, -1, 0});
  scenarios.push_back(indexed);

  // Supercompression: index 199 marks pixels that did not change, so the
  // frame before must show through.
  Scenario delta{"supercompressed", TestTask(8, 31, 9, 2), {}, "", {}};
  delta.frames.push_back({31, 9, 8, TestNoise(31 * 9, 199, 4), 7, -1, 0});
  for (std::uint32_t seed : {5u, 6u}) {
    std::vector<std::uint8_t> changes = TestNoise(31 * 9, 199, seed);
    for (std::size_t i = 0; i < changes.size(); ++i) {
      if (i % 5 != 0) changes[i] = 199;
    }
    delta.frames.push_back({31, 9, 8, changes, 7, 199, 0});
  }
  scenarios.push_back(delta);

  // The Transparent option: the reserved index 3 on every frame, so each
  // frame shows alone over what lies behind.
  Scenario transparent{"transparent", TestTask(2, 12, 6, 3), {}, "", {}};
  for (std::uint32_t seed : {7u, 8u, 9u}) {
    transparent.frames.push_back({12, 6, 4, TestNoise(12 * 6, 4, seed), 20, 3, 1});
  }
  scenarios.push_back(transparent);

  // Supercompression over a fixed palette: the unchanged pixels carry 255,
  // far beyond an 8-entry table, and no transparency is announced.
  Scenario beyond{"beyond_table", TestTask(3, 9, 4, 4), {}, "", {}};
  beyond.frames.push_back({9, 4, 8, TestNoise(9 * 4, 8, 10), 10, -1, 0});
  std::vector<std::uint8_t> marked = TestNoise(9 * 4, 8, 11);
  for (std::size_t i = 0; i < marked.size(); i += 3) marked[i] = 255;
  beyond.frames.push_back({9, 4, 8, marked, 10, -1, 0});
  scenarios.push_back(beyond);

  // Large noise: the code table fills and is cleared many times.
  Scenario noisy{"noisy", TestTask(8, 160, 120, 5), {}, "noise", {}};
  noisy.frames.push_back({160, 120, 8, TestNoise(160 * 120, 256, 12), 4, -1, 0});
  noisy.frames.push_back({160, 120, 8, TestNoise(160 * 120, 256, 13), 4, -1, 0});
  scenarios.push_back(noisy);

  // Two-colour and true-colour tasks.
  Scenario mono{"one_bit", TestTask(1, 17, 3, 6), {}, "", {}};
  mono.frames.push_back({17, 3, 1, TestNoise(17 * 3, 2, 14), 3, 0, 1});
  mono.frames.push_back({17, 3, 1, TestNoise(17 * 3, 2, 15), 3, 0, 1});
  scenarios.push_back(mono);
  Scenario trueColour{"true_colour", TestTask(8, 10, 5, 7), {}, "", {}};
  trueColour.frames.push_back({10, 5, 24, TestNoise(10 * 5, 256, 16), 6, -1, 0});
  scenarios.push_back(trueColour);

  for (Scenario& scenario : scenarios) {
    scenario.path = folder / (scenario.name + ".gif");
    WriteThroughHost(scenario);
  }
  return scenarios;
}

const std::vector<Scenario>& Scenarios() {
  static const std::vector<Scenario> scenarios = MakeScenarios();
  return scenarios;
}

int ExpectedDisposal(const ScenarioFrame& frame) {
  return frame.transparentFlag != 0 && frame.transparentIndex >= 0 ? 2 : 1;
}

// A frame's pixels as a viewer shows them: transparent ones fully clear.
Rgba RawColours(const Scenario& scenario, const ScenarioFrame& frame) {
  Rgba out;
  for (std::uint8_t index : frame.indices) {
    const std::uint8_t* colour = scenario.task.palette + 3 * index;
    bool clear = index == frame.transparentIndex;
    out.insert(out.end(), {colour[0], colour[1], colour[2], static_cast<std::uint8_t>(clear ? 0 : 255)});
  }
  return out;
}

// Each frame drawn over the screen as the frames before left it.
std::vector<Rgba> CoalescedColours(const Scenario& scenario) {
  int width = static_cast<int>(scenario.task.width);
  int height = static_cast<int>(scenario.task.height);
  Rgba screen(static_cast<std::size_t>(width) * height * 4, 0);
  std::vector<Rgba> frames;
  for (const ScenarioFrame& frame : scenario.frames) {
    Rgba raw = RawColours(scenario, frame);
    for (int y = 0; y < frame.height; ++y) {
      for (int x = 0; x < frame.width; ++x) {
        const std::uint8_t* pixel = &raw[(y * frame.width + x) * 4];
        if (pixel[3] != 0) std::copy(pixel, pixel + 4, &screen[(y * width + x) * 4]);
      }
    }
    frames.push_back(screen);
    if (ExpectedDisposal(frame) == 2) {
      for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) screen[(y * width + x) * 4 + 3] = 0;
      }
    }
  }
  return frames;
}

// Equal where visible; the colour under a clear pixel is the decoder's own.
void ExpectSameVisiblePixels(const Rgba& expected, const Rgba& actual, const std::string& what) {
  ASSERT_EQ(expected.size(), actual.size()) << what;
  std::size_t differing = 0;
  for (std::size_t i = 0; i < expected.size(); i += 4) {
    bool same = expected[i + 3] == 0 ? actual[i + 3] == 0 : std::equal(&expected[i], &expected[i + 4], &actual[i]);
    if (!same) differing += 1;
  }
  EXPECT_EQ(differing, 0u) << what;
}

std::string RunCommand(const std::string& command) {
  std::string output;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[65536];
  for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, got);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

Rgba Bytes(const std::string& text, std::size_t from, std::size_t count) {
  return from + count <= text.size() ? Rgba(text.begin() + from, text.begin() + from + count) : Rgba();
}

}  // namespace

TEST(GifDecoders, GiflibReadsEveryFrameAsHandedOver) {
  for (const Scenario& scenario : Scenarios()) {
    SCOPED_TRACE(scenario.name);
    int error = 0;
    GifFileType* gif = DGifOpenFileName(scenario.path.c_str(), &error);
    ASSERT_NE(gif, nullptr) << GifErrorString(error);
    ASSERT_EQ(DGifSlurp(gif), GIF_OK) << GifErrorString(gif->Error);
    EXPECT_EQ(gif->SWidth, static_cast<int>(scenario.task.width));
    EXPECT_EQ(gif->SHeight, static_cast<int>(scenario.task.height));
    ASSERT_EQ(gif->ImageCount, static_cast<int>(scenario.frames.size()));
    ASSERT_NE(gif->SColorMap, nullptr);

    std::string comment;
    int loopCount = -1;
    bool inComment = false;
    for (int b = 0; b < gif->SavedImages[0].ExtensionBlockCount; ++b) {
      const ExtensionBlock& block = gif->SavedImages[0].ExtensionBlocks[b];
      if (block.Function == COMMENT_EXT_FUNC_CODE || (inComment && block.Function == CONTINUE_EXT_FUNC_CODE)) {
        comment.append(reinterpret_cast<const char*>(block.Bytes), block.ByteCount);
        inComment = true;
        continue;
      }
      inComment = false;
      if (block.Function == APPLICATION_EXT_FUNC_CODE && block.ByteCount == 11 &&
          std::memcmp(block.Bytes, "NETSCAPE2.0", 11) == 0 && b + 1 < gif->SavedImages[0].ExtensionBlockCount) {
        const ExtensionBlock& data = gif->SavedImages[0].ExtensionBlocks[b + 1];
        if (data.ByteCount == 3 && data.Bytes[0] == 1) loopCount = data.Bytes[1] | data.Bytes[2] << 8;
      }
    }
    EXPECT_EQ(loopCount, 0);
    EXPECT_EQ(comment, scenario.comment);

    for (int i = 0; i < gif->ImageCount; ++i) {
      SCOPED_TRACE(i);
      const ScenarioFrame& frame = scenario.frames[i];
      const SavedImage& image = gif->SavedImages[i];
      EXPECT_EQ(image.ImageDesc.Left, 0);
      EXPECT_EQ(image.ImageDesc.Top, 0);
      ASSERT_EQ(image.ImageDesc.Width, frame.width);
      ASSERT_EQ(image.ImageDesc.Height, frame.height);
      EXPECT_EQ(image.ImageDesc.ColorMap, nullptr);
      std::vector<std::uint8_t> indices(image.RasterBits, image.RasterBits + frame.width * frame.height);
      EXPECT_EQ(indices, frame.indices);
      for (std::uint8_t index : indices) ASSERT_LT(index, gif->SColorMap->ColorCount);
      GraphicsControlBlock control;
      ASSERT_EQ(DGifSavedExtensionToGCB(gif, i, &control), GIF_OK);
      EXPECT_EQ(control.DelayTime, static_cast<int>(frame.delay));
      EXPECT_EQ(control.DisposalMode, ExpectedDisposal(frame));
      EXPECT_EQ(control.TransparentColor, frame.transparentIndex);
    }
    for (std::uint8_t index : scenario.frames[0].indices) {
      const GifColorType& colour = gif->SColorMap->Colors[index];
      const std::uint8_t* expected = scenario.task.palette + 3 * index;
      ASSERT_EQ(colour.Red, expected[0]);
      ASSERT_EQ(colour.Green, expected[1]);
      ASSERT_EQ(colour.Blue, expected[2]);
    }
    DGifCloseFile(gif, &error);
  }
}

TEST(GifDecoders, ImageMagickReadsRawAndCoalescedFramesAlike) {
  for (const Scenario& scenario : Scenarios()) {
    SCOPED_TRACE(scenario.name);
    std::string file = "'" + scenario.path.string() + "'";
    std::string controls = RunCommand("/usr/bin/identify -format '%T %D %w %h\\n' " + file + " 2>&1");
    std::ostringstream expectedControls;
    for (const ScenarioFrame& frame : scenario.frames) {
      expectedControls << frame.delay << (ExpectedDisposal(frame) == 2 ? " Background " : " None ") << frame.width
                       << ' ' << frame.height << '\n';
    }
    EXPECT_EQ(controls, expectedControls.str());
    EXPECT_EQ(RunCommand("/usr/bin/identify -format '%c' " + file + "'[0]' 2>&1"), scenario.comment);
    std::string verbose = RunCommand("/usr/bin/identify -verbose " + file + "'[0]' 2>&1");
    EXPECT_NE(verbose.find("Iterations: 0\n"), std::string::npos);

    std::string raw = RunCommand("/usr/bin/convert " + file + " rgba:- 2>&1");
    std::size_t at = 0;
    for (const ScenarioFrame& frame : scenario.frames) {
      Rgba expected = RawColours(scenario, frame);
      ExpectSameVisiblePixels(expected, Bytes(raw, at, expected.size()), "raw frame");
      at += expected.size();
    }
    EXPECT_EQ(at, raw.size());

    std::string coalesced = RunCommand("/usr/bin/convert " + file + " -coalesce rgba:- 2>&1");
    at = 0;
    for (const Rgba& expected : CoalescedColours(scenario)) {
      ExpectSameVisiblePixels(expected, Bytes(coalesced, at, expected.size()), "coalesced frame");
      at += expected.size();
    }
    EXPECT_EQ(at, coalesced.size());
  }
}

TEST(GifDecoders, PillowReadsCoalescedFramesDelaysAndComment) {
  const std::vector<Scenario>& scenarios = Scenarios();
  // The python3 first on the search path may lack Pillow; the system's has it.
  std::filesystem::path script = scenarios[0].path.parent_path() / "read.py";
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
    std::istringstream lines(
        RunCommand("/usr/bin/python3 '" + script.string() + "' '" + scenario.path.string() + "' 2>&1"));
    std::string loop, commentHex;
    std::size_t frameCount = 0;
    lines >> loop >> commentHex >> frameCount;
    EXPECT_EQ(loop, "0");
    std::string comment;
    for (std::size_t i = 1; i + 1 < commentHex.size(); i += 2) {
      comment += static_cast<char>(std::stoi(commentHex.substr(i, 2), nullptr, 16));
    }
    EXPECT_EQ(comment, scenario.comment);
    ASSERT_EQ(frameCount, scenario.frames.size());

    std::vector<Rgba> expectedFrames = CoalescedColours(scenario);
    for (std::size_t i = 0; i < frameCount; ++i) {
      SCOPED_TRACE(i);
      std::uint32_t duration = 0;
      int disposal = -1;
      std::string pixelsHex;
      lines >> duration >> disposal >> pixelsHex;
      EXPECT_EQ(duration, scenario.frames[i].delay * 10);  // milliseconds
      EXPECT_EQ(disposal, ExpectedDisposal(scenario.frames[i]));
      Rgba pixels;
      for (std::size_t at = 0; at + 1 < pixelsHex.size(); at += 2) {
        pixels.push_back(static_cast<std::uint8_t>(std::stoi(pixelsHex.substr(at, 2), nullptr, 16)));
      }
      ExpectSameVisiblePixels(expectedFrames[i], pixels, "coalesced frame");
    }
  }
}
