// The warnings of the command line: which values the dialog changes on
// their way in, told for the general controls and the current panel only.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/settings_report.h"
#include "plugin/controls_startup.h"
#include "plugin/host_interface.h"
#include "plugin/settings.h"

namespace {

constexpr int kSimple = 17;
constexpr int kOdometer = 13;

std::vector<std::string> AdjustmentsOf(int effect) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  std::vector<std::string> lines = SettingsAdjustments(&snapshot.controls, effect);
  SnapshotClear(&snapshot);
  return lines;
}

TEST(SettingsAdjustments, NamesClampedAndStrayValuesOfTheGeneralControlsAndTheCurrentPanel) {
  SettingsReset();
  EXPECT_TRUE(AdjustmentsOf(kSimple).empty());  // the defaults fit a palette host's ranges

  SettingStore(SettingFind("MainFontSize"), "500");
  SettingStore(SettingFind("MainPadding"), "-10");  // wraps to 4294967286
  SettingStore(SettingFind("MainSimpleShadowDirection"), "8");
  SettingStore(SettingFind("MainFountainFrames"), "0");  // another effect's panel
  std::vector<std::string> lines = AdjustmentsOf(kSimple);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "MainFontSize = 500 is outside 4 to 144; 144 is used");
  EXPECT_EQ(lines[1], "MainPadding = -10 is outside 0 to 512; 512 is used");
  EXPECT_EQ(lines[2], "MainSimpleShadowDirection = 8 is not a direction of its control (0 to 7); 8 is used as it stands");

  SettingsReset();
  SettingStore(SettingFind("MainEffect"), "40");
  lines = AdjustmentsOf(EffectRowOfSelection(-1));
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines[0], "MainEffect = 40 is not an effect row (0 to 20); row 0, Anaconda, is used");
  SettingsReset();
}

TEST(SettingsAdjustments, FrameCountSettingIsThePanelsOwn) {
  EXPECT_STREQ(FrameCountSetting(kSimple), "MainSimpleFrames");
  EXPECT_EQ(FrameCountSetting(kOdometer), nullptr);
}

}  // namespace
