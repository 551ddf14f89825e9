#include <gtest/gtest.h>

#include "plugin/controls_snapshot.h"

namespace {

// Reads control 500 with the given text and its up-down's range text.
int ReadWithRange(const char* range, const char* text) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  if (range != nullptr) SnapshotSetText(&snapshot, 10500, range);
  SnapshotSetText(&snapshot, 500, text);
  return ReadControlInt(&snapshot.controls, 500);
}

TEST(ReadControlInt, ClampsToTheRangeAndReadsAsTheEditControlDoes) {
  struct Case {
    const char* range;
    const char* text;
    int expected;
  };
  const Case cases[] = {
      {"10,20,15", "5", 10},    {"10,20,15", "25", 20},     {"10,20,15", " 12", 12},
      {nullptr, "150", 100},    {"garbage", "7", 7},         // no range: 0 to 100
      {"-50,50,0", "-20", -20}, {"0,50,0", "-20", 0},        // signed only below zero
      {"0,1000,5", "abc", 0},   {"0,1000,5", "12abc", 12},  // a number, then anything
      {"0,1000,5", "4294967296", 0}, {"-10,10,0", "-2147483649", 0},  // past 32 bits
  };
  for (const Case& c : cases) EXPECT_EQ(ReadWithRange(c.range, c.text), c.expected) << (c.range != nullptr ? c.range : "no range") << " " << c.text;
}

}  // namespace
