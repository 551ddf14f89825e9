#include <gtest/gtest.h>

#include <cstring>
#include <string>
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
using colourtest::PixelsOf;
using colourtest::Rgb;

// One call the pipeline made, with what its arguments pointed at.
struct HostEvent {
  std::uint32_t code;
  TaskRecord* task;
  std::int64_t argument;
  std::int64_t pointerArgument;
  std::string text;  // status text (10) and comment (3)
};

// A host that keeps everything it is sent and can refuse a task or an image.
struct RecordingHost {
  std::vector<HostEvent> events;
  TaskRecord* openedTask = nullptr;
  TaskRecord task{};
  std::vector<ImageRecord> images;
  std::vector<std::vector<std::uint8_t>> imageBytes;  // copies of the images' blocks
  bool refuseOpen = false;
  int refuseImage = -1;  // the code 2 call, counted from 0, that fails
};
RecordingHost* gHost = nullptr;

std::vector<std::uint8_t> BlockCopy(MemHandle block) {
  auto* bytes = static_cast<const std::uint8_t*>(MemLock(block));
  std::vector<std::uint8_t> copy(bytes, bytes + MemSize(block));
  MemUnlock(block);
  return copy;
}

std::int64_t Record(TaskRecord* task, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument) {
  RecordingHost& host = *gHost;
  HostEvent event{code, task, argument, pointerArgument, ""};
  if (code == kHostStatusText || code == kHostAddComment) event.text = reinterpret_cast<const char*>(pointerArgument);
  host.events.push_back(event);
  if (code == kHostOpenTask || code == kHostOpenTestTask) {
    host.openedTask = reinterpret_cast<TaskRecord*>(pointerArgument);
    std::memcpy(&host.task, host.openedTask, sizeof(TaskRecord));
    return host.refuseOpen ? 0 : 1;
  }
  if (code == kHostAddImage) {
    if (static_cast<int>(host.images.size()) == host.refuseImage) return 0;
    const auto* image = reinterpret_cast<const ImageRecord*>(pointerArgument);
    host.images.push_back(*image);
    host.imageBytes.push_back(BlockCopy(image->image));
  }
  return 1;
}

// The fake effect: frames made by the test, appended by its build callback.
std::vector<DibHandle> gFrames;
int gBuildResult = 1;
std::int32_t gBackground = 0;

int FakeBuild(EffectContext* context) {
  for (DibHandle image : gFrames) {
    FrameRecord record{};
    record.image = image;
    record.delay = 7;
    record.transparentIndex = -1;
    FrameListAppend(context->frames, &record);
  }
  gFrames.clear();
  return gBuildResult;
}

std::int32_t FakeBackground(const Controls*) { return gBackground; }

const EffectEntry kFakeEffect = {"Fake", nullptr, FakeBuild, FakeBackground, nullptr, nullptr, "", 0};

const DibHead* HeadOf(const std::vector<std::uint8_t>& block) { return reinterpret_cast<const DibHead*>(block.data()); }

std::vector<std::int32_t> PixelsOfCopy(const std::vector<std::uint8_t>& block) {
  const DibHead* head = HeadOf(block);
  std::vector<std::int32_t> pixels;
  for (int y = 0; y < head->biHeight; ++y) {
    for (int x = 0; x < head->biWidth; ++x) pixels.push_back(DibGetPixel(head, x, y));
  }
  return pixels;
}

// Colour-table entry as red-low COLORREF.
std::int32_t TableEntry(const std::vector<std::uint8_t>& block, int index) {
  const std::uint8_t* entry = block.data() + kDibHeadSize + index * 4;
  return Rgb(entry[2], entry[1], entry[0]);
}

std::int32_t PaletteEntry(const std::uint8_t* palette, int index) {
  return Rgb(palette[index * 3], palette[index * 3 + 1], palette[index * 3 + 2]);
}

class BuildPipeline : public testing::Test {
 protected:
  void SetUp() override {
    SettingsReset();
    SnapshotInit(&snapshot);
    snapshot.controls.window = &snapshot;  // any address stands for the dialog
    hostRecord.callback = Record;
    gHost = &host;
    gBuildResult = 1;
    gBackground = Rgb(0, 0, 255);
  }
  void TearDown() override {
    for (DibHandle image : gFrames) MemFree(image);
    gFrames.clear();
    SnapshotClear(&snapshot);
    gHost = nullptr;
    SettingsReset();
  }

