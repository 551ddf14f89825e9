// Frame folders are new or empty before a render and whole after it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/file_checks.h"
#include "host/frames_folder.h"
#include "tests/test_folder.h"

namespace {

namespace fs = std::filesystem;

class FramesFolder : public ::testing::Test {
 protected:
  TestFolder folder_{"lw_frames"};
  const fs::path& root_ = folder_.path;
};

TEST_F(FramesFolder, OnlyAMissingOrEmptyFolderIsUsable) {
  std::string error;
  EXPECT_EQ(FramesFolderUsable((root_ / "new").string(), &error), 1);
  fs::create_directory(root_ / "empty");
  EXPECT_EQ(FramesFolderUsable((root_ / "empty").string(), &error), 1);
  std::ofstream(root_ / "empty" / "old.png") << "old";
  EXPECT_EQ(FramesFolderUsable((root_ / "empty").string(), &error), 0);
  EXPECT_NE(error.find("is not empty"), std::string::npos) << error;
  EXPECT_EQ(FramesFolderUsable((root_ / "empty" / "old.png").string(), &error), 0);
  EXPECT_NE(error.find("is not a folder"), std::string::npos) << error;
}

TEST_F(FramesFolder, CommitReplacesAnEmptyFolderAndNeverMixesSets) {
  std::string target = (root_ / "deep" / "frames").string();
  std::string staging;
  std::string error;
  ASSERT_EQ(FramesFolderBegin(target, &staging, &error), 1) << error;
  std::ofstream(fs::path(staging) / "frame-0001.png") << "new";
  fs::create_directories(target);
  ASSERT_EQ(FramesFolderCommit(staging, target, &error), 1) << error;
  EXPECT_TRUE(fs::exists(fs::path(target) / "frame-0001.png"));
  EXPECT_FALSE(fs::exists(staging));

  // Filled by someone else meanwhile: the move fails and the new set goes.
  ASSERT_EQ(FramesFolderBegin(target, &staging, &error), 1) << error;
  std::ofstream(fs::path(staging) / "frame-0002.png") << "newer";
  EXPECT_EQ(FramesFolderCommit(staging, target, &error), 0);
  EXPECT_FALSE(fs::exists(staging));
  EXPECT_FALSE(fs::exists(fs::path(target) / "frame-0002.png"));
}

TEST(FileChecks, ImageNamesOtherThanGifAreKnownInAnyCase) {
  EXPECT_TRUE(NamesOtherImageFormat("out/Frame.PNG"));
  EXPECT_TRUE(NamesOtherImageFormat("a.jpeg"));
  EXPECT_FALSE(NamesOtherImageFormat("a.gif"));
  EXPECT_FALSE(NamesOtherImageFormat("png"));
}

}  // namespace
