#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "plugin/settings.h"

namespace {

TEST(AppDataPathWin32, RoamingFolderThenMakersFolder) {
  std::string path = AppDataPath("LWMOTIO3.INI");
  ASSERT_GT(path.size(), std::strlen("C:\\Brindle Foundries\\LWMOTIO3.INI"));
  EXPECT_EQ(path.substr(1, 2), ":\\");
  EXPECT_EQ(path.substr(path.size() - 31), "\\Brindle Foundries\\LWMOTIO3.INI");
  EXPECT_EQ(path.find("\\\\"), std::string::npos);  // no doubled separator
  std::string tile = AppDataPath("Lettermotion 3\\Material00101.mtrl");
  EXPECT_EQ(tile, path.substr(0, path.size() - 12) + "Lettermotion 3\\Material00101.mtrl");
}

}  // namespace
