#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "raster/dib.h"

namespace {

// A bitmap owned by the test, locked for its whole life.
struct TestDib {
  explicit TestDib(DibHandle dib) : owner(dib), lock(dib) {}
  DibHead* head() const { return lock.head; }
  std::int32_t at(int x, int y) const { return DibGetPixel(lock.head, x, y); }
  void put(int x, int y, std::uint32_t value) { DibPutPixel(lock.head, x, y, value); }
  std::vector<std::uint8_t> bytes() const {
    auto* start = reinterpret_cast<const std::uint8_t*>(lock.head);
    std::size_t size = kDibHeadSize + DibColourTableBytes(lock.head->biBitCount) + lock.head->biSizeImage;
    return {start, start + size};
  }
  DibOwner owner;
  DibLock lock;
};

// Fills every pixel with a distinct non-zero value that fits the depth.
void FillDistinct(TestDib& dib) {
  int width = dib.head()->biWidth;
  std::uint32_t mask = dib.head()->biBitCount >= 24 ? 0xFFFFFFu : (1u << dib.head()->biBitCount) - 1;
  for (int y = 0; y < dib.head()->biHeight; ++y) {
    for (int x = 0; x < width; ++x) dib.put(x, y, static_cast<std::uint32_t>(y * width + x + 1) * 0x010305u & mask);
  }
}

std::vector<std::uint8_t> GreyPalette() {
  std::vector<std::uint8_t> palette(kPaletteBytes);
  for (int i = 0; i < 256; ++i) {
    palette[i * 3] = static_cast<std::uint8_t>(i);
    palette[i * 3 + 1] = static_cast<std::uint8_t>(255 - i);
    palette[i * 3 + 2] = static_cast<std::uint8_t>(i / 2);
  }
  return palette;
}

TEST(DibStore, StridesRoundRowsUpToWholeWords) {
  EXPECT_EQ(DibStride(1, 1), 4);
  EXPECT_EQ(DibStride(24, 1), 4);
  EXPECT_EQ(DibStride(24, 2), 8);
  EXPECT_EQ(DibStride(1, 33), 8);
  EXPECT_EQ(DibStride(4, 9), 8);
  EXPECT_EQ(DibStride(8, 5), 8);
  EXPECT_EQ(DibStride(32, 3), 12);
}

TEST(DibStore, DepthWishMapsToStoreDepths) {
  struct Case {
    int wish, bitCount, colours;
  };
  for (Case c : {Case{0, 32, 0}, {1, 1, 2}, {2, 4, 16}, {3, 4, 16}, {4, 4, 16}, {5, 8, 256}, {8, 8, 256}, {9, 24, 0},
                 {24, 24, 0}, {25, 32, 0}, {32, 32, 0}}) {
    TestDib dib(DibNew(3, 2, nullptr, c.wish));
    ASSERT_NE(dib.head(), nullptr) << c.wish;
    EXPECT_EQ(dib.head()->biBitCount, c.bitCount) << c.wish;
    EXPECT_EQ(dib.head()->biClrUsed, static_cast<std::uint32_t>(c.colours)) << c.wish;
    EXPECT_EQ(dib.head()->biClrImportant, static_cast<std::uint32_t>(c.colours)) << c.wish;
    EXPECT_EQ(dib.head()->biSizeImage, static_cast<std::uint32_t>(DibStride(c.bitCount, 3) * 2)) << c.wish;
    EXPECT_GE(MemSize(dib.owner.get()), 40u + DibColourTableBytes(c.bitCount) + dib.head()->biSizeImage);
    EXPECT_EQ(dib.head()->biSize + dib.head()->biPlanes, 41u);
  }
  EXPECT_EQ(DibNew(-1, 2, nullptr, 24), nullptr);
}

TEST(DibStore, PaletteGoesInAsBlueGreenRedAndComesOutRedFirst) {
  std::vector<std::uint8_t> palette = GreyPalette();
  TestDib dib(DibNew(2, 2, palette.data(), 8));
  const std::uint8_t* table = reinterpret_cast<const std::uint8_t*>(dib.head()) + 40;
  EXPECT_EQ(table[200 * 4], 100);      // blue
  EXPECT_EQ(table[200 * 4 + 1], 55);   // green
  EXPECT_EQ(table[200 * 4 + 2], 200);  // red
  EXPECT_EQ(table[200 * 4 + 3], 0);
  std::vector<std::uint8_t> out(kPaletteBytes, 0xEE);
  EXPECT_EQ(DibPaletteOf(dib.head(), out.data()), 256);
  EXPECT_EQ(out, palette);

  TestDib mono(DibNew(2, 2, palette.data(), 1));
  EXPECT_EQ(DibPaletteOf(mono.head(), out.data()), 2);
  EXPECT_EQ(std::vector<std::uint8_t>(out.begin(), out.begin() + 6),
            std::vector<std::uint8_t>(palette.begin(), palette.begin() + 6));
  EXPECT_EQ(out[6], 0);  // the rest is cleared

  TestDib colour(DibNew(2, 2, palette.data(), 24));
  std::fill(out.begin(), out.end(), 0xEE);
  EXPECT_EQ(DibPaletteOf(colour.head(), out.data()), 0);
  EXPECT_EQ(out, std::vector<std::uint8_t>(kPaletteBytes, 0));
}

TEST(DibPixels, ValuesLandInTheDocumentedBytesBottomRowFirst) {
  TestDib rgb(DibNew(2, 2, nullptr, 24));
  rgb.put(1, 0, 0x112233);  // top row is the second stored row
  const std::uint8_t* top = DibRows(rgb.head()) + 8 + 3;
  EXPECT_EQ(top[0], 0x11);
  EXPECT_EQ(top[1], 0x22);
  EXPECT_EQ(top[2], 0x33);
  EXPECT_EQ(rgb.at(1, 0), 0x112233);
  EXPECT_EQ(rgb.at(1, 1), 0);

  TestDib argb(DibNew(1, 1, nullptr, 32));
  argb.put(0, 0, 0xAA112233u);
  const std::uint8_t* p = DibRows(argb.head());
  EXPECT_EQ(std::vector<std::uint8_t>(p, p + 4), (std::vector<std::uint8_t>{0x11, 0x22, 0x33, 0xAA}));
  EXPECT_EQ(static_cast<std::uint32_t>(argb.at(0, 0)), 0xAA112233u);

  TestDib indexed(DibNew(3, 1, nullptr, 8));
  indexed.put(2, 0, 0x1234);
  EXPECT_EQ(DibRows(indexed.head())[2], 0x34);
  EXPECT_EQ(indexed.at(2, 0), 0x34);
}

TEST(DibPixels, SubByteDepthsKeepTheirNeighbours) {
  TestDib mono(DibNew(10, 1, nullptr, 1));
  mono.put(0, 0, 1);
  mono.put(9, 0, 3);  // only bit 0 counts
  mono.put(1, 0, 2);  // clears
  const std::uint8_t* row = DibRows(mono.head());
  EXPECT_EQ(row[0], 0x80);
  EXPECT_EQ(row[1], 0x40);
  for (int x = 2; x < 9; ++x) mono.put(x, 0, 1);
  mono.put(4, 0, 0);
  EXPECT_EQ(row[0], 0xB7);  // x 1 was cleared above
  EXPECT_EQ(mono.at(4, 0), 0);
  EXPECT_EQ(mono.at(5, 0), 1);

  TestDib nibbles(DibNew(3, 1, nullptr, 4));
  nibbles.put(0, 0, 0xAB);  // low four bits, high nibble
  nibbles.put(1, 0, 0x0C);
  nibbles.put(2, 0, 0x0D);
  row = DibRows(nibbles.head());
  EXPECT_EQ(row[0], 0xBC);
  EXPECT_EQ(row[1], 0xD0);
  nibbles.put(0, 0, 0x3);
  EXPECT_EQ(row[0], 0x3C);
  EXPECT_EQ(nibbles.at(0, 0), 3);
  EXPECT_EQ(nibbles.at(1, 0), 0xC);
  EXPECT_EQ(nibbles.at(2, 0), 0xD);
}

TEST(DibPixels, OutsideReadsMinusOneAndWritesNothingAtEveryDepth) {
  for (int depth : {1, 4, 8, 24, 32}) {
    TestDib dib(DibNew(5, 3, nullptr, depth));
    FillDistinct(dib);
    std::vector<std::uint8_t> before = dib.bytes();
    struct Point {
      int x, y;
    };
    for (Point p : {Point{-1, 0}, {5, 0}, {0, -1}, {0, 3}, {-1, -1}, {5, 3}, {2, 1000}, {1000, 1}}) {
      EXPECT_EQ(dib.at(p.x, p.y), -1) << depth << " " << p.x << "," << p.y;
      dib.put(p.x, p.y, 0xFFFFFFFFu);
      dib.put(p.x, p.y, 0);
    }
    EXPECT_EQ(dib.bytes(), before) << depth;
    EXPECT_NE(dib.at(4, 2), -1) << depth;
  }
}

TEST(DibPixels, ForeignTwoBitHeadIsNeitherReadNorWritten) {
  std::vector<std::uint32_t> block((40 + 16 + 4) / 4, 0);
  auto* head = reinterpret_cast<DibHead*>(block.data());
  *head = DibHead{40, 4, 1, 1, 2, 0, 4, 0, 0, 4, 4};
  std::vector<std::uint32_t> before = block;
  EXPECT_EQ(DibGetPixel(head, 0, 0), -1);
  DibPutPixel(head, 0, 0, 3);
  EXPECT_EQ(block, before);
}

TEST(DibCopy, CloneIsByteForByteAndIndependent) {
  TestDib source(DibNew(3, 3, GreyPalette().data(), 8));
  FillDistinct(source);
  TestDib copy(DibClone(source.owner.get()));
  ASSERT_NE(copy.head(), nullptr);
  EXPECT_NE(copy.owner.get(), source.owner.get());
  EXPECT_EQ(copy.bytes(), source.bytes());
  copy.put(0, 0, 99);
  EXPECT_NE(source.at(0, 0), 99);
  EXPECT_EQ(DibClone(nullptr), nullptr);
}

// Destination pixel (x, y) should hold source (x - dx + sx, y - dy + sy) when
// that lies in the copied area and in the source, else stay 0.
void ExpectRegionCopy(int depth, int dx, int dy, int sx, int sy, int width, int height) {
  TestDib source(DibNew(4, 3, nullptr, depth));
  FillDistinct(source);
  TestDib target(DibNew(5, 4, nullptr, depth));
  EXPECT_EQ(DibRegionCopy(target.head(), dx, dy, source.head(), sx, sy, width, height), 1);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 5; ++x) {
      int i = x - dx, j = y - dy;
      bool copied = i >= 0 && i < width && j >= 0 && j < height && source.at(sx + i, sy + j) != -1;
      EXPECT_EQ(target.at(x, y), copied ? source.at(sx + i, sy + j) : 0)
          << "depth " << depth << " copy " << dx << "," << dy << " from " << sx << "," << sy << " at " << x << ","
          << y;
    }
  }
}