  void Check(int id, int on = 1) { SnapshotSetCheck(&snapshot, id, on); }
  int Run(int testRun = 0, const EffectEntry& effect = kFakeEffect) {
    return BuildAnimationWithEffect(&snapshot.controls, &hostRecord, testRun, effect);
  }
  std::vector<std::uint32_t> Codes() const {
    std::vector<std::uint32_t> codes;
    for (const HostEvent& event : host.events) codes.push_back(event.code);
    return codes;
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const HostEvent& event : host.events) {
      if (event.code == kHostStatusText) texts.push_back(event.text);
    }
    return texts;
  }
  bool SentCode(std::uint32_t code) const {
    for (const HostEvent& event : host.events) {
      if (event.code == code) return true;
    }
    return false;
  }

  ControlsSnapshot snapshot;
  HostRecord hostRecord{};
  RecordingHost host;
};

const std::vector<std::int32_t> kTwoByTwo = {Rgb(0, 0, 255), Rgb(200, 10, 10), Grey(40), Rgb(0, 0, 255)};

TEST_F(BuildPipeline, BuildSendsItsCodesInOrderAndClosesWithTheComment) {
  Check(kCustomPaletteBox);
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 1);

  std::vector<std::uint32_t> expected = {13, 10, 10, 13, 10, 13, 10, 13, 13, 13, 1, 2, 2, 3, 4};
  EXPECT_EQ(Codes(), expected);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Building", "Building", "Quantizing", "Remapping"}));
  const std::vector<HostEvent>& events = host.events;
  for (int i : {0, 3, 5, 9}) EXPECT_EQ(events[i].argument + events[i].pointerArgument, 0) << i;
  EXPECT_EQ(events[7].argument, 0);
  EXPECT_EQ(events[7].pointerArgument, 2);
  EXPECT_EQ(events[8].argument, 1);
  EXPECT_EQ(events[8].pointerArgument, 2);
  for (int i = 0; i < 11; ++i) EXPECT_EQ(events[i].task, nullptr) << i;
  for (int i = 11; i < 15; ++i) EXPECT_EQ(events[i].task, host.openedTask) << i;
  EXPECT_EQ(events[14].argument, 1);
  EXPECT_EQ(events[13].text,
            "CREATED BY...\r\n\r\nThis animation was created by Brindle Foundries' Loopwright Studio or Loopwright "
            "Express and the Lettermotion #3 plugin.\r\n\r\nSee\r\n\r\n    http://www.brindlefoundries.com/\r\n\r\n"
            "for more information.");

  EXPECT_EQ(host.task.size, 1080u);
  EXPECT_EQ(host.task.version, 4096u);
  EXPECT_EQ(host.task.ownerWindow, &snapshot);
  EXPECT_EQ(host.task.imageCount, 2u);
  ASSERT_EQ(host.images.size(), 2u);
  for (std::uint32_t i = 0; i < 2; ++i) {
    EXPECT_EQ(host.images[i].size, 112u);
    EXPECT_EQ(host.images[i].version, 4096u);
    EXPECT_EQ(host.images[i].imageNumber, i);
    EXPECT_EQ(host.images[i].delay, 7u);
    EXPECT_EQ(host.images[i].transparentFlag, 0u);
    EXPECT_EQ(host.images[i].transparentIndex, -1);
  }
  EXPECT_TRUE(snapshot.messages.empty());
}

TEST_F(BuildPipeline, TestRunOpensWithCodeFiveAndLeavesOutTheCommentWhenSwitchedOff) {
  AddDescriptiveCommentBlock = 0;
  gFrames = {MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(1), 1);
  // Fixed palette: no quantiser.
  std::vector<std::uint32_t> expected = {13, 10, 10, 13, 13, 10, 13, 13, 5, 2, 4};
  EXPECT_EQ(Codes(), expected);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Building", "Building", "Remapping"}));
}

