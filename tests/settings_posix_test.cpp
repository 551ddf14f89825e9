#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "plugin/platform.h"
#include "plugin/settings.h"
#include "tests/scoped_variable_posix.h"

namespace {

TEST(AppDataPathPosix, ConfigFolderFromXdgThenHome) {
  {
    ScopedVariable config("XDG_CONFIG_HOME", "/tmp/conf/");
    EXPECT_STREQ(AppDataPath("LWMOTIO3.INI"), "/tmp/conf/Brindle Foundries/LWMOTIO3.INI");
    EXPECT_STREQ(AppDataPath("Lettermotion 3\\Material00101.mtrl"),
                 "/tmp/conf/Brindle Foundries/Lettermotion 3/Material00101.mtrl");
  }
  ScopedVariable config("XDG_CONFIG_HOME", "");
  {
    ScopedVariable home("HOME", "/home/someone");
    EXPECT_STREQ(AppDataPath("LWMOTIO3.INI"), "/home/someone/.config/Brindle Foundries/LWMOTIO3.INI");
    EXPECT_STREQ(SettingsFilePath(), "/home/someone/.config/Brindle Foundries/LWMOTIO3.INI");
  }
  ScopedVariable home("HOME", nullptr);
  EXPECT_STREQ(AppDataPath("LWMOTIO3.INI"), "");
  EXPECT_FALSE(PlatformShiftHeld());
}

TEST(AppDataPathPosix, APathTooLongIsEmptyNotCut) {
  std::string folder = "/" + std::string(kAppDataPathSize, 'd');
  ScopedVariable config("XDG_CONFIG_HOME", folder.c_str());
  EXPECT_STREQ(AppDataPath("LWMOTIO3.INI"), "");
}

}  // namespace
