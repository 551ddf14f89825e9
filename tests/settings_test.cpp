#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "plugin/settings.h"
#include "tests/test_folder.h"

namespace {

class SettingsFile : public ::testing::Test {
 protected:
  void SetUp() override {
    SettingsReset();
    SettingsUseFile(path_.c_str());
  }
  void TearDown() override {
    SettingsUseFile(nullptr);
    SettingsReset();
  }
  // Bytes exactly as given: no newline translation.
  void Write(const std::string& text) { std::ofstream(path_, std::ios::binary) << text; }
  void Load(const std::string& text) { Write(text); SettingsLoad(); }
  TestFolder folder_{"lw_settings"};
  std::string path_ = folder_.File("LWMOTIO3.INI");
};

TEST(SettingTable, KeysAreFoundExactlyAndResetClearsWholeStringBuffers) {
  for (const SettingRow& row : SettingTable) EXPECT_EQ(SettingFind(row.name), &row) << row.name;  // keys are unique
  EXPECT_EQ(SettingFind("MainDela"), nullptr);  // finding is exact, unlike the file's prefix match
  EXPECT_EQ(SettingFind("MainTransparent")->flags, kSettingNumber);  // a check box, yet a number row
  MainDelay = 99;
  std::memset(MainText, 'x', kSettingStringSize);
  SettingsReset();
  EXPECT_EQ(MainDelay, 8u);
  EXPECT_EQ(MainEffect, 17u);
  EXPECT_STREQ(MainText, "This space for rent...");
  for (int index = static_cast<int>(std::strlen(MainText)); index < kSettingStringSize; ++index)
    ASSERT_EQ(MainText[index], '\0');
  SettingStore(SettingFind("MainText"), std::string(300, 'y').c_str());  // stores at most 260 bytes
  EXPECT_EQ(std::strlen(MainText), 260u);
  SettingsReset();
}

TEST_F(SettingsFile, KeyMatchesByPrefixAndTheFirstRowWins) {
  Load("MainSpiralStep = 33\n"
       "MainSpiral = 44\n"  // only the start of a name: the first row so named
       "MainSpiralStepSize = 55\n");
  EXPECT_EQ(MainSpiralStep, 33u);
  EXPECT_EQ(MainSpiralJustify, 44u);
  EXPECT_EQ(MainSpiralStepSize, 55u);
  EXPECT_EQ(MainSpiralStartAngle, 100u);
}

TEST_F(SettingsFile, BlanksEqualsSignsNumbersAndKeylessLines) {
  Load("MainDelay=5\n"
       "MainPause   ===   7\n"
       "MainFontSize 12\n"          // no equals sign at all
       "MainPadding= =3\n"          // one run of "=" only: the second is the value
       "MainText == a=b  \n"        // trailing blanks stay
       "MatrixLibrary = tiles.mtx\r\n"  // a carriage return ends the line
       "DefaultTextureFileName = a\tb\n"  // so does a tab
       "MainInfernoRedColor = -1\n"        // numbers are read as the runtime's atoi reads them
       "MainRadialShadowOpacity = abc\n"
       "MainSpiralStep = 12abc\n"
       "MainInfernoYellowColor = 4294967296\n");  // wraps
  EXPECT_EQ(MainDelay, 5u);
  EXPECT_EQ(MainPause, 7u);
  EXPECT_EQ(MainFontSize, 12u);
  EXPECT_EQ(MainPadding, 0u);
  EXPECT_STREQ(MainText, "a=b  ");
  EXPECT_STREQ(MatrixLibrary, "tiles.mtx");
  EXPECT_STREQ(DefaultTextureFileName, "a");
  EXPECT_EQ(MainInfernoRedColor, 0xFFFFFFFFu);
  EXPECT_EQ(MainRadialShadowOpacity, 0u);
  EXPECT_EQ(MainSpiralStep, 12u);
  EXPECT_EQ(MainInfernoYellowColor, 0u);
  // Empty and keyless lines set the first row.
  Load("AccentCompensation = 1\n\n");
  EXPECT_EQ(AccentCompensation, 0u);
  Load("  = 5\n");
  EXPECT_EQ(AccentCompensation, 5u);
}

TEST_F(SettingsFile, CommentsSectionsUnknownAndWriteOnlyKeysChangeNothing) {
  Load("MainDelay = 3\n"  // before the section line counts as well
       "[PlugIn]\n"
       ";MainPause = 1\n"
       "Bogus = 4\n"
       "MainDelayed = 4\n"  // longer than any name
       "PatchLevel = 9\n"
       "VersionNumber = 9\n"
       "PatchLev = 9\n");  // the start of a write-only name only
  EXPECT_EQ(MainDelay, 3u);
  EXPECT_EQ(MainPause, 100u);
  EXPECT_EQ(PatchLevel, 1u);
  EXPECT_EQ(VersionNumber, 512u);
  EXPECT_EQ(AccentCompensation, 0u);
}

TEST_F(SettingsFile, OverlongLinesAreReadIn259ByteParts) {
  // The line buffer holds 259 bytes: the rest of a longer line is a line of
  // its own, and a line of exactly 259 leaves its newline as an empty line.
  Load("AccentCompensation = 1\nMainText = " + std::string(248, 'x') + "\n");
  EXPECT_EQ(std::string(MainText), std::string(248, 'x'));
  EXPECT_EQ(AccentCompensation, 0u);

  Load("MainFontName = " + std::string(300, 'f') + "\nMainDelay = 2\n");
  EXPECT_EQ(std::strlen(MainFontName), 259u - 15u);
  EXPECT_EQ(MainDelay, 2u);
}

TEST_F(SettingsFile, ShiftOrAMissingFileKeepsTheValues) {
  Write("MainDelay = 3\n\nMainText = changed\n");
  EXPECT_EQ(SettingsLoadFile(path_.c_str(), true), 1);
  EXPECT_EQ(MainDelay, 8u);
  EXPECT_STREQ(MainText, "This space for rent...");
  EXPECT_EQ(AccentCompensation, 0u);
  std::remove(path_.c_str());
  MainDelay = 77;  // values between runs stay when there is nothing to read
  EXPECT_EQ(SettingsLoadFile(path_.c_str(), false), 0);
  EXPECT_EQ(MainDelay, 77u);
  SettingsUseFile((path_ + ".missing-folder/LWMOTIO3.INI").c_str());
  SettingsSave();  // unwritable: quietly nothing
  EXPECT_FALSE(std::filesystem::exists(path_ + ".missing-folder"));
}

TEST_F(SettingsFile, HeaderLinesAndOneLinePerRow) {
  std::tm when{};  // 5 January 2023, 07:08:09
  when.tm_year = 2023 - 1900;
  when.tm_mday = 5;
  when.tm_hour = 7;
  when.tm_min = 8;
  when.tm_sec = 9;
  when.tm_isdst = -1;
  ASSERT_EQ(SettingsSaveFile(path_.c_str(), std::mktime(&when)), 1);
  std::ifstream file(path_);  // text mode: the platform's own newlines
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), 5u + 215u);
  EXPECT_EQ(lines[0], ";Brindle Foundries animtion plugin configuration file");
  EXPECT_EQ(lines[1], ";Edit this at your own risk");
  EXPECT_EQ(lines[2], ";Last updated Thu Jan  5 07:08:09 2023");
  EXPECT_EQ(lines[3], ";");
  EXPECT_EQ(lines[4], "[PlugIn]");
  EXPECT_EQ(lines[5], "AccentCompensation = 0");
  EXPECT_EQ(lines[5 + (SettingFind("MatrixDefaultTile") - SettingTable)], "MatrixDefaultTile = ");

  char date[25];
  when.tm_year = 12345 - 1900;
  when.tm_wday = 6;
  SettingsDateText(when, date);
  EXPECT_STREQ(date, "Sat Jan  5 07:08:09 1234");  // ctime's first 24 characters
}

TEST_F(SettingsFile, SaveThenLoadRestoresEveryReadableValue) {
  auto valueText = [](const SettingRow& row) {
    return row.flags & kSettingString ? std::string(static_cast<const char*>(row.value))
                                      : std::to_string(*static_cast<std::uint32_t*>(row.value));
  };
  std::vector<std::string> expected;
  for (int index = 0; index < kSettingCount; ++index) {
    const SettingRow& row = SettingTable[index];
    if (row.flags & kSettingString) SettingStore(&row, ("text " + std::to_string(index) + " with = and blanks").c_str());
    else *static_cast<std::uint32_t*>(row.value) = 0xFFFFFF00u + index % 7 + index * 1000;
    expected.push_back(row.flags & kSettingWriteOnly ? std::to_string(row.defaultNumber) : valueText(row));
  }
  SettingsSave();
  SettingsReset();
  SettingsLoad();
  for (int index = 0; index < kSettingCount; ++index)
    EXPECT_EQ(valueText(SettingTable[index]), expected[index]) << SettingTable[index].name;
}

}  // namespace
