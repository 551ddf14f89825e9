#include <gtest/gtest.h>

#include "plugin/controls_snapshot.h"

namespace {

int ReadWithRange(const char* range, const char* text) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  if (range != nullptr) SnapshotSetText(&snapshot, 10500, range);
  SnapshotSetText(&snapshot, 500, text);
  return ReadControlInt(&snapshot.controls, 500);
}

TEST(ReadControlInt, ClampsToTheUpDownsRangeOrToZeroToHundred) {
  EXPECT_EQ(ReadWithRange("10,20,15", "5"), 10);
  EXPECT_EQ(ReadWithRange("10,20,15", "25"), 20);
  EXPECT_EQ(ReadWithRange("10,20,15", " 12"), 12);
  EXPECT_EQ(ReadWithRange(nullptr, "150"), 100);  // no range text: 0, 100
  EXPECT_EQ(ReadWithRange("garbage", "7"), 7);
}

TEST(ReadControlInt, ReadsSignedOnlyWhenTheMinimumIsNegative) {
  EXPECT_EQ(ReadWithRange("-50,50,0", "-20"), -20);
  EXPECT_EQ(ReadWithRange("0,50,0", "-20"), 0);
  EXPECT_EQ(ReadWithRange("1,50,1", "-20"), 1);
}

TEST(ReadControlInt, TextThatIsNoNumberOrTooLargeReadsAsZero) {
  EXPECT_EQ(ReadWithRange("0,1000,5", "abc"), 0);
  EXPECT_EQ(ReadWithRange("0,1000,5", "12abc"), 12);
  EXPECT_EQ(ReadWithRange("0,1000,5", "99999999999999999999999"), 0);
  EXPECT_EQ(ReadWithRange("0,1000,5", "4294967296"), 0);  // past 32 bits
  EXPECT_EQ(ReadWithRange("-10,10,0", "-2147483649"), 0);
}

}  // namespace
