#include <cstring>
#include <vector>

#include "effects/fire.h"
#include "effects/fire_still.h"
#include "effects/inferno.h"
#include "raster/resample.h"
#include "tests/effect_test_support.h"

namespace {

// The stored still: even values or 255 only, in the default ramp, hot at the
// bottom and dying out towards the top.
TEST(FireStill, IsAnEvenValuedFireHotAtTheBottom) {
  DibOwner still(FireStillLoad());
  DibLock lock(still.get());
  ASSERT_NE(lock.head, nullptr);
  ASSERT_EQ(std::tuple(lock.head->biWidth, lock.head->biHeight, lock.head->biBitCount), std::tuple(1280, 120, 8));
  std::uint8_t palette[kPaletteBytes];
  ASSERT_EQ(DibPaletteOf(lock.head, palette), 256);
  EXPECT_EQ(std::vector<int>(palette + 127 * 3, palette + 129 * 3), (std::vector<int>{254, 0, 0, 255, 0, 0}));
  EXPECT_EQ(std::vector<int>(palette + 255 * 3, palette + 256 * 3), (std::vector<int>{255, 254, 0}));
  std::vector<int> rowMeans;
  for (int y = 0; y < 120; ++y) {
    long sum = 0;
    for (int x = 0; x < 1280; ++x) {
      int value = DibGetPixel(lock.head, x, y);
      ASSERT_TRUE(value % 2 == 0 || value == 255) << value;
      sum += value;
    }
    rowMeans.push_back(static_cast<int>(sum / 1280));
  }
  EXPECT_GT(rowMeans[110], 150);
  EXPECT_LT(rowMeans[5], 40);
  for (int y = 10; y < 110; y += 10) EXPECT_LT(rowMeans[y], rowMeans[y + 10]) << y;

  std::vector<std::uint8_t> broken(60, 0);
  std::memcpy(broken.data(), "CPX_HEAX", 8);
  EXPECT_EQ(FireStillUnpack(broken.data(), broken.size()), nullptr);
}

// After the warm-up the fire is on its loop: the step after the last
// recorded one paints the first recorded picture again.
TEST(Fire, LastRecordedStepLeadsBackToTheFirst) {
  InfernoState state{};
  ASSERT_EQ(InitFire(&state, 24, 16, kFireBlack, kFireRed, kFireYellow), 1);
  ASSERT_EQ(state.period, 16);
  for (int i = 0; i < state.frameCount; ++i) ASSERT_NE(state.frames[i], nullptr);
  StepFire(&state);
  Pixels first = TakePixels(DibClone(state.frames[0]));
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 24; ++x)
      EXPECT_EQ(static_cast<std::uint32_t>(first.At(x, y)), state.colours[DibGetPixel(state.canvas, x, y) & 0xFF]);
  FreeFire(&state);
}

// The bottom row is fed in pairs up to w - 2; the row's end cells take the
// neighbouring rows' cells as their left and right neighbours.
TEST(Fire, FeedsPairsAndWrapsNeighboursByRawIndex) {
  for (int width : {9, 10}) {
    InfernoState fed{};
    ASSERT_EQ(InitFire(&fed, width, 6, kFireBlack, kFireRed, kFireYellow), 1);
    const std::uint8_t* bottom = fed.heat + 5 * width;
    for (int x = 0; x < 8; x += 2) EXPECT_TRUE(bottom[x] > 0 && bottom[x] == bottom[x + 1]) << width << " " << x;
    for (int x = 8; x < width; ++x) EXPECT_EQ(bottom[x], 0) << width << " " << x;
    FreeFire(&fed);
  }

  InfernoState state{};
  ASSERT_EQ(InitFire(&state, 4, 5, kFireBlack, kFireRed, kFireYellow), 1);
  std::memset(state.heat, 0, 20);
  state.heat[11] = 200;  // the last cell of row 2
  state.recording = 0;
  StepFire(&state);
  int v = state.heat[16];
  EXPECT_EQ(state.heat[8], (3 * v + 200) / 4 - 1);  // row 2's first cell sees it as its left neighbour
  EXPECT_EQ(state.heat[7], (v + 200) / 4 - 1);      // row 1's last cell sees row 3's first as its right
  FreeFire(&state);
}

