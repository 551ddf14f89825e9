#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

// Sets or clears one variable for the life of the object.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    const char* old = std::getenv(name);
    had_ = old != nullptr;
    if (had_) old_ = old;
    if (value != nullptr) setenv(name, value, 1);
    else unsetenv(name);
  }
  ~ScopedVariable() {
    if (had_) setenv(name_, old_.c_str(), 1);
    else unsetenv(name_);
  }

 private:
  const char* name_;
  bool had_;
  std::string old_;
};

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
