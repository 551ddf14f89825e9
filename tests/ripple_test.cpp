// The ripple against a plain reference that follows the rule one pixel at a
// time through the pixel functions, byte for byte.
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
        auto busy = [depth](int x, int y) { return Busy(x, y) & (depth == 8 ? 255 : ~0u); };
        DibOwner picture(PictureOf(w, h, depth, busy));
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
  for (int plain : {0, 1}) {
    DibOwner kept(Ripple(picture.get(), {255, 100, 100, plain != 0 ? 2500 : 0, 1200, 180, 15, 1, plain}));
    EXPECT_TRUE(SameBitmap(kept.get(), picture.get())) << plain;
  }
}

}  // namespace
