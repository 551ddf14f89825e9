#include <gtest/gtest.h>

#include <vector>

#include "effects/simple.h"

namespace {

struct ScrollCase {
  int direction, width, height, frames;
  std::vector<int> offsets;  // of the frames checked, from the first
  std::vector<int> pausing;  // every frame that pauses
};

// Up and left count down from the size and pause where the offset reaches
// zero; right and down count up and pause on the step that carries them from
// below zero to zero or beyond. The last frame always pauses, one step past
// the far end; fewer frames than the span means larger steps.
TEST(SimpleScroll, OffsetsAndPausesInEveryDirection) {
  const ScrollCase cases[] = {
      {0, 100, 30, 1, {-30}, {0}},                     // one frame: the far end
      {1, 100, 30, 1, {100}, {0}},
      {0, 60, 20, 40, {19, 18}, {19, 39}},             // one-pixel steps; 0 at frame 19
      {2, 20, 60, 10, {16, 12, 8, 4, 0}, {4, 9}},      // steps of 4
      {1, 20, 60, 10, {-16, -12, -8, -4, 0}, {4, 9}},
      {3, 60, 7, 3, {-2, 2, 7}, {1, 2}},               // steps of 14/3, truncated toward zero
  };
  for (const ScrollCase& c : cases) {
    std::vector<ScrollStep> steps(c.frames);
    steps.resize(SimpleScrollPlan(c.direction, c.width, c.height, c.frames, steps.data()));
    std::vector<int> offsets;
    std::vector<int> pausing;
    for (std::size_t i = 0; i < steps.size(); ++i) {
      if (i < c.offsets.size()) offsets.push_back(steps[i].offset);
      if (steps[i].pauses) pausing.push_back(static_cast<int>(i));
    }
    EXPECT_EQ(offsets, c.offsets) << "direction " << c.direction;
    EXPECT_EQ(pausing, c.pausing) << "direction " << c.direction;
  }
}

TEST(SimpleScroll, FramesAboveTheSpanAreCutToOnePixelSteps) {
  std::vector<ScrollStep> steps(1000);
  ASSERT_EQ(SimpleScrollPlan(2, 50, 20, 1000, steps.data()), 100);  // 2 * width
  for (int i = 0; i < 100; ++i) EXPECT_EQ(steps[i].offset, 50 - (i + 1));
  ASSERT_EQ(SimpleScrollPlan(3, 50, 20, 1000, steps.data()), 40);  // 2 * height
  for (int i = 0; i < 40; ++i) EXPECT_EQ(steps[i].offset, -20 + (i + 1));
}

}  // namespace