// Low canvases run the fire larger and scale it down; 118 is the last height
// that is scaled, and at 50 the scaled fire is one row short.
TEST(Fire, GeometryScalesOnlyLowCanvases) {
  FireGeometry at118 = FireGeometryFor(300, 118);
  EXPECT_EQ(std::tuple(at118.scaled, at118.width, at118.height, at118.percent), std::tuple(1, 303, 119, 98));
  EXPECT_EQ(FireGeometryFor(300, 119).scaled, 0);
  FireGeometry at50 = FireGeometryFor(100, 50);
  EXPECT_EQ(std::tuple(at50.width, at50.height, at50.percent), std::tuple(240, 120, 41));
  DibOwner fire(DibNew(at50.width, at50.height, nullptr, 24));
  DibOwner scaled(DibResize(fire.get(), at50.percent, at50.percent));
  int width = 0, height = 0;
  DibSizeOf(scaled.get(), &width, &height);
  EXPECT_EQ(height, 49);
}

// Output frames start one step in; a full loop shows its last step twice;
// a single frame shows the last step.
TEST(Fire, FramePlanSpreadsTheLoop) {
  std::vector<int> full(8), half(4), one(1);
  FireFramePlan(8, 8, full.data());
  EXPECT_EQ(full, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 7}));
  FireFramePlan(4, 8, half.data());
  EXPECT_EQ(half, (std::vector<int>{2, 4, 6, 7}));
  FireFramePlan(1, 8, one.data());
  EXPECT_EQ(one[0], 7);
}

// Sizes that overflow are refused before anything is allocated; pictures
// beyond the recording budget are left out, as if memory had run out.
TEST(Fire, MemoryLimitsLeaveFramesOutOrRefuse) {
  InfernoState state{};
  EXPECT_EQ(InitFire(&state, 70000, 70000, kFireBlack, kFireRed, kFireYellow), 0);
  EXPECT_EQ(state.heat, nullptr);
  EXPECT_EQ(InitFire(&state, 0x7FFFFFFF / 32 + 1, 2, kFireBlack, kFireRed, kFireYellow), 0);
  EXPECT_EQ(state.heat, nullptr);
  ASSERT_EQ(InitFire(&state, 10, 8, kFireBlack, kFireRed, kFireYellow, 3 * 32 * 8), 1);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(state.frames[i] != nullptr, i < 3) << i;
  FreeFire(&state);
}

class InfernoEffect : public EffectOnDefaults {};

// Frames: the setting cut to the fire's period, one frame when still; an
// empty text fails both callbacks.
TEST_F(InfernoEffect, FrameCountsFollowTheSettingAndThePeriod) {
  SnapshotSetNumber(&snapshot_, 28, 10);
  InfernoState state{};
  context_.extra = &state;
  DibOwner sizing(ComposeInfernoFrame(&context_));
  int width = 0, height = 0;
  ASSERT_EQ(DibSizeOf(sizing.get(), &width, &height), 1);
  int period = FireGeometryFor(width, height).height;

  EXPECT_EQ(BuildCount(InfernoBuild), std::min(48, period));
  SnapshotSetNumber(&snapshot_, 313, 1);
  EXPECT_EQ(BuildCount(InfernoBuild), 1);
  SnapshotSetNumber(&snapshot_, 313, 32760);
  EXPECT_EQ(BuildCount(InfernoBuild), period);
  SnapshotSetCheck(&snapshot_, 32, 0);
  EXPECT_EQ(BuildCount(InfernoBuild), 1);

  ExpectPreviewUntilTheTextIsEmpty(InfernoPreview, InfernoBuild, 0);
}

}  // namespace
