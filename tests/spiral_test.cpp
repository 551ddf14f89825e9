#include <cmath>

#include "effects/spiral.h"
#include "effects/spiral_turn.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kSpiralRow = 18;

// The turn as written down, pixel by pixel through the pixel functions: the
// reference the fast turn must match byte for byte.
int Channel(std::int32_t pixel, int channel) { return pixel >> (8 * channel) & 0xFF; }

DibHandle PlainRotate(DibHandle stamp, int angle, int smooth) {
  DibLock in(stamp);
  const int w = in.head->biWidth;
  const int h = in.head->biHeight;
  const int channels = in.head->biBitCount > 8 ? 3 : 1;
  DibHandle out = DibNewLike(in.head, w, h);
  DibLock target(out);
  const double radians = angle * 0.017453277777777776;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const int dx = x - w / 2;
      const int dy = y - h / 2;
      const double sx = dx * std::cos(radians) + -dy * std::sin(radians) + w / 2;
      const double sy = dx * std::sin(radians) + dy * std::cos(radians) + h / 2;
      const int ix = static_cast<int>(sx);
      const int iy = static_cast<int>(sy);
      if (ix < 0 || iy < 0 || ix >= w || iy >= h) continue;
      const bool edge = ix + 1 >= w || iy + 1 >= h;
      std::uint32_t value = 0;
      for (int c = 0; c < channels; ++c) {
        const int p00 = Channel(DibGetPixel(in.head, ix, iy), c);
        int result = p00;
        if (smooth != 0) {
          const int p10 = edge ? p00 : Channel(DibGetPixel(in.head, ix + 1, iy), c);
          const int p01 = edge ? p00 : Channel(DibGetPixel(in.head, ix, iy + 1), c);
          const int p11 = edge ? p00 : Channel(DibGetPixel(in.head, ix + 1, iy + 1), c);
          const double top = (p10 - p00) * (sx - ix) + p00;
          const double bottom = (p11 - p01) * (sx - ix) + p01;
          result = static_cast<int>((bottom - top) * (sy - iy) + (top + 0.5));
        }
        value |= static_cast<std::uint32_t>(result & 0xFF) << (8 * c);
      }
      DibPutPixel(target.head, x, y, value);
    }
  return out;
}

// A patterned bitmap with runs of zero, odd in one side and even in the
// other; or, as a stamp is, blank but for a band of ink left of the centre.
DibHandle Pattern(int bitCount, bool band = false) {
  const int width = band ? 61 : 37;
  const int height = band ? 44 : 24;
  DibHandle dib = DibNew(width, height, nullptr, bitCount);
  DibLock lock(dib);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const bool inked = band ? y >= 19 && y < 26 && x >= 6 && x < 31 : (x + y) % 5 != 0;
      if (inked) DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>((x * 53 + y * 97) * 0x010307));
    }
  return dib;
}

TEST(SpiralTurn, FastTurnEqualsThePlainOneAtEveryAngleDepthAndMode) {
  for (bool band : {false, true})
    for (int bitCount : {8, 24}) {
      DibOwner stamp(Pattern(bitCount, band));
      for (int angle = 1; angle < 720; angle += band ? 7 : 89)
        for (int smooth : {0, 1}) {
          Pixels fast = TakePixels(SpiralRotate(stamp.get(), angle, smooth));
          ASSERT_EQ(fast.values, TakePixels(PlainRotate(stamp.get(), angle, smooth)).values)
              << bitCount << " bits at " << angle << " smooth " << smooth << " band " << band;
        }
    }
}

// The quarter turns are exact and turn the same way as the free turn, which
// at 90 degrees is close to them but not equal; a full turn is not a copy.
TEST(SpiralTurn, QuarterTurnsAreExactAndAgreeInSenseWithTheFreeTurn) {
  DibOwner stamp(Pattern(8));
  Pixels exact = TakePixels(SpiralTurn(stamp.get(), 90, 1));
  EXPECT_EQ(exact.values, TakePixels(DibTurnLeft(stamp.get())).values);
  DibOwner square(DibCrop(stamp.get(), DibRect{0, 0, 24, 24}));
  Pixels free = TakePixels(SpiralRotate(square.get(), 90, 0));
  auto agreement = [&free](const Pixels& turned) {
    int same = 0;
    for (std::size_t i = 0; i < turned.values.size(); ++i) same += turned.values[i] == free.values[i];
    return same;
  };
  const int withLeft = agreement(TakePixels(DibTurnLeft(square.get())));
  EXPECT_GT(withLeft, 2 * agreement(TakePixels(DibTurnRight(square.get()))));
  EXPECT_LT(withLeft, static_cast<int>(free.values.size()));
  EXPECT_NE(TakePixels(SpiralTurn(stamp.get(), 360, 0)).values, TakePixels(DibClone(stamp.get())).values);
  EXPECT_EQ(TakePixels(SpiralTurn(stamp.get(), 0, 0)).values, TakePixels(DibClone(stamp.get())).values);
}

