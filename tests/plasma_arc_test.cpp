#include <cmath>
#include <vector>

#include "effects/arc_tracer.h"
#include "effects/plasma_arc.h"
#include "raster/crt_random.h"
#include "tests/effect_test_support.h"

namespace {

int ChainLength(const ArcNode* root) {
  int length = 0;
  for (const ArcNode* node = root; node != nullptr; node = node->first) ++length;
  return length;
}

// Two draws are thrown away, the right tree's root takes two and stays alone
// (its x is not left of the bounds' right edge), and every node of the left
// chain takes three: length, sign, turn.
TEST(ArcTracer, RightTreeStaysALoneRootAndTheChainTakesThreeDrawsANode) {
  const DibRect bounds = {4, 0, 304, 60};
  CrtSrand(11259);
  ArcTracer tracer;
  ASSERT_EQ(StrikeArc(&tracer, 4, 30, 304, 30, bounds, 20, 33, 22.5), 1);
  ASSERT_NE(tracer.rightRoot, nullptr);
  EXPECT_EQ(tracer.rightRoot->first, nullptr);
  EXPECT_EQ(tracer.rightRoot->second, nullptr);
  EXPECT_EQ(tracer.closest, tracer.rightRoot);
  int chain = ChainLength(tracer.leftRoot);
  ASSERT_GT(chain, 2);
  for (const ArcNode* node = tracer.leftRoot; node->first != nullptr; node = node->first)
    EXPECT_LE(node->x, 154);  // every parent stands in the left half
  int next = CrtRand();

  CrtSrand(11259);
  for (int i = 0; i < 4; ++i) CrtRand();
  int step = CrtRand() % 13 + 20;
  bool positive = (CrtRand() & 1) != 0;
  int turn = static_cast<int>(CrtRand() / 32767.0 * 22.5);
  double radians = (positive ? turn : -turn) * 0.017453292519943295;
  EXPECT_EQ(tracer.leftRoot->first->x, 4 + static_cast<int>(step * std::cos(radians)));
  EXPECT_EQ(tracer.leftRoot->first->y, 30 + static_cast<int>(step * std::sin(radians)));
  for (int i = 0; i < 3 * (chain - 1); ++i) CrtRand();
  EXPECT_EQ(CrtRand(), next);

  // The kept polyline leaves out the tip; the drawn one has it.
  ArcPoint* kept = nullptr;
  ArcPoint* drawn = nullptr;
  EXPECT_EQ(ArcPoints(&kept, &tracer), chain);
  EXPECT_EQ(ArcDrawnPoints(&drawn, &tracer), chain + 1);
  EXPECT_EQ(std::tuple(kept[chain - 1].x, kept[chain - 1].y), std::tuple(304, 30));
  EXPECT_EQ(std::tuple(drawn[chain - 1].x, drawn[chain - 1].y), std::tuple(tracer.tip->x, tracer.tip->y));
  delete[] kept;
  delete[] drawn;
  FreeArcTracer(&tracer);
}

// With no turn the chain is a straight line along the middle.
TEST(ArcTracer, NoTurnGivesAStraightChain) {
  ArcTracer tracer;
  ASSERT_EQ(StrikeArc(&tracer, 0, 20, 200, 20, DibRect{0, 0, 200, 40}, 13, 21, 0.0), 1);
  for (const ArcNode* node = tracer.leftRoot; node != nullptr; node = node->first) EXPECT_EQ(node->y, 20);
  FreeArcTracer(&tracer);
}

class PlasmaArcEffect : public EffectOnDefaults {};

// Every frame is one more arc and its delay is jittered by the disturbance;
// the same seed gives the same delays, and no disturbance no jitter.
TEST_F(PlasmaArcEffect, DelaysAreJitteredTheSameWayForTheSameSeed) {
  SnapshotSetNumber(&snapshot_, 28, 10);
  SnapshotSetNumber(&snapshot_, 210, 12);
  ASSERT_EQ(BuildCount(PlasmaArcBuild), 12);
  std::vector<std::uint32_t> first = Delays();
  ASSERT_EQ(BuildCount(PlasmaArcBuild), 12);
  EXPECT_EQ(Delays(), first);
  bool varied = false;
  for (std::uint32_t delay : first) {
    EXPECT_TRUE(delay >= 8 && delay < 8 + 6) << delay;
    varied = varied || delay != first[0];
  }
  EXPECT_TRUE(varied);

  SnapshotSetNumber(&snapshot_, 217, 0);
  ASSERT_EQ(BuildCount(PlasmaArcBuild), 12);
  EXPECT_EQ(Delays(), std::vector<std::uint32_t>(12, 8));
}

// The frames setting is the count, with no limit; rolling off gives one
// frame; an empty text fails both callbacks.
TEST_F(PlasmaArcEffect, FrameCountsFollowTheSetting) {
  SnapshotSetNumber(&snapshot_, 28, 10);
  EXPECT_EQ(BuildCount(PlasmaArcBuild), 48);
  SnapshotSetNumber(&snapshot_, 210, 1);
  EXPECT_EQ(BuildCount(PlasmaArcBuild), 1);
  SnapshotSetNumber(&snapshot_, 210, 48);
  SnapshotSetCheck(&snapshot_, 32, 0);
  EXPECT_EQ(BuildCount(PlasmaArcBuild), 1);

  ExpectPreviewUntilTheTextIsEmpty(PlasmaArcPreview, PlasmaArcBuild, 0);
}

}  // namespace
