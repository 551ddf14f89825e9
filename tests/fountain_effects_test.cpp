#include <cstring>
#include <vector>

#include "effects/radial_fountain.h"
#include "effects/zaxis_fountain.h"
#include "tests/effect_test_support.h"

namespace {

// The two fountain effects against the headless dialog after start-up with
// the compiled-in settings: the gradient bars hold the rainbow.
class FountainEffect : public EffectOnDefaults {
 protected:
  int Built(int (*build)(EffectContext*)) {
    FrameListFree(&frames_);
    context_.flags = 0;
    EXPECT_EQ(build(&context_), 1);
    return static_cast<int>(frames_.count);
  }

  DibHandle FirstFrame() { return Frames()[0].image; }
};

// Whether red and green are equal everywhere: so they stay where a colour
// with equal red and green is blended over the grey background.
bool RedIsGreen(DibHandle dib) {
  DibLock lock(dib);
  for (int y = 0; y < lock.head->biHeight; ++y) {
    for (int x = 0; x < lock.head->biWidth; ++x) {
      std::int32_t pixel = DibGetPixel(lock.head, x, y);
      if ((pixel & 0xFF) != (pixel >> 8 & 0xFF)) return false;
    }
  }
  return true;
}

TEST_F(FountainEffect, ZAxisFrameCountsAndTheFlatStill) {
  EXPECT_EQ(Built(ZAxisFountainBuild), 48);
  SnapshotSetText(&snapshot_, 23, "Hi");
  SnapshotSetNumber(&snapshot_, 28, 8);
  Built(ZAxisFountainBuild);
  int width = 0, height = 0;
  DibSizeOf(FirstFrame(), &width, &height);
  SnapshotSetNumber(&snapshot_, 139, 32760);
  EXPECT_EQ(Built(ZAxisFountainBuild), width);
  SnapshotSetNumber(&snapshot_, 139, 1);
  EXPECT_EQ(Built(ZAxisFountainBuild), 1);

  // Without shadow and outline the still is the rainbow's first colour, a
  // blue-black, over the grey background; the preview shows the gradient.
  SnapshotSetCheck(&snapshot_, 124, 0);
  SnapshotSetCheck(&snapshot_, 143, 0);
  SnapshotSetCheck(&snapshot_, 32, 0);
  EXPECT_EQ(Built(ZAxisFountainBuild), 1);
  EXPECT_TRUE(RedIsGreen(FirstFrame()));
  context_.flags = 0;
  ZAxisFountainPreview(&context_);
  DibOwner preview(context_.previewBitmap);
  ASSERT_NE(preview, nullptr);
  EXPECT_FALSE(RedIsGreen(preview.get()));
}

TEST_F(FountainEffect, RadialFrameCountsAreHeldFrom16To256) {
  SnapshotSetText(&snapshot_, 23, "I");
  SnapshotSetNumber(&snapshot_, 28, 8);
  EXPECT_EQ(Built(RadialFountainBuild), 48);
  SnapshotSetNumber(&snapshot_, 295, 1);
  EXPECT_EQ(Built(RadialFountainBuild), 16);
  SnapshotSetNumber(&snapshot_, 295, 1000);
  EXPECT_EQ(Built(RadialFountainBuild), 256);
  SnapshotSetCheck(&snapshot_, 32, 0);
  EXPECT_EQ(Built(RadialFountainBuild), 1);
}

TEST(RadialRings, ReachFollowsTheWidthAndThePhaseWrapsRound) {
  RadialExtra extra{};
  for (int i = 0; i < kRadialRampColours; ++i) extra.ramp[3 * i] = static_cast<std::uint8_t>(i | 1);
  auto topMiddle = [](DibHandle dib) {
    DibOwner owner(dib);
    DibLock lock(dib);
    return DibGetPixel(lock.head, lock.head->biWidth / 2, 0);
  };
  EXPECT_NE(topMiddle(RadialRings(&extra, 200, 20)), 0);
  EXPECT_EQ(topMiddle(RadialRings(&extra, 20, 200)), 0);  // tall and narrow: the rings fall short

  DibOwner start(RadialRings(&extra, 60, 30));
  extra.phase = 256;
  DibOwner round(RadialRings(&extra, 60, 30));
  DibLock a(start.get()), b(round.get());
  EXPECT_EQ(std::memcmp(a.head, b.head, MemSize(start.get())), 0);
}

}  // namespace
