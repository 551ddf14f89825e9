// Material file cases that need the POSIX side: a file-size limit to force a
// short write, and a configuration folder of our own to stand in for the
// user's.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "fills/material.h"
#include "tests/scoped_variable_posix.h"
#include "tests/test_folder.h"

namespace {

TEST(MaterialFileShortWrite, RemovesTheFile) {
  TestFolder folder("lw_material_short");
  std::string path = folder.File("short.mtrl");
  MemOwner block(MaterialLoad("", 0x123456, 0));
  struct sigaction ignore = {}, previous = {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &ignore, &previous);
  rlimit saved;
  getrlimit(RLIMIT_FSIZE, &saved);
  rlimit limit = saved;
  limit.rlim_cur = 100;
  setrlimit(RLIMIT_FSIZE, &limit);
  int result = MaterialSave(block.get(), path.c_str());
  setrlimit(RLIMIT_FSIZE, &saved);
  sigaction(SIGXFSZ, &previous, nullptr);
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(std::filesystem::exists(path));
}

// The swatch's set-up finds its own file in the data folder by control id.
TEST(MaterialSetUp, ReadsTheControlsFileUnlessTold) {
  TestFolder folder("lw_material_home");
  const std::filesystem::path& home = folder.path;
  std::filesystem::create_directories(home / "Brindle Foundries" / "Lettermotion 3");
  ScopedVariable config("XDG_CONFIG_HOME", home.c_str());

  MemOwner saved(MaterialLoad("", 0x010203, 0));
  ASSERT_EQ(MaterialSave(saved.get(), MaterialPath(129)), 1);
  EXPECT_TRUE(std::filesystem::exists(home / "Brindle Foundries" / "Lettermotion 3" / "Material00129.mtrl"));
  for (int useFile : {1, 0}) {
    MemOwner block(MaterialSetUp(129, 0x7F7F7F, useFile));
    auto* record = static_cast<MaterialRecord*>(MemLock(block.get()));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->colour, useFile != 0 ? 0x010203u : 0x7F7F7Fu);
    MemUnlock(block.get());
  }
  MemOwner other(MaterialSetUp(130, 0x7F7F7F, 1));
  auto* record = static_cast<MaterialRecord*>(MemLock(other.get()));
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->colour, 0x7F7F7Fu);
  MemUnlock(other.get());
}

}  // namespace