TEST_F(BuildPipeline, SupercompressionRunsBetweenPaletteAndRemap) {
  Check(kCustomPaletteBox);
  Check(kSupercompressBox);
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Building", "Building", "Quantizing", "Supercompressing", "Remapping"}));
}

TEST(BuildOptionWord, EachRuleUsesTheOneBefore) {
  EffectEntry whole = kFakeEffect;
  whole.backgroundColour = [](const Controls*) -> std::int32_t { return -1; };
  EffectEntry none = kFakeEffect;
  none.backgroundColour = nullptr;
  gBackground = Rgb(1, 2, 3);
  struct Case {
    BuildBoxes boxes;  // mask, true colour, custom, dither, supercompress, transparent
    const EffectEntry* effect;
    BuildOptionWord expected;  // supercompress, transparent, mask, background
  };
  const Case cases[] = {
      {{1, 0, 1, 0, 1, 1}, &kFakeEffect, {1, 0, 0, Rgb(1, 2, 3)}},  // supercompress clears both
      {{1, 1, 1, 0, 1, 1}, &kFakeEffect, {0, 1, 1, Rgb(1, 2, 3)}},  // true colour clears supercompress only
      {{0, 0, 0, 0, 0, 1}, &kFakeEffect, {0, 1, 1, Rgb(1, 2, 3)}},  // transparent forces the mask
      {{1, 0, 0, 0, 0, 1}, &whole, {0, 0, 0, -1}},                  // a whole-frame effect clears both
      {{0, 0, 0, 0, 1, 0}, &whole, {1, 0, 0, -1}},
      {{1, 0, 0, 0, 0, 0}, &none, {0, 0, 1, 0}},                    // no callback: background 0
  };
  for (const Case& c : cases) {
    BuildOptionWord got = BuildOptionWordFor(c.boxes, *c.effect, nullptr);
    EXPECT_EQ(got.supercompress, c.expected.supercompress);
    EXPECT_EQ(got.transparent, c.expected.transparent);
    EXPECT_EQ(got.maskBackground, c.expected.maskBackground);
    EXPECT_EQ(got.backgroundColour, c.expected.backgroundColour);
  }
}

TEST_F(BuildPipeline, TrueColourWithCustomPaletteHandsOverTheEffectsFramesWithTheFixedPalette) {
  Check(kTrueColourBox);
  Check(kCustomPaletteBox);
  Check(kSupercompressBox);
  std::vector<std::int32_t> tall = {Grey(1), Grey(2), Grey(3), Grey(4), Grey(5), Grey(6), Grey(7), Grey(8)};
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 4, tall), MakeBitmap(3, 1, {Grey(9), Grey(9), Grey(9)})};
  EXPECT_EQ(Run(), 1);

  for (const std::string& text : Texts()) EXPECT_NE(text, "Quantizing");
  for (const std::string& text : Texts()) EXPECT_NE(text, "Supercompressing");
  EXPECT_EQ(host.task.bitsPerPixel, 8u);
  EXPECT_EQ(host.task.width, 3u);
  EXPECT_EQ(host.task.height, 4u);
  std::uint8_t fixed[kPaletteBytes];
  FixedPaletteBuild(fixed, nullptr, kFixedPaletteDefaultRow);
  EXPECT_EQ(std::memcmp(host.task.palette, fixed, kPaletteBytes), 0);
  ASSERT_EQ(host.imageBytes.size(), 3u);
  EXPECT_EQ(HeadOf(host.imageBytes[1])->biBitCount, 24);
  EXPECT_EQ(PixelsOfCopy(host.imageBytes[0]), kTwoByTwo);
  EXPECT_EQ(PixelsOfCopy(host.imageBytes[1]), tall);
}

TEST_F(BuildPipeline, TransparentWithAFixedPaletteStampsNothingAndReportsMinusOne) {
  Check(kTransparentBox);
  gFrames = {MakeBitmap(2, 2, kTwoByTwo)};
  std::uint8_t fixed[kPaletteBytes];
  FixedPaletteBuild(fixed, nullptr, kFixedPaletteDefaultRow);
  DibOwner source(MakeBitmap(2, 2, kTwoByTwo));
  DibOwner expected(RemapPlain(source.get(), fixed, 8, 256, RemapOptions{}));
  EXPECT_EQ(Run(), 1);

  const auto* raw = reinterpret_cast<const std::uint8_t*>(&host.task);
  std::uint32_t at1072;
  std::memcpy(&at1072, raw + 1072, 4);
  EXPECT_EQ(at1072, 0xFFFFFFFFu);
  ASSERT_EQ(host.images.size(), 1u);
  EXPECT_EQ(host.images[0].transparentFlag, 1u);
  EXPECT_EQ(host.images[0].transparentIndex, -1);
  EXPECT_EQ(PixelsOfCopy(host.imageBytes[0]), PixelsOf(expected.get()));
}

