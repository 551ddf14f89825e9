#include "host/reference_host.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/gif_test_support.h"

namespace {

std::filesystem::path OutputPath(const char* name) { return std::filesystem::temp_directory_path() / name; }

TestGif ReadGif(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return TestGifParse({std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()});
}

ImageRecord Image(DibHandle dib, std::uint32_t number, std::uint32_t delay, std::int32_t transparentIndex,
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

std::int64_t Pointer(const void* address) { return reinterpret_cast<std::int64_t>(address); }

}  // namespace

TEST(ReferenceHost, BuildSequenceWritesOneGifAndRecordsEveryCode) {
  std::filesystem::path path = OutputPath("lwmotio3_host_build.gif");
  std::filesystem::remove(path);
  ReferenceHostReset(path.string(), false);
  HostRecord host = ReferenceHostRecord();
  EXPECT_EQ(host.versionWord >> 8 & 0xFF, 16u);
  HostCallback call = host.callback;

  TaskRecord task = TestTask(4, 5, 3, 1);
  DibOwner first(TestMakeDib(5, 3, 4, task.palette));
  DibOwner second(TestMakeDib(5, 3, 4, task.palette));
  std::vector<std::uint32_t> firstPixels = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};
  std::vector<std::uint32_t> secondPixels(15, 9);
  TestFillDib(first.get(), firstPixels);
  TestFillDib(second.get(), secondPixels);
  ImageRecord firstImage = Image(first.get(), 0, 12, -1, 0);
  ImageRecord secondImage = Image(second.get(), 1, 300, -1, 0);

  EXPECT_EQ(call(nullptr, kHostBuildStarted, 0, 0), 1);
  call(nullptr, kHostStatusText, 0, Pointer("Building"));
  call(nullptr, kHostProgress, 0, 0);
  ASSERT_EQ(call(nullptr, kHostOpenTask, 0, Pointer(&task)), 1);
  EXPECT_EQ(call(&task, kHostAddImage, 0, Pointer(&firstImage)), 1);
  EXPECT_EQ(call(&task, kHostAddImage, 0, Pointer(&secondImage)), 1);
  EXPECT_EQ(call(&task, kHostAddComment, 0, Pointer("CREATED BY...\r\n\r\nfor more information.")), 1);
  EXPECT_FALSE(std::filesystem::exists(path));  // nothing until the task is complete
  EXPECT_EQ(call(&task, kHostCloseTask, 1, 0), 1);

  const ReferenceHost& state = ReferenceHostCurrent();
  EXPECT_EQ(state.codes, (std::vector<std::uint32_t>{18, 10, 13, 1, 2, 2, 3, 4}));
  EXPECT_FALSE(state.testRun);
  EXPECT_FALSE(state.taskOpen);
  EXPECT_EQ(state.filesWritten, 1);
  EXPECT_EQ(state.lastStatus, "Wrote " + path.string());

  TestGif gif = ReadGif(path);
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.tableEntries, 16);
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(task.palette, task.palette + 48));
  ASSERT_EQ(gif.frames.size(), 2u);
  EXPECT_EQ(gif.frames[0].indices, std::vector<std::uint8_t>(firstPixels.begin(), firstPixels.end()));
  EXPECT_EQ(gif.frames[1].indices, std::vector<std::uint8_t>(secondPixels.begin(), secondPixels.end()));
  EXPECT_EQ(gif.frames[0].delay, 12);
  EXPECT_EQ(gif.frames[1].delay, 300);
  EXPECT_EQ(gif.frames[1].transparent, -1);
  EXPECT_EQ(gif.comments, std::vector<std::string>{"CREATED BY...\r\n\r\nfor more information."});
  std::filesystem::remove(path);
}