TEST(DibCopy, RegionCopyTakesOnlyPixelsInsideBoth) {
  for (int depth : {1, 4, 8, 24, 32}) {
    ExpectRegionCopy(depth, 0, 0, 0, 0, 4, 3);
    ExpectRegionCopy(depth, -2, 0, 0, 0, 4, 3);   // destination overhangs left
    ExpectRegionCopy(depth, 3, 2, 0, 0, 4, 3);    // right and bottom
    ExpectRegionCopy(depth, 1, -2, 0, 0, 4, 3);   // top
    ExpectRegionCopy(depth, 0, 0, -1, -1, 4, 3);  // source overhangs left and top
    ExpectRegionCopy(depth, 1, 1, 2, 1, 4, 3);    // right and bottom
    ExpectRegionCopy(depth, 1, 1, -3, 0, 9, 9);   // both sides at once
  }
}

TEST(DibCopy, RegionCopyOfAnEmptyAreaOrWithinOneBitmapFollowsPixelOrder) {
  TestDib row(DibNew(5, 1, nullptr, 8));
  for (int x = 0; x < 5; ++x) row.put(x, 0, x + 1);
  std::vector<std::uint8_t> before = row.bytes();
  EXPECT_EQ(DibRegionCopy(row.head(), 0, 0, row.head(), 1, 0, 5, 0), 1);
  EXPECT_EQ(DibRegionCopy(row.head(), 0, 0, row.head(), 1, 0, 0, 1), 1);
  EXPECT_EQ(row.bytes(), before);
  // Copying right onto itself repeats the first pixel, left to right.
  DibRegionCopy(row.head(), 1, 0, row.head(), 0, 0, 4, 1);
  for (int x = 0; x < 5; ++x) EXPECT_EQ(row.at(x, 0), 1);
}

