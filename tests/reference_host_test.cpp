#include "host/reference_host.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/gif_test_support.h"

TEST(ReferenceHost, BuildSequenceWritesOneGifAndRecordsEveryCode) {
  TestFolder folder("lwmotio3_host_build");
  std::string path = folder.File("out.gif");
  ReferenceHostReset(path, false);
  ReferenceHostCurrent().plainOutput = true;
  HostRecord host = ReferenceHostRecord();
  EXPECT_EQ(host.versionWord >> 8 & 0xFF, 16u);
  HostCallback call = host.callback;

  TaskRecord task = TestTask(4, 5, 3, 1);
  std::vector<std::uint32_t> firstPixels = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};
  DibOwner first(TestMakeDib(5, 3, 4, firstPixels));
  DibOwner second(TestMakeDib(5, 3, 4, std::vector<std::uint32_t>(15, 9)));
  const ImageRecord images[] = {TestImage(first.get(), 0, 12, -1, 0), TestImage(second.get(), 1, 300, -1, 0)};
  const std::string comment = "CREATED BY...\r\n\r\nfor more information.";

  EXPECT_EQ(call(nullptr, kHostBuildStarted, 0, 0), 1);
  call(nullptr, kHostStatusText, 0, TestPointer("Building"));
  call(nullptr, kHostProgress, 0, 0);
  ASSERT_EQ(call(nullptr, kHostOpenTask, 0, TestPointer(&task)), 1);
  for (const ImageRecord& image : images) EXPECT_EQ(call(&task, kHostAddImage, 0, TestPointer(&image)), 1);
  EXPECT_EQ(call(&task, kHostAddComment, 0, TestPointer(comment.c_str())), 1);
  EXPECT_FALSE(std::filesystem::exists(path));  // nothing until the task is complete
  EXPECT_EQ(call(&task, kHostCloseTask, 1, 0), 1);

  const ReferenceHost& state = ReferenceHostCurrent();
  EXPECT_EQ(state.codes, (std::vector<std::uint32_t>{18, 10, 13, 1, 2, 2, 3, 4}));
  EXPECT_FALSE(state.testRun || state.taskOpen);
  EXPECT_EQ(state.filesWritten, 1);
  EXPECT_EQ(state.lastStatus, "Wrote " + path);

  TestGif gif = TestGifParse(TestReadFile(path));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.table, std::vector<std::uint8_t>(task.palette, task.palette + 48));
  ASSERT_EQ(gif.frames.size(), 2u);
  EXPECT_EQ(gif.frames[0].indices, std::vector<std::uint8_t>(firstPixels.begin(), firstPixels.end()));
  EXPECT_EQ(gif.frames[1].indices, std::vector<std::uint8_t>(15, 9));
  EXPECT_EQ(std::vector<int>({gif.frames[0].delay, gif.frames[1].delay, gif.frames[1].transparent}),
            std::vector<int>({12, 300, -1}));
  EXPECT_EQ(gif.comments, std::vector<std::string>{comment});
}

TEST(ReferenceHost, TransparencyChoosesTheDisposalThatShowsTheRightThingThrough) {
  TestFolder folder("lwmotio3_host_transparency");
  std::string path = folder.File("out.gif");
  std::vector<std::uint32_t> pixels = {0, 1, 0, 1, 1, 1, 0, 0};
  // Supercompression: a delta index without the Transparent option. The
  // Transparent option: the reserved index on every frame. The Transparent
  // option with a fixed palette: no index is reserved, and the frame covers
  // all that the one before showed.
  TestHostWrite(path, TestTask(1, 8, 1, 2), 1,
                {{8, 1, pixels, 5, 1, 0}, {8, 1, pixels, 5, 0, 1}, {8, 1, pixels, 5, -1, 1}});
  TestGif gif = TestGifParse(TestReadFile(path));
  ASSERT_TRUE(gif.ok);
  EXPECT_EQ(gif.tableEntries, 2);
  ASSERT_EQ(gif.frames.size(), 3u);
  const int transparentAndDisposal[3][2] = {{1, kGifDisposalKeep}, {0, kGifDisposalBackground}, {-1, kGifDisposalKeep}};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(gif.frames[i].transparent, transparentAndDisposal[i][0]) << i;
    EXPECT_EQ(gif.frames[i].disposal, transparentAndDisposal[i][1]) << i;
  }
  EXPECT_EQ(gif.frames[1].indices, std::vector<std::uint8_t>(pixels.begin(), pixels.end()));
}

TEST(ReferenceHost, TrueColourFramesTakeTheNearestEntryOfTheTaskTable) {
  TestFolder folder("lwmotio3_host_true_colour");
  std::string path = folder.File("out.gif");
  TaskRecord task = TestTask(2, 4, 1, 3);
  const std::uint8_t entries[12] = {0, 0, 0, 255, 0, 0, 0, 255, 0, 255, 0, 0};  // the last repeats red
  std::memcpy(task.palette, entries, sizeof entries);
  task.palette[12] = 1;  // beyond the table: never chosen
  // COLORREF values, red in the low byte.
  TestHostWrite(path, task, 24, {{4, 1, {0x0000F0, 0x00E010, 0x101010, 0x000001}, 5, -1, 0}});
  EXPECT_EQ(TestGifParse(TestReadFile(path)).frames.at(0).indices, (std::vector<std::uint8_t>{1, 2, 0, 0}));
}

TEST(ReferenceHost, RefusesWhatItCannotDoAndAbandonedTasksLeaveNoFile) {
  TestFolder folder("lwmotio3_host_refusals");
  std::string path = folder.File("out.gif");
  TaskRecord task = TestTask(8, 2, 2, 4);
  DibOwner dib(TestMakeDib(2, 2, 8, {}));
  ImageRecord image = TestImage(dib.get(), 0, 5, -1, 0);
  ImageRecord noImage = TestImage(nullptr, 0, 5, -1, 0);

  ReferenceHostReset("", false);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, TestPointer(&task)), 0);  // nowhere to write

  ReferenceHostReset(path, false);
  TaskRecord tooWide = TestTask(8, 70000, 2, 4);  // wider than the file's 16-bit field
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, TestPointer(&tooWide)), 0);
  for (std::uint32_t code : {6u, 8u, 9u, 11u, 7u, 12u, 99u}) {
    EXPECT_EQ(ReferenceHostCallback(nullptr, code, 0, 0), 0) << code;
  }
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, TestPointer(&image)), 0);  // no task open
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, 0), 0);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTestTask, 0, TestPointer(&task)), 1);
  EXPECT_TRUE(ReferenceHostCurrent().testRun);
  EXPECT_EQ(ReferenceHostCallback(nullptr, kHostOpenTask, 0, TestPointer(&task)), 0);  // one task at a time
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, 0), 0);
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, TestPointer(&noImage)), 0);
  EXPECT_EQ(ReferenceHostCallback(&task, kHostAddImage, 0, TestPointer(&image)), 1);
  ReferenceHostCallback(&task, kHostCloseTask, 0, 0);
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(ReferenceHostCurrent().filesWritten, 0);
  EXPECT_EQ(ReferenceHostCurrent().codes,
            (std::vector<std::uint32_t>{1, 6, 8, 9, 11, 7, 12, 99, 2, 1, 5, 1, 2, 2, 2, 4}));
}