// 255 distinct colours on a 17 by 15 frame; the background is one of them.
std::vector<std::int32_t> Colours255() {
  std::vector<std::int32_t> pixels;
  for (int i = 0; i < 255; ++i) pixels.push_back(Rgb(i, 255 - i, (i * 7) & 0xFF));
  return pixels;
}

TEST_F(BuildPipeline, ExactlyTwoHundredFiftyFiveColoursWithAMaskFillTheLastSlot) {
  std::vector<std::int32_t> pixels = Colours255();
  gBackground = pixels[100];
  Check(kCustomPaletteBox);
  Check(kMaskBackgroundBox);
  gFrames = {MakeBitmap(17, 15, pixels)};
  EXPECT_EQ(Run(), 1);

  EXPECT_EQ(host.task.bitsPerPixel, 8u);
  EXPECT_EQ(PaletteEntry(host.task.palette, 255), gBackground);
  EXPECT_EQ(host.task.transparentIndex, 0u);  // Transparent is off
  ASSERT_EQ(host.imageBytes.size(), 1u);
  std::vector<std::int32_t> indexes = PixelsOfCopy(host.imageBytes[0]);
  EXPECT_EQ(indexes[100], 255);
  for (int i = 0; i < 255; ++i) {
    if (i != 100) {
      EXPECT_EQ(PaletteEntry(host.task.palette, indexes[i]), pixels[i]) << i;
    }
  }

  // Transparent alone brings the mask with it and names the reserved slot.
  std::vector<std::vector<std::uint8_t>> masked = host.imageBytes;
  host = RecordingHost{};
  Check(kMaskBackgroundBox, 0);
  Check(kTransparentBox);
  gFrames = {MakeBitmap(17, 15, pixels)};
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(host.imageBytes, masked);
  EXPECT_EQ(host.task.transparentIndex, 255u);
  EXPECT_EQ(host.images[0].transparentFlag, 1u);
  EXPECT_EQ(host.images[0].transparentIndex, 255);
}

TEST_F(BuildPipeline, TwoColoursGiveADepthOfOne) {
  Check(kCustomPaletteBox);
  std::vector<std::int32_t> pixels = {Grey(250), Rgb(10, 0, 0), Rgb(10, 0, 0), Grey(250), Grey(250), Grey(250)};
  gFrames = {MakeBitmap(3, 2, pixels), MakeBitmap(3, 2, pixels)};
  EXPECT_EQ(Run(), 1);

  EXPECT_EQ(host.task.bitsPerPixel, 1u);
  EXPECT_EQ(PaletteEntry(host.task.palette, 0), Rgb(10, 0, 0));  // darker first
  EXPECT_EQ(PaletteEntry(host.task.palette, 1), Grey(250));
  ASSERT_EQ(host.imageBytes.size(), 2u);
  EXPECT_EQ(HeadOf(host.imageBytes[1])->biBitCount, 1);
  EXPECT_EQ(PixelsOfCopy(host.imageBytes[1]), (std::vector<std::int32_t>{1, 0, 0, 1, 1, 1}));
}

