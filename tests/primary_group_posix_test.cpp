#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/data_folders.h"
#include "host/primary_groups.h"
#include "scoped_variable_posix.h"
#include "tests/test_folder.h"

namespace {

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The hosts install the primary group as an installer would: only when it
// is missing, never over the user's file.
TEST(HostDataFolders, InstallThePrimaryTextureGroupOnlyWhenMissing) {
  TestFolder folder("lw_primary_group_home");
  const std::filesystem::path& home = folder.path;
  ScopedVariable config("XDG_CONFIG_HOME", home.c_str());
  std::filesystem::path group = home / "Brindle Foundries" / "Lettermotion 3" / "lwmotio3.fft";
  std::string error;
  ASSERT_EQ(HostMakeDataFolders(&error), 1) << error;
  EXPECT_EQ(ReadText(group), kPrimaryTextureGroupText);
  std::ofstream(group, std::ios::binary) << "the user's own";
  ASSERT_EQ(HostMakeDataFolders(&error), 1) << error;
  EXPECT_EQ(ReadText(group), "the user's own");
}

}  // namespace