TEST(SpiralTurn, BoundsHoldTheInkMovedByTheOffsetAndEmptyAddsNothing) {
  DibOwner dib(DibNew(10, 8, nullptr, 8));
  DibLock lock(dib.get());
  EXPECT_EQ(SpiralBounds(lock.head, 3, 3).right, 0);
  DibPutPixel(lock.head, 2, 5, 1);
  DibPutPixel(lock.head, 6, 1, 9);
  const DibRect ink = SpiralBounds(lock.head, -1, 4);
  EXPECT_EQ(std::tuple(ink.left, ink.top, ink.right, ink.bottom), std::tuple(1, 5, 6, 10));
  const DibRect both = SpiralBoundsUnion(SpiralBoundsUnion(DibRect{}, ink), DibRect{0, 0, 2, 2});
  EXPECT_EQ(std::tuple(both.left, both.top, both.right, both.bottom), std::tuple(0, 0, 6, 10));
}

TEST(SpiralAngles, StartRoundsDownToAWholeStepAndTheScaleSpreadsOverTheSteps) {
  SpiralExtra extra{};
  SpiralAnglesFor(100, 20, 25, 16, &extra);
  EXPECT_EQ(std::tuple(extra.startAngle, extra.stepCount, extra.scaleStep), std::tuple(100, 5, 15));
  SpiralAnglesFor(90, 20, 25, 16, &extra);
  EXPECT_EQ(std::tuple(extra.startAngle, extra.stepCount, extra.scaleStep), std::tuple(80, 4, 18));
  SpiralAnglesFor(100, 20, 100, 16, &extra);
  EXPECT_EQ(extra.scaleStep, 0);
  // A step beyond the start: one stamp, the final one, full size and strength.
  SpiralAnglesFor(16, 100, 25, 16, &extra);
  EXPECT_EQ(std::tuple(extra.startAngle, extra.stepCount, extra.scaleStep, extra.minScale, extra.minOpacity),
            std::tuple(0, 0, 0, 100, 255));
}

class SpiralEffect : public EffectOnDefaults {
 protected:
  void Angles(int start, int step) {
    SnapshotSetNumber(&snapshot_, 251, start);
    SnapshotSetNumber(&snapshot_, 247, step);
  }
};

// A background frame, then one stamp more a frame down to angle 0; all are
// cropped alike and the last pauses.
TEST_F(SpiralEffect, FramesFollowTheAnglesAfterABackgroundFrame) {
  SnapshotSetNumber(&snapshot_, 28, 16);
  SnapshotSetNumber(&snapshot_, 33, 100);
  SnapshotSetText(&snapshot_, 23, "Spin");
  ASSERT_EQ(Build(kSpiralRow), 1);
  EXPECT_EQ(Delays(), (std::vector<std::uint32_t>{1, 8, 8, 8, 8, 8, 108}));
  Pixels background = FramePixels(0);
  for (std::int32_t value : background.values) ASSERT_EQ(value, 0xFFFFFF);
  Pixels last = FramePixels(6);
  EXPECT_EQ(std::tuple(last.width, last.height), std::tuple(background.width, background.height));

  const std::pair<int, int> angles[] = {{90, 20}, {180, 90}, {16, 100}};
  const int counts[] = {6, 4, 2};
  for (int i = 0; i < 3; ++i) {
    Angles(angles[i].first, angles[i].second);
    ASSERT_EQ(Build(kSpiralRow), 1);
    EXPECT_EQ(frames_.count, counts[i]) << angles[i].first << "/" << angles[i].second;
  }
  // Without Animated the one frame is the finished spiral as the preview
  // shows it, but with the smooth turn.
  SnapshotSetCheck(&snapshot_, 32, 0);
  ASSERT_EQ(Build(kSpiralRow), 1);
  Pixels still = FramePixels(0);
  Pixels preview = Preview(kSpiralRow);
  EXPECT_EQ(std::tuple(still.width, still.height), std::tuple(preview.width, preview.height));
}

// A text whose spiral could never be held fails cleanly, as an empty one does.
TEST_F(SpiralEffect, FrameTooLargeOrEmptyTextFailsWithoutAFrame) {
  SnapshotSetNumber(&snapshot_, 28, 144);
  SnapshotSetText(&snapshot_, 23, std::string(260, 'W'));
  EXPECT_EQ(EffectTable[kSpiralRow].preview(&context_), 0);
  EXPECT_EQ(Build(kSpiralRow), 0);
  EXPECT_EQ(frames_.count, 0);
  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_EQ(EffectTable[kSpiralRow].preview(&context_), 0);
  EXPECT_EQ(Build(kSpiralRow), 0);
}

}  // namespace
