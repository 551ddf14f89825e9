#include <gtest/gtest.h>

#include <vector>

#include "effects/simple.h"

namespace {

std::vector<ScrollStep> Plan(int direction, int width, int height, int frames) {
  std::vector<ScrollStep> steps(frames);
  steps.resize(SimpleScrollPlan(direction, width, height, frames, steps.data()));
  return steps;
}

std::vector<int> PausingFrames(const std::vector<ScrollStep>& steps) {
  std::vector<int> pausing;
  for (std::size_t i = 0; i < steps.size(); ++i)
    if (steps[i].pauses) pausing.push_back(static_cast<int>(i));
  return pausing;
}

TEST(SimpleScroll, OneFramePausesAtTheFarEnd) {
  auto up = Plan(0, 100, 30, 1);
  ASSERT_EQ(up.size(), 1u);
  EXPECT_EQ(up[0].offset, -30);
  EXPECT_TRUE(up[0].pauses);
  auto right = Plan(1, 100, 30, 1);
  EXPECT_EQ(right[0].offset, 100);
  EXPECT_TRUE(right[0].pauses);
}

TEST(SimpleScroll, FramesAboveTheSpanGiveOnePixelSteps) {
  auto left = Plan(2, 50, 20, 1000);
  ASSERT_EQ(left.size(), 100u);  // 2 * width
  for (int i = 0; i < 100; ++i) EXPECT_EQ(left[i].offset, 50 - (i + 1));
  auto down = Plan(3, 50, 20, 1000);
  ASSERT_EQ(down.size(), 40u);  // 2 * height
  for (int i = 0; i < 40; ++i) EXPECT_EQ(down[i].offset, -20 + (i + 1));
}

TEST(SimpleScroll, UpAndLeftPauseWhereTheOffsetReachesZero) {
  auto up = Plan(0, 60, 20, 40);
  EXPECT_EQ(up[19].offset, 0);
  EXPECT_EQ(PausingFrames(up), (std::vector<int>{19, 39}));
  auto left = Plan(2, 20, 60, 10);  // step 4 over a span of 40
  EXPECT_EQ(left[4].offset, 0);
  EXPECT_EQ(PausingFrames(left), (std::vector<int>{4, 9}));
}

TEST(SimpleScroll, RightAndDownPauseOnTheFirstFrameAtOrPastZero) {
  // The test comes before the step: the pausing frame is the one whose step
  // carries the offset from below zero to zero or beyond.
  auto right = Plan(1, 20, 60, 10);
  EXPECT_EQ(PausingFrames(right), (std::vector<int>{4, 9}));
  EXPECT_EQ(right[4].offset, 0);
  auto down = Plan(3, 60, 7, 3);  // span 14, step 14/3
  EXPECT_EQ(down[0].offset, -2);  // -7 + 4.67 truncates toward zero
  EXPECT_EQ(PausingFrames(down), (std::vector<int>{1, 2}));
  EXPECT_EQ(down[1].offset, 2);
  EXPECT_EQ(down[2].offset, 7);
}

}  // namespace
