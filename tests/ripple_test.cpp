// The ripple against a plain reference that follows the rule one pixel at a
// time through the pixel functions, byte for byte; and what the rule means
// on pictures whose answer is known.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "effects/ripple.h"
#include "tests/picture_test_support.h"

namespace {

DibHandle ReferenceRipple(DibHandle bitmap, const RippleExtra& e) {
  DibLock source(bitmap);
  const DibHead* in = source.head;
  int w = in->biWidth, h = in->biHeight;
  DibHandle out = DibNewLike(in, w, h);
  DibLock target(out);
  double cx = w * (e.centreX - 100) / 100 + w * 0.5;
  double cy = h * (e.centreY - 100) / 100 + h * 0.5;
  double reach = std::sqrt((w - cx) * (w - cx) + (h - cy) * (h - cy));
  for (int y = 0; y < h; y++) {
    for (int x = 0; x < w; x++) {
      double dx = x - cx, dy = y - cy;
      double r = std::sqrt(dx * dx + dy * dy);
      double wave = std::sin(r / (e.wavelength / 100.0) * 6.283185307179586 + e.phase / 100.0) * (e.amplitude / 100.0);
      if (e.fade) wave = wave * (1.0 - r / (reach + 0.0001)) * (e.damping / 100.0);
      double sx = std::min(std::max(x + wave, 0.0), w - 1.0);
      double sy = std::min(std::max(y + wave, 0.0), h - 1.0);
      int ix = (int)sx, iy = (int)sy;
      float fx = (float)std::fmod(sx, 1.0), fy = (float)std::fmod(sy, 1.0);
      auto at = [&](int px, int py) { return px < w && py < h ? (std::uint32_t)DibGetPixel(in, px, py) : 0u; };
      std::uint32_t p00 = at(ix, iy), p10 = at(ix + 1, iy), p01 = at(ix, iy + 1), p11 = at(ix + 1, iy + 1);
      std::uint32_t value = 0;
      for (int shift = 0; shift < 32; shift += 8) {
        float b00 = p00 >> shift & 255, b10 = p10 >> shift & 255, b01 = p01 >> shift & 255, b11 = p11 >> shift & 255;
        float v = (b00 * (1 - fx) + b10 * fx) * (1 - fy) + (b01 * (1 - fx) + b11 * fx) * fy;
        value |= ((std::uint32_t)(int)v & 255) << shift;
      }
      DibPutPixel(target.head, x, y, value);
    }
  }
  return out;
}

// Odd and even sizes (the centre on a pixel or between two), both depths,
// the preview's ripple, a storm, no fade and an off-centre strike.
TEST(Ripple, MatchesThePlainReferenceByteForByte) {
  RippleExtra preview = {255, 100, 100, 2500, 1200, 180, 15, 1, 0};
  RippleExtra storm = {255, 100, 100, 6000, 5000, 180, 19, 1, 0};
  RippleExtra unfaded = {255, 100, 100, 300, 700, 42, 15, 0, 0};
  RippleExtra offCentre = {255, 130, 70, 900, 800, 180, 15, 1, 0};
  for (const RippleExtra& extra : {preview, storm, unfaded, offCentre}) {
    for (int depth : {8, 24}) {
      for (auto [w, h] : {std::pair{61, 33}, std::pair{64, 30}}) {
        DibOwner picture(PictureOf(w, h, depth, [depth](int x, int y) { return Busy(x, y) & (depth == 8 ? 255 : ~0u); }));
        DibOwner expected(ReferenceRipple(picture.get(), extra));
        DibOwner rippled(Ripple(picture.get(), extra));
        ASSERT_NE(rippled, nullptr);
        EXPECT_TRUE(SameBitmap(rippled.get(), expected.get()))
            << "depth " << depth << " size " << w << "x" << h << " amplitude " << extra.amplitude;
      }
    }
  }
}

TEST(Ripple, PlainOrFlatLeavesThePictureAlone) {
  DibOwner picture(PictureOf(40, 20, 24, Busy));
  RippleExtra plain = {255, 100, 100, 2500, 1200, 180, 15, 1, 1};
  RippleExtra flat = {255, 100, 100, 0, 1200, 180, 15, 1, 0};
  DibOwner kept(Ripple(picture.get(), plain));
  DibOwner still(Ripple(picture.get(), flat));
  EXPECT_TRUE(SameBitmap(kept.get(), picture.get()));
  EXPECT_TRUE(SameBitmap(still.get(), picture.get()));
}

// The shift is the same on both axes: a picture that changes only across
// the diagonal, linearly, comes back (within a level of rounding) wherever
// the four neighbours lie inside; a shift along one axis alone would not.
TEST(Ripple, DisplacesAlongTheDiagonal) {
  const int size = 64;
  DibOwner picture(PictureOf(size, size, 8, [](int x, int y) { return static_cast<std::uint32_t>(128 + 2 * (x - y)); }));
  RippleExtra extra = {255, 100, 100, 300, 900, 0, 100, 0, 0};
  DibOwner rippled(Ripple(picture.get(), extra));
  DibLock before(picture.get());
  DibLock after(rippled.get());
  int moved = 0;
  for (int y = 4; y < size - 4; ++y) {
    for (int x = 4; x < size - 4; ++x) {
      int was = DibGetPixel(before.head, x, y);
      int is = DibGetPixel(after.head, x, y);
      ASSERT_LE(std::abs(is - was), 1) << x << "," << y;
    }
  }
  // The same ripple on a picture that changes along x alone does move it.
  DibOwner ramp(PictureOf(size, size, 8, [](int x, int) { return static_cast<std::uint32_t>(64 + 2 * x); }));
  DibOwner rampRippled(Ripple(ramp.get(), extra));
  DibLock rampBefore(ramp.get());
  DibLock rampAfter(rampRippled.get());
  for (int y = 4; y < size - 4; ++y)
    for (int x = 4; x < size - 4; ++x)
      moved += std::abs(DibGetPixel(rampAfter.head, x, y) - DibGetPixel(rampBefore.head, x, y)) > 1;
  EXPECT_GT(moved, size);
}

}  // namespace