TEST(ReferenceHost, TransparencyChoosesTheDisposalThatShowsTheRightThingThrough) {
  std::filesystem::path path = OutputPath("lwmotio3_host_transparency.gif");
  ReferenceHostReset(path.string(), false);
  TaskRecord task = TestTask(1, 8, 1, 2);
  DibOwner dib(TestMakeDib(8, 1, 1, task.palette));
  TestFillDib(dib.get(), {0, 1, 0, 1, 1, 1, 0, 0});
  // Supercompression: a delta index without the Transparent option.
  ImageRecord delta = Image(dib.get(), 0, 5, 1, 0);
  // The Transparent option: the reserved index on every frame.
  ImageRecord transparent = Image(dib.get(), 1, 5, 0, 1);
  // The Transparent option with a fixed palette: no index is reserved, and
  // the frame covers all that the one before showed.
  ImageRecord nothingReserved = Image(dib.get(), 2, 5, -1, 1);
  ReferenceHostCallback(nullptr, kHostOpenTask, 0, Pointer(&task));
  ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&delta));
  ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&transparent));
  ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&nothingReserved));
  ASSERT_EQ(ReferenceHostCallback(&task, kHostCloseTask, 1, 0), 1);

  TestGif gif = ReadGif(path);
  ASSERT_TRUE(gif.ok);
  ASSERT_EQ(gif.frames.size(), 3u);
  EXPECT_EQ(gif.frames[2].transparent, -1);
  EXPECT_EQ(gif.frames[2].disposal, kGifDisposalKeep);
  EXPECT_EQ(gif.tableEntries, 2);
  EXPECT_EQ(gif.frames[0].transparent, 1);
  EXPECT_EQ(gif.frames[0].disposal, kGifDisposalKeep);
  EXPECT_EQ(gif.frames[1].transparent, 0);
  EXPECT_EQ(gif.frames[1].disposal, kGifDisposalBackground);
  EXPECT_EQ(gif.frames[1].indices, (std::vector<std::uint8_t>{0, 1, 0, 1, 1, 1, 0, 0}));
  std::filesystem::remove(path);
}

TEST(ReferenceHost, TrueColourFramesTakeTheNearestEntryOfTheTaskTable) {
  std::filesystem::path path = OutputPath("lwmotio3_host_true_colour.gif");
  ReferenceHostReset(path.string(), false);
  TaskRecord task = TestTask(2, 4, 1, 3);
  const std::uint8_t entries[12] = {0, 0, 0, 255, 0, 0, 0, 255, 0, 255, 0, 0};  // the last repeats red
  std::memcpy(task.palette, entries, sizeof entries);
  task.palette[12] = 1;  // beyond the table: never chosen
  DibOwner dib(TestMakeDib(4, 1, 24, nullptr));
  // COLORREF values, red in the low byte.
  TestFillDib(dib.get(), {0x0000F0, 0x00E010, 0x101010, 0x000001});
  ImageRecord image = Image(dib.get(), 0, 5, -1, 0);
  ReferenceHostCallback(nullptr, kHostOpenTask, 0, Pointer(&task));
  ASSERT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&image)), 1);
  ASSERT_EQ(ReferenceHostCallback(&task, kHostCloseTask, 1, 0), 1);
  TestGif gif = ReadGif(path);
  ASSERT_EQ(gif.frames.size(), 1u);
  EXPECT_EQ(gif.frames[0].indices, (std::vector<std::uint8_t>{1, 2, 0, 0}));
  std::filesystem::remove(path);
}

TEST(ReferenceHost, RefusesWhatItCannotDoAndAbandonedTasksLeaveNoFile) {
  std::filesystem::path path = OutputPath("lwmotio3_host_refusals.gif");
  std::filesystem::remove(path);
  TaskRecord task = TestTask(8, 2, 2, 4);
  DibOwner dib(TestMakeDib(2, 2, 8, task.palette));
  ImageRecord image = Image(dib.get(), 0, 5, -1, 0);

  ReferenceHostReset("", false);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, Pointer(&task)), 0);  // nowhere to write

  ReferenceHostReset(path.string(), false);
  TaskRecord tooWide = TestTask(8, 70000, 2, 4);  // wider than the file's 16-bit field
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, Pointer(&tooWide)), 0);
  for (std::uint32_t code : {6u, 8u, 9u, 11u, 7u, 12u, 99u}) {
    EXPECT_EQ(ReferenceHostCallback(nullptr, code, 0, 0), 0) << code;
  }
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&image)), 0);  // no task open
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, 0), 0);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTestTask, 0, Pointer(&task)), 1);
  EXPECT_TRUE(ReferenceHostCurrent().testRun);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, Pointer(&task)), 0);  // one task at a time
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, 0), 0);
  ImageRecord noImage = Image(nullptr, 0, 5, -1, 0);
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&noImage)), 0);
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, Pointer(&image)), 1);
  ReferenceHostCallback(&task, kHostCloseTask, 0, 0);
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(ReferenceHostCurrent().filesWritten, 0);
  EXPECT_EQ(ReferenceHostCurrent().codes,
            (std::vector<std::uint32_t>{1, 6, 8, 9, 11, 7, 12, 99, 2, 1, 5, 1, 2, 2, 2, 4}));
}
