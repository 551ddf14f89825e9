// UTF-8 command-line text to Windows-1252 and back to code points.
#include <gtest/gtest.h>

#include "host/cp1252.h"
#include "raster/code_page.h"

namespace {

TEST(Cp1252, ConvertsEveryRepresentableCharacter) {
  std::string out;
  std::string error;
  ASSERT_EQ(Utf8ToCodePage("This space for rent...", &out, &error), 1);
  EXPECT_EQ(out, "This space for rent...");
  // Latin-1 letters keep their number; the 0x80 row holds the Windows extras.
  ASSERT_EQ(Utf8ToCodePage("caf\xC3\xA9 \xE2\x82\xAC \xC3\x9F\xC3\xBF \xE2\x80\x9Cq\xE2\x80\x9D \xC5\xB8", &out, &error),
            1);
  EXPECT_EQ(out, "caf\xE9 \x80 \xDF\xFF \x93q\x94 \x9F");
  EXPECT_EQ(CodePageToUtf8(out), "caf\xC3\xA9 \xE2\x82\xAC \xC3\x9F\xC3\xBF \xE2\x80\x9Cq\xE2\x80\x9D \xC5\xB8");
  ASSERT_EQ(Utf8ToCodePage("", &out, &error), 1);
  EXPECT_EQ(out, "");
}

TEST(Cp1252, RefusesWhatItCannotRepresentWithAClearMessage) {
  std::string out;
  std::string error;
  EXPECT_EQ(Utf8ToCodePage("ok \xCE\xA9", &out, &error), 0);  // Greek capital omega
  EXPECT_EQ(error, "the character U+03A9 \"\xCE\xA9\" cannot be written in Windows-1252");
  EXPECT_EQ(Utf8ToCodePage("\xF0\x9F\x98\x80", &out, &error), 0);
  EXPECT_NE(error.find("U+1F600"), std::string::npos);
  // The five bytes without a character are not reachable from UTF-8.
  EXPECT_EQ(Utf8ToCodePage("\xC2\x81", &out, &error), 0);
  EXPECT_NE(error.find("U+0081"), std::string::npos);
}

TEST(Cp1252, RefusesMalformedUtf8) {
  std::string out;
  std::string error;
  for (const char* bad : {"abc\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80", "\xC3("}) {
    EXPECT_EQ(Utf8ToCodePage(bad, &out, &error), 0) << bad;
    EXPECT_NE(error.find("not valid UTF-8"), std::string::npos);
  }
  Utf8ToCodePage("abc\xC3", &out, &error);
  EXPECT_EQ(error, "the text is not valid UTF-8 at byte 3");
}

TEST(Cp1252, CodePointsRoundTripForEveryAssignedByte) {
  int unassigned = 0;
  for (int code = 0; code < 256; ++code) {
    std::uint32_t codePoint = CodePageToUnicode(static_cast<unsigned char>(code));
    int back = CodePageFromUnicode(codePoint);
    if (back < 0) {
      ++unassigned;
      EXPECT_EQ(codePoint, static_cast<std::uint32_t>(code));
    } else {
      EXPECT_EQ(back, code);
    }
  }
  EXPECT_EQ(unassigned, 5);
  EXPECT_EQ(CodePageToUnicode(0x80), 0x20ACu);
  EXPECT_EQ(CodePageToUnicode(0x9F), 0x0178u);
}

}  // namespace