TEST_F(BuildPipeline, SupercompressedIdenticalFramesBecomeFlatFieldsOfTheDeltaIndex) {
  Check(kCustomPaletteBox);
  Check(kSupercompressBox);
  Check(kTransparentBox);      // cleared by supercompression
  Check(kMaskBackgroundBox);   // likewise
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 1);

  // Three colours, one of them the background: the slot is index 3.
  EXPECT_EQ(host.task.bitsPerPixel, 2u);
  EXPECT_EQ(PaletteEntry(host.task.palette, 3), gBackground);
  EXPECT_EQ(host.task.transparentIndex, 0u);
  ASSERT_EQ(host.imageBytes.size(), 3u);
  std::vector<std::int32_t> first = PixelsOfCopy(host.imageBytes[0]);
  EXPECT_EQ(first[0], 3);
  EXPECT_EQ(first[3], 3);
  EXPECT_EQ(PaletteEntry(host.task.palette, first[1]), Rgb(200, 10, 10));
  EXPECT_EQ(PaletteEntry(host.task.palette, first[2]), Grey(40));
  EXPECT_EQ(host.images[0].transparentIndex, -1);
  for (int f = 1; f < 3; ++f) {
    EXPECT_EQ(PixelsOfCopy(host.imageBytes[f]), (std::vector<std::int32_t>{3, 3, 3, 3})) << f;
    EXPECT_EQ(TableEntry(host.imageBytes[f], 3), gBackground);
    EXPECT_EQ(host.images[f].transparentIndex, 3);
    EXPECT_EQ(host.images[f].transparentFlag, 0u);
  }
}

// Every failure shows one message, hands nothing to the host and frees all
// (the sanitizer build checks the last part).
TEST_F(BuildPipeline, FailuresBeforeTheTaskShowTheMemoryErrorAndNeverCloseATask) {
  const std::vector<std::string> memoryError = {"Memory error"};

  gBuildResult = 0;  // a failed build, with a frame already in the list
  gFrames = {MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(Codes(), (std::vector<std::uint32_t>{13, 10, 10}));
  EXPECT_EQ(snapshot.messages, memoryError);

  gBuildResult = 1;  // a build without frames
  host = RecordingHost{};
  snapshot.messages.clear();
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(Codes(), (std::vector<std::uint32_t>{13, 10, 10, 13}));
  EXPECT_EQ(snapshot.messages, memoryError);

  EffectEntry noBuild = kFakeEffect;  // a row without a build callback
  noBuild.build = nullptr;
  host = RecordingHost{};
  snapshot.messages.clear();
  EXPECT_EQ(Run(0, noBuild), 0);
  EXPECT_EQ(Codes(), (std::vector<std::uint32_t>{13, 10, 13}));
  EXPECT_EQ(snapshot.messages, memoryError);

  Check(kCustomPaletteBox);  // the quantiser refuses an indexed frame
  host = RecordingHost{};
  snapshot.messages.clear();
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, {0, 1, 1, 0}, 8)};
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(Texts().back(), "Quantizing");
  EXPECT_EQ(snapshot.messages, memoryError);

  Check(kCustomPaletteBox, 0);  // dithering refuses a 1-bit frame after one frame was reduced
  Check(kDitherBox);
  host = RecordingHost{};
  snapshot.messages.clear();
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, {0, 1, 1, 0}, 1)};
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(Texts().back(), "Remapping");
  EXPECT_EQ(host.events.back().code, 13u);
  EXPECT_EQ(host.events.back().argument, 1);
  EXPECT_EQ(snapshot.messages, memoryError);
  EXPECT_FALSE(SentCode(kHostCloseTask));
}

TEST_F(BuildPipeline, ARefusedTaskIsNeverClosedAndARefusedImageClosesItAsAbandoned) {
  Check(kCustomPaletteBox);
  host.refuseOpen = true;
  gFrames = {MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(host.events.back().code, kHostOpenTask);
  EXPECT_EQ(snapshot.messages, (std::vector<std::string>{"Error creating new task."}));

  host = RecordingHost{};
  host.refuseImage = 1;
  snapshot.messages.clear();
  gFrames = {MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo), MakeBitmap(2, 2, kTwoByTwo)};
  EXPECT_EQ(Run(), 0);
  std::vector<std::uint32_t> codes = Codes();
  std::vector<std::uint32_t> tail(codes.end() - 4, codes.end());
  EXPECT_EQ(tail, (std::vector<std::uint32_t>{1, 2, 2, 4}));
  EXPECT_EQ(host.events.back().argument, 0);
  EXPECT_EQ(host.events.back().task, host.openedTask);
  EXPECT_EQ(snapshot.messages,
            (std::vector<std::string>{"There has been an error adding an image to the current file object."}));
}

}  // namespace
