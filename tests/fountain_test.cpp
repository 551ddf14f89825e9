#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "fills/fountain.h"

namespace {

constexpr std::uint32_t kRed = 0x0000FF;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kWhite = 0xFFFFFF;

FountainSpec TwoColour(std::uint32_t start, std::uint32_t end) {
  FountainSpec spec{};
  spec.startColour = start;
  spec.endColour = end;
  spec.midpoint = 50;
  spec.twoColour = 1;
  FountainInit(&spec.record, 0);
  return spec;
}

std::vector<std::uint32_t> RampOf(const FountainSpec& spec, int count) {
  FountainRampBlock ramp = FountainRamp(&spec, count);
  EXPECT_NE(ramp, nullptr);
  if (ramp == nullptr) return {};
  EXPECT_EQ(ramp[0], static_cast<std::uint32_t>(count));
  std::vector<std::uint32_t> colours(FountainRampColours(ramp), FountainRampColours(ramp) + count);
  FountainRampFree(ramp);
  return colours;
}

// The pixels of a bitmap by (x, y), freeing it.
struct Pixels {
  explicit Pixels(DibHandle dib) : owner(dib), lock(dib) {}
  std::uint32_t operator()(int x, int y) const { return static_cast<std::uint32_t>(DibGetPixel(lock.head, x, y)); }
  int Width() const { return lock.head->biWidth; }
  int Height() const { return lock.head->biHeight; }
  DibOwner owner;
  DibLock lock;
};

// Every channel within tolerance of the other colour's. The bands of a line
// start two pixels outside the bitmap, so its edges come close to the end
// colours without reaching them.
::testing::AssertionResult Near(std::uint32_t actual, std::uint32_t expected, int tolerance = 12) {
  for (int shift = 0; shift < 24; shift += 8) {
    if (std::abs(static_cast<int>(actual >> shift & 0xFF) - static_cast<int>(expected >> shift & 0xFF)) > tolerance)
      return ::testing::AssertionFailure() << std::hex << actual << " is not near " << expected;
  }
  return ::testing::AssertionSuccess();
}

int Red(std::uint32_t colour) { return static_cast<int>(colour & 0xFF); }
int Blue(std::uint32_t colour) { return static_cast<int>(colour >> 16 & 0xFF); }

std::uint32_t Marker(int position, std::uint32_t colour) { return static_cast<std::uint32_t>(position) << 24 | colour; }

TEST(FountainRamp, TwoColourEndsPadsAndMidpoint) {
  FountainSpec spec = TwoColour(kRed, kBlue);
  EXPECT_EQ(RampOf(spec, 2), (std::vector<std::uint32_t>{kRed, kBlue}));

  // A pad of 45 holds 45 entries flat at each end and leaves 10 for the blend.
  spec.edgePad = 45;
  std::vector<std::uint32_t> padded = RampOf(spec, 100);
  for (int i = 0; i < 45; ++i) {
    EXPECT_EQ(padded[i], kRed) << i;
    EXPECT_EQ(padded[99 - i], kBlue) << i;
  }
  EXPECT_EQ(padded[46], 0x19'00E5u);  // one tenth of the way: 255 * 0.1 = 25
  // A pad past the control's range, as a file may hold it, stays on the ramp.
  spec.edgePad = 0x7FFFFFFF;
  std::vector<std::uint32_t> held = RampOf(spec, 7);
  EXPECT_EQ(held, (std::vector<std::uint32_t>{kRed, kRed, kRed, kRed, kBlue, kBlue, kBlue}));

  // Away from 50 the half-way colour sits at the midpoint's share of the
  // line, whatever the pad, and the end pad is lost: the blend runs on to
  // the last entry.
  spec.midpoint = 25;
  spec.edgePad = 0;
  std::vector<std::uint32_t> early = RampOf(spec, 256);
  EXPECT_EQ(early[0], kRed);
  EXPECT_TRUE(Near(early[63], 0x7F'007F, 4));
  EXPECT_EQ(early[255], kBlue);
  spec.edgePad = 20;  // 51 of 255 at each end
  std::vector<std::uint32_t> padded2 = RampOf(spec, 256);
  EXPECT_TRUE(Near(padded2[38], 0x7F'007F, 4));
  EXPECT_NE(padded2[230], kBlue);
  EXPECT_GT(Blue(padded2[230]), Blue(padded2[200]));
}

TEST(FountainRamp, MultiColourFollowsTheRecordInsideThePads) {
  FountainSpec spec = TwoColour(kGreen, kWhite);
  spec.twoColour = 0;
  spec.edgePad = 10;
  spec.record.startColour = kRed;
  spec.record.endColour = kBlue;
  std::vector<std::uint32_t> ramp = RampOf(spec, 100);
  EXPECT_EQ(ramp[9], kGreen);
  EXPECT_TRUE(Near(ramp[10], kRed));
  EXPECT_TRUE(Near(ramp[89], kBlue));
  EXPECT_EQ(ramp[90], kWhite);
}

TEST(FountainStrip, SegmentsBetweenMarkers) {
  FountainRecord record{};
  FountainInit(&record, 0);
  record.startColour = kRed;
  record.endColour = kBlue;
  {
    Pixels plain(FountainStrip(&record, 100, 2));
    EXPECT_TRUE(Near(plain(0, 0), kRed));
    EXPECT_TRUE(Near(plain(50, 0), 0x7F'007F));
    EXPECT_TRUE(Near(plain(99, 1), kBlue));
  }
  // Two markers on one column: no segment between them, the next one starts
  // from the second marker's colour. A marker at 255 leaves no room for the
  // end colour.
  record.markers[0] = Marker(100, kGreen);
  record.markers[1] = Marker(101, kWhite);
  record.markers[2] = Marker(255, kGreen);
  record.markerCount = 3;
  Pixels strip(FountainStrip(&record, 100, 1));
  EXPECT_TRUE(Near(strip(38, 0), kGreen));
  EXPECT_TRUE(Near(strip(39, 0), kWhite));
  EXPECT_TRUE(Near(strip(99, 0), kGreen));
}

TEST(FountainStrip, LoopedLineClosesOnItsStart) {
  FountainRecord record{};
  FountainInit(&record, 2);
  record.flags = kFountainFlagLooped;
  Pixels strip(FountainStrip(&record, 256, 1));
  EXPECT_TRUE(Near(strip(255, 0), strip(0, 0), 16));
  record.flags = 0;
  Pixels open(FountainStrip(&record, 256, 1));
  EXPECT_TRUE(Near(open(255, 0), kWhite, 24));
}

TEST(FountainRender, ShapesFaceTheirWay) {
  FountainSpec spec = TwoColour(kRed, kBlue);
  {
    Pixels top(FountainRender(40, 30, &spec));
    EXPECT_TRUE(Near(top(20, 0), kRed, 25));
    EXPECT_TRUE(Near(top(20, 29), kBlue, 25));
    EXPECT_EQ(top(0, 10), top(39, 10));
  }
  spec.rotation = 90;
  {
    Pixels right(FountainRender(40, 30, &spec));
    EXPECT_TRUE(Near(right(39, 15), kRed, 25));
    EXPECT_TRUE(Near(right(0, 15), kBlue, 25));
  }
  {
    // Without a spec the sense is reversed: first on the left.
    Pixels plain(FountainLinear(kRed, kBlue, 40, 30, 90, nullptr));
    EXPECT_TRUE(Near(plain(0, 15), kRed, 25));
    EXPECT_TRUE(Near(plain(39, 15), kBlue, 25));
  }
  spec.shape = kFountainConical;
  spec.rotation = 0;
  spec.centreY = 25;  // the apex moves up, to row 12
  {
    Pixels cone(FountainRender(40, 50, &spec));
    EXPECT_EQ(cone(0, 12), kRed);
    EXPECT_EQ(cone(39, 12), kBlue);
    EXPECT_EQ(cone(20, 0), cone(20, 49));  // the sweep is mirrored, no seam
  }
  for (int shape : {kFountainEllipses, kFountainRectangles}) {
    spec.shape = shape;
    spec.centreX = 0;
    spec.centreY = 0;
    // From the start colour at the rim to the end colour in the middle; the
    // outer rectangles stand beyond the corners.
    Pixels rings(FountainRender(40, 40, &spec));
    EXPECT_GT(Red(rings(0, 0)), 160) << shape;
    EXPECT_TRUE(Near(rings(20, 20), kBlue, 40)) << shape;
    spec.centreX = 40;  // the innermost shape moves right
    Pixels shifted(FountainRender(40, 40, &spec));
    EXPECT_GT(Blue(shifted(30, 20)), Blue(shifted(10, 20))) << shape;
  }
}

TEST(FountainLinear, OneColumnStillShowsTheBands) {
  Pixels column(FountainLinear(kRed, kBlue, 1, 64, 0, nullptr));
  EXPECT_EQ(column.Width(), 1);
  EXPECT_TRUE(Near(column(0, 63), kRed, 25));
  EXPECT_TRUE(Near(column(0, 0), kBlue, 25));
}

TEST(FountainMarkers, CompareAndFreePosition) {
  std::uint32_t markers[] = {Marker(0, kRed), Marker(200, kGreen), Marker(5, kBlue)};
  std::qsort(markers, 3, sizeof markers[0], FountainMarkerCompare);
  EXPECT_EQ(markers[0] >> 24, 5u);
  EXPECT_EQ(markers[2] >> 24, 0u);

  FountainRecord record{};
  FountainInit(&record, 0);
  int position = 100;
  EXPECT_EQ(FountainFreePosition(&record, &position), 1);
  EXPECT_EQ(position, 100);
  record.markers[0] = Marker(40, kRed);
  record.markerCount = 1;
  position = 40;
  EXPECT_EQ(FountainFreePosition(&record, &position), 1);
  EXPECT_EQ(position, 39);
  // The wish and the place below it both taken: the search swings between
  // the two and must give up.
  record.markers[1] = Marker(39, kRed);
  record.markerCount = 2;
  position = 40;
  EXPECT_EQ(FountainFreePosition(&record, &position), 0);
  // Above 63 the search walks downwards only.
  record.markers[0] = Marker(120, kRed);
  record.markers[1] = Marker(119, kRed);
  position = 120;
  EXPECT_EQ(FountainFreePosition(&record, &position), 1);
  EXPECT_EQ(position, 118);
  record.markerCount = kFountainMaxMarkers;
  EXPECT_EQ(FountainFreePosition(&record, &position), 0);
}

TEST(FountainRecord, InitForms) {
  FountainRecord record;
  std::memset(&record, 0x5A, sizeof record);
  FountainInit(&record, 1);
  EXPECT_EQ(record.markerCount, 1);
  EXPECT_EQ(record.markers[0], 0x80808080u);
  EXPECT_EQ(record.markers[1], 0u);
  EXPECT_EQ(record.preview, nullptr);
  EXPECT_EQ(record.lastY, 0);
  EXPECT_EQ(record.endColour, 0xFFFFFFFFu);
  FountainInit(&record, 2);
  EXPECT_EQ(record.markerCount, 7);
  EXPECT_EQ(record.markers[6], 0xE0CC0099u);
}

}  // namespace