TEST(DibCopy, CropKeepsDepthAndPaletteAndLeavesOverhangBlack) {
  TestDib source(DibNew(4, 3, GreyPalette().data(), 8));
  FillDistinct(source);
  TestDib crop(DibCrop(source.owner.get(), DibRect{2, 1, 5, 4}));
  ASSERT_NE(crop.head(), nullptr);
  EXPECT_EQ(crop.head()->biWidth, 3);
  EXPECT_EQ(crop.head()->biHeight, 3);
  EXPECT_EQ(crop.head()->biBitCount, 8);
  EXPECT_EQ(std::memcmp(reinterpret_cast<std::uint8_t*>(crop.head()) + 40,
                        reinterpret_cast<std::uint8_t*>(source.head()) + 40, 1024),
            0);
  EXPECT_EQ(crop.at(0, 0), source.at(2, 1));
  EXPECT_EQ(crop.at(1, 1), source.at(3, 2));
  EXPECT_EQ(crop.at(2, 0), 0);
  EXPECT_EQ(crop.at(0, 2), 0);
}

std::vector<std::int32_t> Row(const TestDib& dib, int y) {
  std::vector<std::int32_t> row;
  for (int x = 0; x < dib.head()->biWidth; ++x) row.push_back(dib.at(x, y));
  return row;
}

