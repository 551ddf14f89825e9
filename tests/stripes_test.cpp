#include <tuple>

#include "effects/stripe_pattern.h"
#include "effects/stripes.h"
#include "tests/effect_test_support.h"

namespace {

constexpr std::uint32_t kOne = 0x0000FF;
constexpr std::uint32_t kTwo = 0x00FF00;

// One row of a pattern as 1 (first fill) and 2 (second fill).
std::string RowOf(DibHandle pattern, int y) {
  DibLock lock(pattern);
  std::string row;
  for (int x = 0; x < lock.head->biWidth; ++x) row += DibGetPixel(lock.head, x, y) == kOne ? '1' : '2';
  return row;
}

DibHandle Pattern(int width, int height, int shift, int band, int type, int direction) {
  DibOwner one(SolidBitmap(width, height, kOne));
  DibOwner two(SolidBitmap(width, height, kTwo));
  return StripePattern(one.get(), two.get(), shift, band, type, direction);
}

TEST(StripePattern, VerticalBandsFlipBeforeTheirEdgeAndUnknownTypesAreVertical) {
  DibOwner vertical(Pattern(12, 2, 0, 3, kStripesVertical, 1));
  EXPECT_EQ(RowOf(vertical.get(), 1), "221112221112");  // first band one narrower
  DibOwner unknown(Pattern(12, 2, 0, 3, 7, 1));
  EXPECT_EQ(RowOf(unknown.get(), 0), RowOf(vertical.get(), 0));
  DibOwner thin(Pattern(6, 1, 0, 1, kStripesVertical, 1));
  EXPECT_EQ(RowOf(thin.get(), 0), "121212");
}

TEST(StripePattern, ShiftWrapsRightForDirectionOneAndLeftOtherwise) {
  DibOwner right(Pattern(12, 1, 2, 3, kStripesVertical, 1));
  DibOwner left(Pattern(12, 1, 2, 3, kStripesVertical, 0));
  EXPECT_EQ(RowOf(right.get(), 0), "122211122211");
  EXPECT_EQ(RowOf(left.get(), 0), "111222111222");
}

TEST(StripePattern, SlantsRunTheirCountersFromLeftOfThePicture) {
  // Diagonal back: each row down is the row above moved one to the right.
  DibOwner back(Pattern(16, 8, 0, 2, kStripesDiagonalBack, 1));
  for (int y = 1; y < 8; ++y) EXPECT_EQ(RowOf(back.get(), y).substr(1), RowOf(back.get(), y - 1).substr(0, 15)) << y;
  // A chevron's lower half mirrors its upper half's slant; the split one
  // also swaps the colours there.
  DibOwner chevron(Pattern(16, 8, 0, 2, kStripesChevron, 1));
  DibOwner split(Pattern(16, 8, 0, 2, kStripesSplitChevron, 1));
  EXPECT_EQ(RowOf(chevron.get(), 0), RowOf(split.get(), 0));
  std::string lower = RowOf(chevron.get(), 6);
  for (char& c : lower) c = c == '1' ? '2' : '1';
  EXPECT_EQ(RowOf(split.get(), 6), lower);
}

class StripesEffect : public EffectOnDefaults {};

TEST_F(StripesEffect, FrameGrowsToWholePeriodsAndBuildMakesFramesFrames) {
  for (int band : {1, 7, 10}) EXPECT_EQ(StripesFrameWidth(400, band) % (2 * band), 0);
  EXPECT_EQ(StripesFrameWidth(401, 10), 420);
  EXPECT_EQ(StripesFrameWidth(420, 10), 420);

  SnapshotSetNumber(&snapshot_, 440, 7);
  ASSERT_EQ(StripesBuild(&context_), 1);
  std::vector<FrameRecord> frames = Frames();
  ASSERT_EQ(frames.size(), 7u);
  DibLock first(frames[0].image);
  EXPECT_EQ(first.head->biWidth % 14, 0);
  EXPECT_EQ(frames[6].delay, 8u);
}

}  // namespace
