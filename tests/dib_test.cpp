#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "raster/dib.h"

namespace {

using Values = std::vector<std::int32_t>;
using Bytes = std::vector<std::uint8_t>;
using Triples = std::vector<std::array<int, 3>>;

// A bitmap owned by the test, locked for its whole life.
struct TestDib {
  explicit TestDib(DibHandle dib) : owner(dib), lock(dib) {}
  DibHead* head() const { return lock.head; }
  std::int32_t at(int x, int y) const { return DibGetPixel(lock.head, x, y); }
  void put(int x, int y, std::uint32_t value) { DibPutPixel(lock.head, x, y, value); }
  const std::uint8_t* start() const { return reinterpret_cast<const std::uint8_t*>(lock.head); }
  Bytes bytes() const {
    return {start(), start() + kDibHeadSize + DibColourTableBytes(head()->biBitCount) + head()->biSizeImage};
  }
  Bytes table() const { return {start() + kDibHeadSize, start() + kDibHeadSize + 1024}; }
  std::vector<Values> rows() const {
    std::vector<Values> rows(static_cast<std::size_t>(head()->biHeight), Values(head()->biWidth));
    for (int y = 0; y < head()->biHeight; ++y)
      for (int x = 0; x < head()->biWidth; ++x) rows[y][x] = at(x, y);
    return rows;
  }
  DibOwner owner;
  DibLock lock;
};

// Fills every pixel with a distinct non-zero value that fits the depth.
void FillDistinct(TestDib& dib) {
  int width = dib.head()->biWidth;
  std::uint32_t mask = dib.head()->biBitCount >= 24 ? 0xFFFFFFu : (1u << dib.head()->biBitCount) - 1;
  for (int y = 0; y < dib.head()->biHeight; ++y)
    for (int x = 0; x < width; ++x) dib.put(x, y, static_cast<std::uint32_t>(y * width + x + 1) * 0x010305u & mask);
}

Bytes Palette() {
  Bytes palette(kPaletteBytes);
  std::generate(palette.begin(), palette.end(), [i = 0]() mutable { return static_cast<std::uint8_t>(7 * i++); });
  return palette;
}

TEST(DibStore, StridesAndDepthWishes) {
  for (auto [bitCount, width, stride] : Triples{{1, 1, 4}, {24, 1, 4}, {24, 2, 8}, {1, 33, 8}, {4, 9, 8}})
    EXPECT_EQ(DibStride(bitCount, width), stride) << bitCount << " bits, width " << width;
  for (auto [wish, bitCount, colours] : Triples{{0, 32, 0}, {1, 1, 2}, {2, 4, 16}, {4, 4, 16}, {5, 8, 256}, {8, 8, 256},
                                                {9, 24, 0}, {24, 24, 0}, {25, 32, 0}}) {
    TestDib dib(DibNew(3, 2, nullptr, wish));
    const DibHead& head = *dib.head();
    EXPECT_EQ((Values{head.biBitCount, std::int32_t(head.biClrUsed), std::int32_t(head.biSizeImage)}),
              (Values{bitCount, colours, DibStride(bitCount, 3) * 2})) << wish;
  }
  EXPECT_EQ(DibNew(-1, 2, nullptr, 24), nullptr);
}

TEST(DibStore, PaletteGoesInAsBlueGreenRedAndComesOutRedFirst) {
  Bytes palette = Palette();
  TestDib dib(DibNew(2, 2, palette.data(), 8));
  // Entry 200 is stored as blue, green, red, 0.
  EXPECT_EQ(Bytes(dib.start() + 840, dib.start() + 844), (Bytes{118, 111, 104, 0}));
  Bytes out(kPaletteBytes, 0xEE);
  EXPECT_EQ(DibPaletteOf(dib.head(), out.data()), 256);
  EXPECT_EQ(out, palette);
  TestDib mono(DibNew(2, 2, palette.data(), 1));
  EXPECT_EQ(DibPaletteOf(mono.head(), out.data()), 2);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 7), (Bytes{0, 7, 14, 21, 28, 35, 0}));  // the rest is cleared
}

