#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "colour/palette.h"
#include "colour/remap.h"
#include "colour_test_frames.h"
#include "plugin/build_pipeline.h"
#include "plugin/controls_snapshot.h"
#include "plugin/settings.h"

namespace {

using colourtest::Grey;
using colourtest::MakeBitmap;
using colourtest::Rgb;
using Events = std::vector<std::string>;
using Pixels = std::vector<std::int32_t>;

// A host that keeps everything it is sent and can refuse a task or an image.
// Each call is kept as "code argument", then the progress total or the status
// text, then "@task" when it names the task the host opened.
struct RecordingHost {
  Events events;
  std::vector<std::string> texts;
  std::string comment;
  TaskRecord* openedTask = nullptr;
  TaskRecord task{};
  std::vector<ImageRecord> images;
  std::vector<std::vector<std::uint8_t>> imageBytes;  // copies of the images' blocks
};
RecordingHost gHost;

// What the test sets for a run: the fake effect's frames, result and
// background, and the host's refusals.
struct Knobs {
  std::vector<DibHandle> frames;
  int buildResult = 1;
  std::int32_t background = Rgb(0, 0, 255);
  bool refuseOpen = false;
  int refuseImage = -1;  // the code 2 call, counted from 0, that fails
} gKnobs;

std::int64_t Record(TaskRecord* task, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument) {
  std::string event = std::to_string(code) + " " + std::to_string(argument);
  const char* text = reinterpret_cast<const char*>(pointerArgument);
  if (code == kHostProgress) event += " " + std::to_string(pointerArgument);
  if (code == kHostStatusText) event += " " + gHost.texts.emplace_back(text);
  if (code == kHostAddComment) gHost.comment = text;
  if (task != nullptr) event += task == gHost.openedTask ? " @task" : " @other";
  gHost.events.push_back(event);
  if (code == kHostOpenTask || code == kHostOpenTestTask) {
    gHost.openedTask = reinterpret_cast<TaskRecord*>(pointerArgument);
    gHost.task = *gHost.openedTask;
    return gKnobs.refuseOpen ? 0 : 1;
  }
  if (code == kHostAddImage) {
    if (static_cast<int>(gHost.images.size()) == gKnobs.refuseImage) return 0;
    gHost.images.push_back(*reinterpret_cast<const ImageRecord*>(pointerArgument));
    gHost.imageBytes.push_back(colourtest::BytesOf(gHost.images.back().image));
  }
  return 1;
}

// The fake effect hands over the test's frames, with a delay of 7.
int FakeBuild(EffectContext* context) {
  for (DibHandle image : gKnobs.frames) {
    FrameRecord record{image, nullptr, 7, -1, {}};
    FrameListAppend(context->frames, &record);
  }
  gKnobs.frames.clear();
  return gKnobs.buildResult;
}

const EffectEntry kFakeEffect = {
    "Fake", nullptr, FakeBuild, [](const Controls*) { return gKnobs.background; }, nullptr, nullptr, "", 0};

auto Summary(const ImageRecord& r) {
  return std::tuple(r.size, r.version, r.imageNumber, r.delay, r.transparentFlag, r.transparentIndex);
}

Pixels PixelsOfCopy(const std::vector<std::uint8_t>& block) {
  return colourtest::PixelsOfHead(reinterpret_cast<const DibHead*>(block.data()));
}

Pixels PaletteOf(const TaskRecord& task, int count = 256) {
  Pixels palette;
  for (int i = 0; i < 3 * count; i += 3)
    palette.push_back(Rgb(task.palette[i], task.palette[i + 1], task.palette[i + 2]));
  return palette;
}

class BuildPipeline : public testing::Test {
 protected:
  void SetUp() override {
    SettingsReset();
    SnapshotInit(&snapshot);
    snapshot.controls.window = &snapshot;  // any address stands for the dialog
    hostRecord.callback = Record;
  }
  void TearDown() override {
    for (DibHandle image : gKnobs.frames) MemFree(image);
    gKnobs = Knobs{};
    SnapshotClear(&snapshot);
    SettingsReset();
  }

