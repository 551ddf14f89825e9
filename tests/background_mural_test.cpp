#include <cstring>
#include <vector>

#include "effects/background_mural.h"
#include "fills/matrix_button.h"
#include "fills/matrix_tile.h"
#include "tests/effect_test_support.h"

namespace {

// A 3 by 4 picture whose pixel (x, y) is 16 * y + x.
DibHandle Numbered() {
  DibHandle dib = DibNew(3, 4, nullptr, 24);
  DibLock lock(dib);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 3; ++x) DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>(16 * y + x));
  return dib;
}

std::int32_t At(DibHandle dib, int x, int y) { return DibGetPixel(DibLock(dib).head, x, y); }

TEST(MuralTurn, EachDirectionWrapsTheWallItsOwnWay) {
  DibOwner wall(Numbered());
  DibOwner up(MuralTurn(wall.get(), 0, 0, 1));     // moved down by one: the last row on top
  EXPECT_EQ(At(up.get(), 0, 0), 48);
  EXPECT_EQ(At(up.get(), 0, 1), 0);
  DibOwner down(MuralTurn(wall.get(), 3, 0, 1));   // moved up by one: the first row at the bottom
  EXPECT_EQ(At(down.get(), 0, 0), 16);
  EXPECT_EQ(At(down.get(), 0, 3), 0);
  DibOwner right(MuralTurn(wall.get(), 1, 1, 0));
  EXPECT_EQ(At(right.get(), 0, 0), 2);
  DibOwner left(MuralTurn(wall.get(), 2, 1, 0));
  EXPECT_EQ(At(left.get(), 0, 0), 1);
  DibOwner still(MuralTurn(wall.get(), 9, 1, 1));
  EXPECT_EQ(At(still.get(), 2, 3), 50);
}

TEST(MuralScrollPlan, WallIsWholeTilesAndTheLoopClosesOnTheStart) {
  EXPECT_EQ(MuralWallSize(100, 48), 144);
  EXPECT_EQ(MuralWallSize(40, 48), 48);
  EXPECT_EQ(MuralWallSize(96, 48), 96);
  std::vector<MuralStep> steps(64);
  ASSERT_EQ(MuralScrollPlan(1, 144, 48, 64, steps.data()), 64);  // a step of 2.25
  EXPECT_EQ(steps[0].offsetX, 2);
  EXPECT_EQ(steps[3].offsetX, 9);
  EXPECT_EQ(steps[63].offsetX, 144);
  ASSERT_EQ(MuralScrollPlan(0, 144, 48, 64, steps.data()), 48);  // cut to the wall's height
  EXPECT_EQ(steps[0].offsetY, 47);
  EXPECT_EQ(steps[47].offsetY, 0);
  ASSERT_EQ(MuralScrollPlan(2, 144, 48, 1, steps.data()), 1);
  EXPECT_EQ(steps[0].offsetX, 144);  // the picture at rest
}

class MuralEffect : public EffectOnDefaults {};

// The tile button holding a copy of the built-in tile, as when its group
// could be read.
void GiveTile(ControlsSnapshot* snapshot) {
  MemHandle block = MemAlloc(kMemMoveableZeroed, sizeof(MatrixRecord));
  MatrixTileDefault(static_cast<MatrixRecord*>(MemLock(block)));
  MemUnlock(block);
  SnapshotSetOwningData(snapshot, 357, block, MatrixButtonRelease);
}

TEST_F(MuralEffect, BuildScrollsTheWallWithTheTextStill) {
  SnapshotSetNumber(&snapshot_, 371, 7);  // steps that are not whole tiles
  SnapshotSetOwningData(&snapshot_, 357, nullptr, MatrixButtonRelease);
  EXPECT_EQ(MuralBuild(&context_), 0);  // an animation needs a tile of its own
  FrameListFree(&frames_);
  GiveTile(&snapshot_);
  ASSERT_EQ(MuralBuild(&context_), 1);
  std::vector<FrameRecord> frames = Frames();
  ASSERT_EQ(frames.size(), 7u);
  ASSERT_EQ(MemSize(frames[0].image), MemSize(frames[1].image));
  EXPECT_NE(std::memcmp(DibLock(frames[0].image).head, DibLock(frames[1].image).head, MemSize(frames[0].image)), 0);

  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(MuralBuild(&context_), 0);
}

}  // namespace