// One value written into the top row of a two-row bitmap whose top row bytes
// were all `fill`: the stored rows (bottom first) and the value read back.
TEST(DibPixels, ValuesLandInTheirBitsAndBytesBottomRowFirst) {
  struct Case {
    int depth, width, x;
    std::uint32_t value;
    std::uint8_t fill;
    Bytes top;
    std::uint32_t read;
  };
  for (const Case& c : {Case{24, 2, 1, 0x112233, 0, {0, 0, 0, 0x11, 0x22, 0x33, 0, 0}, 0x112233},
                        Case{32, 1, 0, 0xAA112233u, 0, {0x11, 0x22, 0x33, 0xAA}, 0xAA112233u},
                        Case{8, 3, 2, 0x1234, 0, {0, 0, 0x34, 0}, 0x34},
                        Case{1, 10, 9, 3, 0, {0, 0x40, 0, 0}, 1},  // only bit 0 counts
                        Case{1, 10, 4, 2, 0xFF, {0xF7, 0xFF, 0xFF, 0xFF}, 0},
                        Case{4, 3, 0, 0xAB, 0xFF, {0xBF, 0xFF, 0xFF, 0xFF}, 0xB},  // low four bits, high nibble
                        Case{4, 3, 1, 0x4C, 0, {0x0C, 0, 0, 0}, 0xC}}) {
    TestDib dib(DibNew(c.width, 2, nullptr, c.depth));
    std::uint8_t* rows = DibRows(dib.head());
    std::fill(rows + c.top.size(), rows + 2 * c.top.size(), c.fill);
    dib.put(c.x, 0, c.value);
    Bytes stored(c.top.size(), 0);
    stored.insert(stored.end(), c.top.begin(), c.top.end());
    EXPECT_EQ(Bytes(rows, rows + stored.size()), stored) << c.depth << " bits at " << c.x;
    EXPECT_EQ(static_cast<std::uint32_t>(dib.at(c.x, 0)), c.read) << c.depth << " bits at " << c.x;
  }
}

TEST(DibPixels, OutsideReadsMinusOneAndWritesNothingAtEveryDepth) {
  for (int depth : {1, 4, 8, 24, 32}) {
    TestDib dib(DibNew(5, 3, nullptr, depth));
    FillDistinct(dib);
    Bytes before = dib.bytes();
    for (auto [x, y] : {std::pair{-1, 0}, {5, 0}, {0, -1}, {0, 3}, {-1, -1}, {5, 3}, {2, 1000}, {1000, 1}}) {
      EXPECT_EQ(dib.at(x, y), -1) << depth << " " << x << "," << y;
      dib.put(x, y, 0xFFFFFFFFu), dib.put(x, y, 0);
    }
    EXPECT_EQ(dib.bytes(), before) << depth;
    EXPECT_NE(dib.at(4, 2), -1) << depth;
  }
}

// Destination pixel (x, y) holds source (x - dx + sx, y - dy + sy) when that
// lies in the copied area and in the source, else stays 0.
TEST(DibCopy, RegionCopyTakesOnlyPixelsInsideBoth) {
  for (int depth : {1, 4, 8, 24, 32}) {
    // Whole, the destination overhanging left, right and bottom, top, the
    // source overhanging left and top, right and bottom, both sides at once.
    for (auto [dx, dy, sx, sy, width, height] : std::vector<std::array<int, 6>>{
             {0, 0, 0, 0, 4, 3}, {-2, 0, 0, 0, 4, 3}, {3, 2, 0, 0, 4, 3}, {1, -2, 0, 0, 4, 3}, {0, 0, -1, -1, 4, 3},
             {1, 1, 2, 1, 4, 3}, {1, 1, -3, 0, 9, 9}}) {
      TestDib source(DibNew(4, 3, nullptr, depth));
      FillDistinct(source);
      TestDib target(DibNew(5, 4, nullptr, depth));
      EXPECT_EQ(DibRegionCopy(target.head(), dx, dy, source.head(), sx, sy, width, height), 1);
      for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) {
          int i = x - dx, j = y - dy;
          bool copied = i >= 0 && i < width && j >= 0 && j < height && source.at(sx + i, sy + j) != -1;
          EXPECT_EQ(target.at(x, y), copied ? source.at(sx + i, sy + j) : 0)
              << depth << " bits, " << dx << "," << dy << " from " << sx << "," << sy << " at " << x << "," << y;
        }
    }
  }
  // Copying right onto itself repeats the first pixel, left to right.
  TestDib row(DibNew(5, 1, nullptr, 8));
  for (int x = 0; x < 5; ++x) row.put(x, 0, x + 1);
  DibRegionCopy(row.head(), 1, 0, row.head(), 0, 0, 4, 1);
  EXPECT_EQ(row.rows()[0], (Values{1, 1, 1, 1, 1}));
}