TEST(DibRotate, ColumnsWrapAroundEitherWay) {
  TestDib source(DibNew(5, 2, nullptr, 24));
  for (int x = 0; x < 5; ++x) {
    source.put(x, 0, 0x10 + x);
    source.put(x, 1, 0x20 + x);
  }
  TestDib right(DibRotateRight(source.owner.get(), 2));
  EXPECT_EQ(Row(right, 0), (std::vector<std::int32_t>{0x13, 0x14, 0x10, 0x11, 0x12}));
  EXPECT_EQ(Row(right, 1), (std::vector<std::int32_t>{0x23, 0x24, 0x20, 0x21, 0x22}));
  TestDib left(DibRotateLeft(source.owner.get(), 2));
  EXPECT_EQ(Row(left, 0), (std::vector<std::int32_t>{0x12, 0x13, 0x14, 0x10, 0x11}));
  TestDib back(DibRotateLeft(right.owner.get(), 2));
  EXPECT_EQ(back.bytes(), source.bytes());
}

TEST(DibRotate, NoShiftAndAWholeTurnGiveEqualBitmaps) {
  for (int depth : {1, 4, 8, 24, 32}) {
    TestDib source(DibNew(7, 3, GreyPalette().data(), depth));
    FillDistinct(source);
    for (int shift : {0, 7}) {
      TestDib right(DibRotateRight(source.owner.get(), shift));
      TestDib left(DibRotateLeft(source.owner.get(), shift));
      EXPECT_EQ(right.bytes(), source.bytes()) << depth << " " << shift;
      EXPECT_EQ(left.bytes(), source.bytes()) << depth << " " << shift;
    }
  }
}

TEST(DibTurn, QuarterAndHalfTurnsOfANonSquareBitmap) {
  // 1 2 3
  // 4 5 6
  TestDib source(DibNew(3, 2, GreyPalette().data(), 8));
  for (int i = 0; i < 6; ++i) source.put(i % 3, i / 3, i + 1);
  using Rows = std::vector<std::vector<std::int32_t>>;
  auto rows = [](const TestDib& dib) {
    Rows all;
    for (int y = 0; y < dib.head()->biHeight; ++y) all.push_back(Row(dib, y));
    return all;
  };
  TestDib right(DibTurnRight(source.owner.get()));
  EXPECT_EQ(rows(right), (Rows{{4, 1}, {5, 2}, {6, 3}}));
  TestDib left(DibTurnLeft(source.owner.get()));
  EXPECT_EQ(rows(left), (Rows{{3, 6}, {2, 5}, {1, 4}}));
  TestDib around(DibTurnAround(source.owner.get()));
  EXPECT_EQ(rows(around), (Rows{{6, 5, 4}, {3, 2, 1}}));
  for (const TestDib* turned : {&right, &left, &around}) {
    EXPECT_EQ(turned->head()->biBitCount, 8);
    EXPECT_EQ(std::memcmp(reinterpret_cast<std::uint8_t*>(turned->head()) + 40,
                          reinterpret_cast<std::uint8_t*>(source.head()) + 40, 1024),
              0);
  }
}

