#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "fills/texture_file.h"
#include "host/primary_groups.h"
#include "tests/test_folder.h"

namespace {

class TextureFile : public ::testing::Test {
 protected:
  void TearDown() override { TextureGroupClear(&group_); }
  void WriteText(const std::string& text) { std::ofstream(path_, std::ios::binary) << text; }
  std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  TestFolder folder_{"lw_texture_file"};
  std::string path_ = folder_.File("group.fft");
  TextureGroup group_{};
};

TextureRecord Record(int type, int seed) {
  TextureRecord texture{};
  TextureDefaults(&texture);
  texture.TextureType = type;
  texture.SeedValue[0] = seed;
  texture.ForeColour[2] = 0x123456;
  texture.ColorGreen[1] = 0.125f;
  return texture;
}

// Written in list order, sorted by name without regard to case; the target
// rectangle and reserved fields are not kept; the old file goes to .bak.
TEST_F(TextureFile, WritesSortedAndReadsBackWithABackup) {
  WriteText("previous version");
  ASSERT_EQ(TextureGroupAdd(&group_, "zebra", Record(5, 7)), 0);
  ASSERT_EQ(TextureGroupAdd(&group_, "Apple", Record(4, 9)), 0);
  group_.items[0].texture.rectangle = {1, 2, 3, 4};
  ASSERT_EQ(TextureFileWrite(path_.c_str(), group_), 1);
  EXPECT_EQ(ReadText(path_ + ".bak"), "previous version");
  std::string text = ReadText(path_);
  std::erase(text, '\r');  // lines end as the platform's text mode ends them
  EXPECT_NE(text.find("\nWriteable=1\n"), std::string::npos);
  EXPECT_NE(text.find("\nForeColour3=1193046\nForeColour4="), std::string::npos);
  EXPECT_NE(text.find("\nCreaterCount=5000\nCreaterDepth=1.500000\nColorRed0=0.000000\n"), std::string::npos);

  TextureGroup read{};
  read.writeable = 0;
  ASSERT_EQ(TextureFileRead(path_.c_str(), &read), 1);
  EXPECT_EQ(read.writeable, 1);
  ASSERT_EQ(read.count, 2);
  EXPECT_STREQ(read.items[0].name, "Apple");
  EXPECT_STREQ(read.items[1].name, "zebra");
  TextureRecord expected = Record(4, 9);
  EXPECT_EQ(std::memcmp(&read.items[0].texture, &expected, sizeof expected), 0);
  EXPECT_EQ(read.items[1].texture.TextureType, 5);
  TextureGroupClear(&read);
}

TEST_F(TextureFile, ToleratesWhatHandsAndOtherWritersDo) {
  std::string fits = "SeedValue1=" + std::string(8191 - 13, ' ') + "77";  // 8191 characters: read whole
  std::string cut = "SeedValue2=" + std::string(8180, ' ') + "Power3=0.5";  // the rest is a line of its own
  WriteText(std::string(kTextureFileSignature) + "\r\nSomeOtherHeader: value\nwriteable = 0\n;Items begin\n" +
            ":beginitem\ntexturename = First\n  \n;a comment=5\npower1 = 0.5\n" + fits + "\n" + cut +
            "\nNoSuchKey=3\nMatrixSize=oops\n:EndItem\n" +
            ":BEGINITEM\nCreaterCount=12\n:ENDITEM\n"  // no name: takes the one before
            ":BEGINITEM\nTextureName=Cut short\nBubbleCount=3");
  group_.writeable = 1;
  ASSERT_EQ(TextureFileRead(path_.c_str(), &group_), 1);
  EXPECT_EQ(group_.writeable, 0);
  ASSERT_EQ(group_.count, 3);
  const TextureRecord& first = group_.items[1].texture;  // "Cut short" sorts first
  EXPECT_STREQ(group_.items[1].name, "First");
  EXPECT_FLOAT_EQ(first.Power[0], 0.5f);
  EXPECT_EQ(first.SeedValue[0], 77);
  EXPECT_EQ(first.SeedValue[1], 0);
  EXPECT_FLOAT_EQ(first.Power[2], 0.5f);
  EXPECT_EQ(first.MatrixSize, 0);
  EXPECT_EQ(first.SeedValue[2], 10002);  // absent keys keep their defaults
  EXPECT_STREQ(group_.items[2].name, "First");
  EXPECT_EQ(group_.items[2].texture.CreaterCount, 12);
  EXPECT_STREQ(group_.items[0].name, "Cut short");
  EXPECT_EQ(group_.items[0].texture.BubbleCount, 3);
}

TEST_F(TextureFile, ForeignEmptyAndMissingFiles) {
  TextureGroupAdd(&group_, "kept", Record(0, 1));
  group_.writeable = 1;
  WriteText("brindle foundries limnery texture file\n:BEGINITEM\n:ENDITEM\n");
  EXPECT_EQ(TextureFileRead(path_.c_str(), &group_), 0);
  EXPECT_EQ(group_.count, 1);  // a foreign file leaves the list alone
  EXPECT_EQ(TextureFileRead(folder_.File("missing.fft").c_str(), &group_), 0);

  WriteText(std::string(kTextureFileSignature) + "\n");
  EXPECT_EQ(TextureFileRead(path_.c_str(), &group_), 1);
  EXPECT_EQ(group_.count, 0);
  EXPECT_EQ(group_.writeable, 1);  // no Writeable line: the flag carries over

  ASSERT_EQ(TextureFileWrite(path_.c_str(), group_), 1);  // an empty list: an empty file
  EXPECT_EQ(ReadText(path_), "");
  EXPECT_EQ(TextureFileRead(path_.c_str(), &group_), 0);
}

// The group our hosts install: read-only, at least eight designs, every type.
TEST_F(TextureFile, PrimaryGroupCoversEveryTypeAndIsReadOnly) {
  WriteText(kPrimaryTextureGroupText);
  group_.writeable = 1;
  ASSERT_EQ(TextureFileRead(path_.c_str(), &group_), 1);
  EXPECT_EQ(group_.writeable, 0);
  EXPECT_GE(group_.count, 8);
  std::set<int> types;
  for (int i = 0; i < group_.count; ++i) types.insert(group_.items[i].texture.TextureType);
  EXPECT_EQ(types, (std::set<int>{0, 1, 2, 3, 4, 5}));
}

}  // namespace