TEST(DibCopy, CloneAndCropKeepDepthAndPalette) {
  TestDib source(DibNew(4, 3, Palette().data(), 8));
  FillDistinct(source);
  TestDib copy(DibClone(source.owner.get()));
  EXPECT_EQ(copy.bytes(), source.bytes());
  TestDib crop(DibCrop(source.owner.get(), DibRect{2, 1, 5, 4}));  // the overhang stays black
  EXPECT_EQ(crop.table(), source.table());
  EXPECT_EQ(crop.rows(), (std::vector<Values>{{source.at(2, 1), source.at(3, 1), 0},
                                              {source.at(2, 2), source.at(3, 2), 0},
                                              {0, 0, 0}}));
}

TEST(DibRotate, ColumnsWrapAroundAndNoShiftOrAWholeWidthChangeNothing) {
  TestDib source(DibNew(5, 2, nullptr, 24));
  for (int x = 0; x < 5; ++x) source.put(x, 0, 0x10 + x), source.put(x, 1, 0x20 + x);
  EXPECT_EQ(TestDib(DibRotateRight(source.owner.get(), 2)).rows(),
            (std::vector<Values>{{0x13, 0x14, 0x10, 0x11, 0x12}, {0x23, 0x24, 0x20, 0x21, 0x22}}));
  EXPECT_EQ(TestDib(DibRotateLeft(source.owner.get(), 2)).rows()[0], (Values{0x12, 0x13, 0x14, 0x10, 0x11}));
  for (int depth : {1, 4, 8, 24, 32}) {
    TestDib dib(DibNew(7, 3, Palette().data(), depth));
    FillDistinct(dib);
    for (int shift : {0, 7}) {
      EXPECT_EQ(TestDib(DibRotateRight(dib.owner.get(), shift)).bytes(), dib.bytes()) << depth << " " << shift;
      EXPECT_EQ(TestDib(DibRotateLeft(dib.owner.get(), shift)).bytes(), dib.bytes()) << depth << " " << shift;
    }
  }
}

TEST(DibTurn, QuarterAndHalfTurnsOfANonSquareBitmapKeepTheTable) {
  TestDib source(DibNew(3, 2, Palette().data(), 8));  // 1 2 3 over 4 5 6
  for (int i = 0; i < 6; ++i) source.put(i % 3, i / 3, i + 1);
  TestDib right(DibTurnRight(source.owner.get())), left(DibTurnLeft(source.owner.get())),
      around(DibTurnAround(source.owner.get()));
  EXPECT_EQ(right.rows(), (std::vector<Values>{{4, 1}, {5, 2}, {6, 3}}));
  EXPECT_EQ(left.rows(), (std::vector<Values>{{3, 6}, {2, 5}, {1, 4}}));
  EXPECT_EQ(around.rows(), (std::vector<Values>{{6, 5, 4}, {3, 2, 1}}));
  for (const TestDib* turned : {&right, &left, &around}) EXPECT_EQ(turned->table(), source.table());
}

TEST(DibTrueColour, OneBitIsBlackAndWhiteAndIndexedDepthsUseTheTable) {
  Bytes palette(kPaletteBytes, 0);
  palette[0] = 10, palette[1] = 20, palette[2] = 30;    // entry 0
  palette[3] = 200, palette[4] = 100, palette[5] = 50;  // entry 1
  for (auto [depth, zero, one] : Triples{{1, 0, 0xFFFFFF}, {4, 0x1E140A, 0x3264C8}, {8, 0x1E140A, 0x3264C8}}) {
    TestDib indexed(DibNew(2, 1, palette.data(), depth));
    indexed.put(1, 0, 1);
    TestDib colour(DibToTrueColour(indexed.owner.get()));
    EXPECT_EQ(colour.head()->biBitCount, 24);
    EXPECT_EQ(colour.rows()[0], (Values{zero, one})) << depth;
  }
  TestDib argb(DibNew(1, 1, nullptr, 32));
  argb.put(0, 0, 0x80123456u);
  EXPECT_EQ(TestDib(DibToTrueColour(argb.owner.get())).at(0, 0), 0x123456);
}