TEST(DibTurn, FourQuarterTurnsRestoreEveryDepth) {
  for (int depth : {1, 4, 24, 32}) {
    TestDib source(DibNew(5, 3, nullptr, depth));
    FillDistinct(source);
    TestDib one(DibTurnRight(source.owner.get()));
    TestDib two(DibTurnRight(one.owner.get()));
    TestDib around(DibTurnAround(source.owner.get()));
    EXPECT_EQ(two.bytes(), around.bytes()) << depth;
    TestDib three(DibTurnLeft(two.owner.get()));
    TestDib four(DibTurnLeft(three.owner.get()));
    EXPECT_EQ(four.bytes(), source.bytes()) << depth;
  }
}

TEST(DibTrueColour, OneBitIsBlackAndWhiteAndIndexedDepthsUseTheTable) {
  std::vector<std::uint8_t> palette(kPaletteBytes, 0);
  palette[0] = 10, palette[1] = 20, palette[2] = 30;    // entry 0
  palette[3] = 200, palette[4] = 100, palette[5] = 50;  // entry 1
  TestDib mono(DibNew(2, 1, palette.data(), 1));
  mono.put(1, 0, 1);
  TestDib monoColour(DibToTrueColour(mono.owner.get()));
  EXPECT_EQ(monoColour.head()->biBitCount, 24);
  EXPECT_EQ(monoColour.at(0, 0), 0);
  EXPECT_EQ(monoColour.at(1, 0), 0xFFFFFF);

  for (int depth : {4, 8}) {
    TestDib indexed(DibNew(2, 1, palette.data(), depth));
    indexed.put(1, 0, 1);
    TestDib colour(DibToTrueColour(indexed.owner.get()));
    EXPECT_EQ(colour.at(0, 0), 0x1E140A) << depth;
    EXPECT_EQ(colour.at(1, 0), 0x3264C8) << depth;
  }

  TestDib argb(DibNew(1, 1, nullptr, 32));
  argb.put(0, 0, 0x80123456u);
  TestDib rgb(DibToTrueColour(argb.owner.get()));
  EXPECT_EQ(rgb.at(0, 0), 0x123456);
}

std::int32_t AdjustOne(std::uint32_t colour, float hue, float saturation, float value, int depth = 24) {
  TestDib source(DibNew(1, 1, nullptr, depth));
  source.put(0, 0, colour);
  TestDib adjusted(DibAdjustHsv(source.owner.get(), hue, saturation, value));
  EXPECT_EQ(adjusted.head()->biBitCount, depth);
  return adjusted.at(0, 0);
}

TEST(DibHsv, RoundTripShowsSinglePrecisionRounding) {
  // Pure and tied colours come back exactly.
  for (std::uint32_t colour : {0x0000FFu, 0x00FF00u, 0xFF0000u, 0x00FFFFu, 0xFF00FFu, 0xFFFF00u, 0x808080u, 0u,
                               0xFFFFFFu}) {
    EXPECT_EQ(AdjustOne(colour, 0, 1, 1), static_cast<std::int32_t>(colour)) << std::hex << colour;
  }
  // In single precision these differ from what double arithmetic gives
  // (0x000003 and 0x000109 respectively).
  EXPECT_EQ(AdjustOne(0x000103, 0, 1, 1), 0x000103);
  EXPECT_EQ(AdjustOne(0x000109, 0, 1, 1), 0x000009);
  // The disabled look of the gradient bar: hue +1, half saturation.
  EXPECT_EQ(AdjustOne(0x00BAF0, 1, 0.5f, 1), 0x78D7F0);
}

TEST(DibHsv, HueSextantsCapsAndGreys) {
  EXPECT_EQ(AdjustOne(0x00FFFF, 30, 1, 1), 0x00FF7F);   // yellow, a red-green tie, to hue 90
  EXPECT_EQ(AdjustOne(0x0000FF, 360, 1, 1), 0x00FFFF);  // sextant 6: red = green = v, blue = p
  EXPECT_EQ(AdjustOne(0x0000FF, -10, 1, 1), 0x00FFFF);  // negative sextant likewise
  EXPECT_EQ(AdjustOne(0x0000FF, 120, 1, 1), 0x00FF00);
  EXPECT_EQ(AdjustOne(0x0000FF, 0, 0, 1), 0xFFFFFF);    // no saturation: grey of the value
  EXPECT_EQ(AdjustOne(0x404040, 0, 1, 10), 0xFFFFFF);   // value capped at 1
  EXPECT_EQ(AdjustOne(0x4020FF, 0, 5, 1), 0x2400FF);   // saturation capped at 1
  EXPECT_EQ(AdjustOne(0x000000, 90, 1, 5), 0);          // black stays black
  EXPECT_EQ(AdjustOne(0x0000FF, 0, 1, -1), 0);          // negative channels clamp to 0
}