  void Check(int id, int on = 1) { SnapshotSetCheck(&snapshot, id, on); }
  int Run(int testRun = 0, const EffectEntry& effect = kFakeEffect) {
    gHost = RecordingHost{};
    snapshot.messages.clear();
    return BuildAnimationWithEffect(&snapshot.controls, &hostRecord, testRun, effect);
  }
  void Frames(int count, const Pixels& pixels, int width = 2, int height = 2) {
    for (int f = 0; f < count; ++f) gKnobs.frames.push_back(MakeBitmap(width, height, pixels));
  }

  ControlsSnapshot snapshot;
  HostRecord hostRecord{};
};

const Pixels kTwoByTwo = {Rgb(0, 0, 255), Rgb(200, 10, 10), Grey(40), Rgb(0, 0, 255)};

TEST_F(BuildPipeline, BuildSendsItsCodesInOrderAndTheComment) {
  Check(kCustomPaletteBox);
  Frames(2, kTwoByTwo);
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(gHost.events, (Events{"13 0 0", "10 0 Building", "10 0 Building", "13 0 0", "10 0 Quantizing", "13 0 0",
                                  "10 0 Remapping", "13 0 2", "13 1 2", "13 0 0", "1 0", "2 0 @task", "2 0 @task",
                                  "3 0 @task", "4 1 @task"}));
  EXPECT_EQ(gHost.comment,
            "CREATED BY...\r\n\r\nThis animation was created by Brindle Foundries' Loopwright Studio or Loopwright "
            "Express and the Lettermotion #3 plugin.\r\n\r\nSee\r\n\r\n    http://www.brindlefoundries.com/\r\n\r\n"
            "for more information.");
  EXPECT_EQ(std::tuple(gHost.task.size, gHost.task.version, gHost.task.ownerWindow, gHost.task.imageCount),
            std::tuple(1080u, 4096u, static_cast<void*>(&snapshot), 2u));
  ASSERT_EQ(gHost.images.size(), 2u);
  for (std::uint32_t i = 0; i < 2; ++i) EXPECT_EQ(Summary(gHost.images[i]), std::tuple(112u, 4096u, i, 7u, 0u, -1));
}

TEST(BuildOptionWord, EachRuleUsesTheOneBefore) {
  const EffectEntry whole = {"Fake", nullptr, FakeBuild, [](const Controls*) { return -1; }, nullptr, nullptr, "", 0};
  const EffectEntry none = {"Fake", nullptr, FakeBuild, nullptr, nullptr, nullptr, "", 0};
  const std::int32_t blue = Rgb(0, 0, 255);  // the fake effect's background
  // Boxes: mask, true colour, custom, dither, supercompress, transparent.
  // Word: supercompress, transparent, mask, background.
  const std::tuple<BuildBoxes, const EffectEntry*, BuildOptionWord> cases[] = {
      {{1, 0, 1, 0, 1, 1}, &kFakeEffect, {1, 0, 0, blue}},  // supercompress clears both
      {{1, 1, 1, 0, 1, 1}, &kFakeEffect, {0, 1, 1, blue}},  // true colour clears supercompress only
      {{0, 0, 0, 0, 0, 1}, &kFakeEffect, {0, 1, 1, blue}},  // transparent forces the mask
      {{1, 0, 0, 0, 0, 1}, &whole, {0, 0, 0, -1}},          // a whole-frame effect clears both
      {{1, 0, 0, 0, 0, 0}, &none, {0, 0, 1, 0}},            // no callback: background 0
  };
  int row = 0;
  for (const auto& [boxes, effect, expected] : cases) {
    BuildOptionWord got = BuildOptionWordFor(boxes, *effect, nullptr);
    EXPECT_EQ(std::memcmp(&got, &expected, sizeof got), 0) << "row " << row++;
  }
}

TEST_F(BuildPipeline, TestRunAndFixedPaletteStampNoTransparentIndexAndHandOverTrueColourAsItIs) {
  std::uint8_t fixed[kPaletteBytes];
  FixedPaletteBuild(fixed, nullptr, kFixedPaletteDefaultRow);
  // A test run opens with code 5; a fixed palette needs no quantiser; the
  // comment can be switched off. Transparent with the fixed palette: the plain
  // remap, and -1 for the index.
  AddDescriptiveCommentBlock = 0;
  Check(kTransparentBox);
  Frames(1, kTwoByTwo);
  DibOwner expected(RemapPlain(DibOwner(MakeBitmap(2, 2, kTwoByTwo)).get(), fixed, 8, 256, RemapOptions{}));
  EXPECT_EQ(Run(1), 1);
  EXPECT_EQ(gHost.events, (Events{"13 0 0", "10 0 Building", "10 0 Building", "13 0 0", "13 0 0", "10 0 Remapping",
                                  "13 0 1", "13 0 0", "5 0", "2 0 @task", "4 1 @task"}));
  EXPECT_EQ(gHost.task.transparentIndex, 0xFFFFFFFFu);
  ASSERT_EQ(gHost.images.size(), 1u);
  EXPECT_EQ(Summary(gHost.images[0]), std::tuple(112u, 4096u, 0u, 7u, 1u, -1));
  EXPECT_EQ(PixelsOfCopy(gHost.imageBytes[0]), colourtest::PixelsOf(expected.get()));

  // True colour with a custom palette: no quantiser, no supercompression, the
  // effect's own frames and the fixed palette at its depth.
  Check(kTransparentBox, 0);
  Check(kTrueColourBox);
  Check(kCustomPaletteBox);
  Check(kSupercompressBox);
  Pixels tall = {Grey(1), Grey(2), Grey(3), Grey(4), Grey(5), Grey(6), Grey(7), Grey(8)};
  gKnobs.frames = {MakeBitmap(2, 4, tall), MakeBitmap(3, 1, {Grey(9), Grey(9), Grey(9)})};
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(gHost.texts, (Events{"Building", "Building", "Remapping"}));
  EXPECT_EQ(std::tuple(gHost.task.bitsPerPixel, gHost.task.width, gHost.task.height), std::tuple(8u, 3u, 4u));
  EXPECT_EQ(std::memcmp(gHost.task.palette, fixed, kPaletteBytes), 0);
  ASSERT_EQ(gHost.imageBytes.size(), 2u);
  EXPECT_EQ(PixelsOfCopy(gHost.imageBytes[0]), tall);  // still 24 bits
}

TEST_F(BuildPipeline, CustomPaletteFillsTheMaskSlotAndSupercompressesIdenticalFramesToTheDeltaIndex) {
  Pixels pixels;  // 255 distinct colours on a 17 by 15 frame; the background is one of them
  for (int i = 0; i < 255; ++i) pixels.push_back(Rgb(i, 255 - i, (i * 7) & 0xFF));
  gKnobs.background = pixels[100];
  Check(kCustomPaletteBox);
  Check(kMaskBackgroundBox);
  Frames(1, pixels, 17, 15);
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(gHost.task.bitsPerPixel, 8u);
  EXPECT_EQ(gHost.task.transparentIndex, 0u);  // Transparent is off
  ASSERT_EQ(gHost.imageBytes.size(), 1u);
  Pixels indexes = PixelsOfCopy(gHost.imageBytes[0]);
  EXPECT_EQ(indexes[100], 255);  // the background's slot, whose entry is the same colour
  for (int i = 0; i < 255; ++i) EXPECT_EQ(PaletteOf(gHost.task)[indexes[i]], pixels[i]) << i;

  // Transparent alone brings the mask with it and names the reserved slot.
  Check(kMaskBackgroundBox, 0);
  Check(kTransparentBox);
  Frames(1, pixels, 17, 15);
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(gHost.task.transparentIndex, 255u);
  EXPECT_EQ(Summary(gHost.images[0]), std::tuple(112u, 4096u, 0u, 7u, 1u, 255));

  // Supercompressed identical frames become flat fields of the delta index;
  // supercompression clears Transparent, still checked from above.
  gKnobs.background = Rgb(0, 0, 255);
  Check(kSupercompressBox);
  Frames(3, kTwoByTwo);
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(gHost.texts, (Events{"Building", "Building", "Quantizing", "Supercompressing", "Remapping"}));
  // Three colours sorted darker first, then the background in slot 3: a depth of two.
  EXPECT_EQ(gHost.task.bitsPerPixel, 2u);
  EXPECT_EQ(PaletteOf(gHost.task, 4), (Pixels{Rgb(0, 0, 255), Grey(40), Rgb(200, 10, 10), Rgb(0, 0, 255)}));
  ASSERT_EQ(gHost.imageBytes.size(), 3u);
  for (std::uint32_t f = 0; f < 3; ++f) {
    const std::vector<std::uint8_t>& image = gHost.imageBytes[f];
    EXPECT_EQ(reinterpret_cast<const DibHead*>(image.data())->biBitCount, 4);  // two bits are stored in four
    EXPECT_EQ(PixelsOfCopy(image), f == 0 ? (Pixels{3, 2, 1, 3}) : (Pixels{3, 3, 3, 3})) << f;
    EXPECT_EQ(Summary(gHost.images[f]), std::tuple(112u, 4096u, f, 7u, 0u, f == 0 ? -1 : 3));
    const std::uint8_t* slot = image.data() + kDibHeadSize + 3 * 4;  // the delta index's table entry
    EXPECT_EQ(Rgb(slot[2], slot[1], slot[0]), gKnobs.background) << f;
  }
}

// Every failure shows one message, ends with the given calls and frees all
// (the sanitizer build checks the last part). Code 4 comes only when a task
// was open, then as the last call, with 0 for an abandoned task.
TEST_F(BuildPipeline, EveryFailureShowsOneMessageAndClosesOnlyAnOpenTask) {
  auto fails = [&](const EffectEntry& effect, const Events& tail, const std::string& message = "Memory error") {
    EXPECT_EQ(Run(0, effect), 0);
    ASSERT_GE(gHost.events.size(), tail.size());
    EXPECT_EQ(Events(gHost.events.end() - static_cast<std::ptrdiff_t>(tail.size()), gHost.events.end()), tail);
    EXPECT_EQ(snapshot.messages, std::vector<std::string>{message});
    auto closes = std::count_if(gHost.events.begin(), gHost.events.end(), [](auto& e) { return e.starts_with("4 "); });
    EXPECT_EQ(closes, tail.back().starts_with("4 ") ? 1 : 0);
  };
  gKnobs.buildResult = 0;  // a failed build, with a frame already in the list
  Frames(1, kTwoByTwo);
  fails(kFakeEffect, {"13 0 0", "10 0 Building", "10 0 Building"});
  gKnobs.buildResult = 1;  // a build without frames
  fails(kFakeEffect, {"13 0 0", "10 0 Building", "10 0 Building", "13 0 0"});
  EffectEntry noBuild = kFakeEffect;  // a row without a build callback
  noBuild.build = nullptr;
  fails(noBuild, {"13 0 0", "10 0 Building", "13 0 0"});

  Check(kCustomPaletteBox);  // the quantiser refuses an indexed frame
  gKnobs.frames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, {0, 1, 1, 0}, 8)};
  fails(kFakeEffect, {"10 0 Quantizing"});
  Check(kCustomPaletteBox, 0);  // dithering refuses a 1-bit frame after one frame was reduced
  Check(kDitherBox);
  gKnobs.frames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, {0, 1, 1, 0}, 1)};
  fails(kFakeEffect, {"10 0 Remapping", "13 0 2", "13 1 2"});

  gKnobs.refuseOpen = true;  // a refused task is never closed
  Frames(1, kTwoByTwo);
  fails(kFakeEffect, {"1 0"}, "Error creating new task.");
  gKnobs.refuseOpen = false;  // a refused image closes the task as abandoned
  gKnobs.refuseImage = 1;
  Frames(3, kTwoByTwo);
  fails(kFakeEffect, {"1 0", "2 0 @task", "2 0 @task", "4 0 @task"},
        "There has been an error adding an image to the current file object.");
}

}  // namespace