std::int32_t AdjustOne(std::uint32_t colour, float hue, float saturation, float value, int depth = 24) {
  TestDib source(DibNew(1, 1, nullptr, depth));
  source.put(0, 0, colour);
  TestDib adjusted(DibAdjustHsv(source.owner.get(), hue, saturation, value));
  return adjusted.head()->biBitCount == depth ? adjusted.at(0, 0) : -2;
}

TEST(DibHsv, SinglePrecisionRoundTripSextantsCapsAndAlpha) {
  for (std::uint32_t colour : {0x0000FFu, 0x00FFFFu, 0xFF00FFu, 0x808080u, 0xFFFFFFu})
    EXPECT_EQ(AdjustOne(colour, 0, 1, 1), static_cast<std::int32_t>(colour)) << std::hex << colour;
  // In double precision these would give 0x000003 and 0x000109.
  EXPECT_EQ(AdjustOne(0x000103, 0, 1, 1), 0x000103);
  EXPECT_EQ(AdjustOne(0x000109, 0, 1, 1), 0x000009);
  EXPECT_EQ(AdjustOne(0x00BAF0, 1, 0.5f, 1), 0x78D7F0);  // the disabled gradient bar
  EXPECT_EQ(AdjustOne(0x00FFFF, 30, 1, 1), 0x00FF7F);    // yellow, a red-green tie, to hue 90
  EXPECT_EQ(AdjustOne(0x0000FF, 360, 1, 1), 0x00FFFF);   // sextant 6: red = green = v, blue = p
  EXPECT_EQ(AdjustOne(0x0000FF, -10, 1, 1), 0x00FFFF);   // negative sextant likewise
  EXPECT_EQ(AdjustOne(0x0000FF, 0, 0, 1), 0xFFFFFF);     // no saturation: grey of the value
  EXPECT_EQ(AdjustOne(0x404040, 0, 1, 10), 0xFFFFFF);    // value capped at 1
  EXPECT_EQ(AdjustOne(0x4020FF, 0, 5, 1), 0x2400FF);     // saturation capped at 1
  EXPECT_EQ(AdjustOne(0x0000FF, 0, 1, -1), 0);           // negative channels clamp to 0
  EXPECT_EQ(static_cast<std::uint32_t>(AdjustOne(0x7F0000FFu, 120, 1, 1, 32)), 0x7F00FF00u);
}

// A whole BMP file of 24 or 32-bit pixels, given top row first.
Bytes BmpFile(int width, int depth, const std::vector<std::uint32_t>& topDown) {
  TestDib dib(DibNew(width, static_cast<int>(topDown.size()) / width, nullptr, depth));
  for (int i = 0; i < static_cast<int>(topDown.size()); ++i) dib.put(i % width, i / width, topDown[i]);
  Bytes file = dib.bytes();
  file.insert(file.begin(), {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  return file;
}

TEST(DibBmp, FlattensAlphaWithEachProductTruncatedAndRefusesOthers) {
  Bytes plain = BmpFile(3, 24, {0x010203, 0xFFFFFF, 0, 0x405060, 0x7F7F7F, 0xABCDEF});
  for (std::int32_t background : {0, 0x123456, -1}) {
    TestDib dib(DibFromBmpFile(plain.data(), plain.size(), background));
    EXPECT_EQ(dib.rows(), (std::vector<Values>{{0x010203, 0xFFFFFF, 0}, {0x405060, 0x7F7F7F, 0xABCDEF}}));
  }
  // Half alpha, source (200, 100, 0) on (10, 20, 255): red 100 + 4, green 50 + 9,
  // blue 0 + 127; one combined division would give 105, 60, 127.
  Bytes file = BmpFile(3, 32, {0x800064C8u, 0x00FFFFFFu, 0xFF010203u});
  TestDib dib(DibFromBmpFile(file.data(), file.size(), 0xFF140A));
  EXPECT_EQ(dib.head()->biBitCount, 24);
  EXPECT_EQ(dib.rows()[0], (Values{0x7F3B68, 0xFF140A, 0x010203}));
  EXPECT_EQ(DibFromBmpFile(plain.data(), plain.size() - 1, 0), nullptr);
  EXPECT_EQ(DibFromBmpFile(plain.data(), 30, 0), nullptr);
  plain[14 + 14] = 8;  // an 8-bit file
  EXPECT_EQ(DibFromBmpFile(plain.data(), plain.size(), 0), nullptr);
}

}  // namespace