TEST(DibHsv, AlphaIsKeptOnlyAtThirtyTwoBits) {
  EXPECT_EQ(static_cast<std::uint32_t>(AdjustOne(0x7F0000FFu, 120, 1, 1, 32)), 0x7F00FF00u);
  EXPECT_EQ(AdjustOne(0x0000FF, 120, 1, 1, 24), 0x00FF00);
}

// A whole BMP file of width by height with bottom-up rows of the given pixels
// (top row first in the argument), 24 or 32 bits.
std::vector<std::uint8_t> BmpFile(int width, int height, int bitCount, const std::vector<std::uint32_t>& topDown) {
  int stride = DibStride(bitCount, width);
  std::vector<std::uint8_t> file(14 + 40 + static_cast<std::size_t>(stride) * height, 0);
  file[0] = 'B', file[1] = 'M';
  DibHead head{40, width, height, 1, static_cast<std::uint16_t>(bitCount), 0,
               static_cast<std::uint32_t>(stride * height), 0, 0, 0, 0};
  std::memcpy(file.data() + 14, &head, sizeof head);
  for (int y = 0; y < height; ++y) {
    std::uint8_t* row = file.data() + 54 + static_cast<std::size_t>(height - 1 - y) * stride;
    for (int x = 0; x < width; ++x) {
      std::uint32_t c = topDown[static_cast<std::size_t>(y * width + x)];
      std::uint8_t* p = row + x * (bitCount / 8);
      p[0] = static_cast<std::uint8_t>(c >> 16), p[1] = static_cast<std::uint8_t>(c >> 8);
      p[2] = static_cast<std::uint8_t>(c);
      if (bitCount == 32) p[3] = static_cast<std::uint8_t>(c >> 24);
    }
  }
  return file;
}

TEST(DibBmp, TwentyFourBitFileKeepsItsColoursOnAnyBackground) {
  std::vector<std::uint8_t> file = BmpFile(3, 2, 24, {0x010203, 0xFFFFFF, 0, 0x405060, 0x7F7F7F, 0xABCDEF});
  for (std::int32_t background : {0, 0xFFFFFF, 0x123456, -1}) {
    TestDib dib(DibFromBmpFile(file.data(), file.size(), background));
    ASSERT_NE(dib.head(), nullptr);
    EXPECT_EQ(dib.head()->biBitCount, 24);
    EXPECT_EQ(Row(dib, 0), (std::vector<std::int32_t>{0x010203, 0xFFFFFF, 0}));
    EXPECT_EQ(Row(dib, 1), (std::vector<std::int32_t>{0x405060, 0x7F7F7F, 0xABCDEF}));
  }
}

TEST(DibBmp, AlphaBlendsOntoTheBackgroundWithEachProductTruncated) {
  // Half alpha, source (200, 100, 0) on (10, 20, 255): red 100 + 4, green 50 + 9,
  // blue 0 + 127; one combined division would give 105, 60, 127.
  std::vector<std::uint8_t> file = BmpFile(3, 1, 32, {0x800064C8u, 0x00FFFFFFu, 0xFF010203u});
  TestDib dib(DibFromBmpFile(file.data(), file.size(), 0xFF140A));
  ASSERT_NE(dib.head(), nullptr);
  EXPECT_EQ(dib.head()->biBitCount, 24);
  EXPECT_EQ(Row(dib, 0), (std::vector<std::int32_t>{0x7F3B68, 0xFF140A, 0x010203}));
}

TEST(DibBmp, RefusesOtherDepthsAndShortFiles) {
  std::vector<std::uint8_t> file = BmpFile(4, 4, 24, std::vector<std::uint32_t>(16, 0));
  EXPECT_EQ(DibFromBmpFile(file.data(), file.size() - 1, 0), nullptr);
  EXPECT_EQ(DibFromBmpFile(file.data(), 30, 0), nullptr);
  file[14 + 14] = 8;
  EXPECT_EQ(DibFromBmpFile(file.data(), file.size(), 0), nullptr);
}

}  // namespace
