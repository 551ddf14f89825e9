#include <gtest/gtest.h>

#include <vector>

#include "raster/dib_win32.h"

namespace {

std::int32_t PixelOf(DibHandle dib, int x, int y) {
  DibLock lock(dib);
  return DibGetPixel(lock.head, x, y);
}

void FillArea(HDC dc, RECT area, COLORREF colour) {
  HBRUSH brush = CreateSolidBrush(colour);
  FillRect(dc, &area, brush);
  DeleteObject(brush);
}

TEST(DibSection, WhatGdiDrawsIsInTheBlockAfterTheClose) {
  DibSectionPair pair;
  ASSERT_EQ(DibSectionOpen(nullptr, 5, 3, &pair), 1);
  EXPECT_EQ(pair.rect.right, 5);
  EXPECT_EQ(pair.rect.bottom, 3);
  EXPECT_EQ(pair.reserved, 0u);
  FillArea(pair.memoryDc, RECT{1, 0, 3, 2}, RGB(10, 20, 30));
  EXPECT_EQ(DibGetPixel(pair.head, 1, 0), 0);  // the block's rows wait for the close
  EXPECT_EQ(DibSectionClose(&pair, kDibSectionKeep), 1);
  ASSERT_NE(pair.dib, nullptr);
  DibOwner owner(pair.dib);
  EXPECT_EQ(PixelOf(pair.dib, 1, 0), 0x1E140A);
  EXPECT_EQ(PixelOf(pair.dib, 2, 1), 0x1E140A);
  EXPECT_EQ(PixelOf(pair.dib, 0, 0), 0);
  EXPECT_EQ(PixelOf(pair.dib, 3, 1), 0);
  EXPECT_EQ(PixelOf(pair.dib, 1, 2), 0);
}

TEST(DibSection, CloseWithoutKeepFreesTheBlock) {
  DibSectionPair pair;
  ASSERT_EQ(DibSectionOpen(nullptr, 2, 2, &pair), 1);
  EXPECT_EQ(DibSectionClose(&pair, 0), 1);
  EXPECT_EQ(pair.dib, nullptr);
  EXPECT_EQ(DibSectionOpen(nullptr, 0, 2, &pair), 0);
  EXPECT_EQ(pair.dib, nullptr);
}

TEST(DibSection, GdiBitmapComesBackAsTheSameTwentyFourBitPicture) {
  DibSectionPair pair;
  ASSERT_EQ(DibSectionOpen(nullptr, 4, 3, &pair), 1);
  FillArea(pair.memoryDc, RECT{0, 0, 4, 1}, RGB(200, 100, 50));
  FillArea(pair.memoryDc, RECT{3, 2, 4, 3}, RGB(1, 2, 3));
  GdiFlush();
  DibOwner fromGdi(DibFromGdiBitmap(pair.section));
  DibSectionClose(&pair, kDibSectionKeep);
  DibOwner drawn(pair.dib);
  ASSERT_NE(fromGdi, nullptr);
  DibLock a(fromGdi.get());
  DibLock b(drawn.get());
  EXPECT_EQ(a.head->biBitCount, 24);
  EXPECT_EQ(a.head->biWidth, 4);
  EXPECT_EQ(a.head->biHeight, 3);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x) EXPECT_EQ(DibGetPixel(a.head, x, y), DibGetPixel(b.head, x, y)) << x << "," << y;
  }
  EXPECT_EQ(DibGetPixel(a.head, 3, 2), 0x030201);
}

TEST(DibSection, DrawShowsAnIndexedBitmapThroughItsPalette) {
  std::vector<std::uint8_t> palette(kPaletteBytes, 0);
  palette[3] = 200, palette[4] = 10, palette[5] = 20;
  DibOwner indexed(DibNew(2, 2, palette.data(), 8));
  {
    DibLock lock(indexed.get());
    DibPutPixel(lock.head, 1, 0, 1);
  }
  DibSectionPair pair;
  ASSERT_EQ(DibSectionOpen(nullptr, 4, 4, &pair), 1);
  FillArea(pair.memoryDc, RECT{0, 0, 4, 4}, RGB(255, 255, 255));
  DibDraw(pair.memoryDc, 1, 1, indexed.get());
  DibSectionClose(&pair, kDibSectionKeep);
  DibOwner drawn(pair.dib);
  EXPECT_EQ(PixelOf(drawn.get(), 2, 1), 0x140AC8);
  EXPECT_EQ(PixelOf(drawn.get(), 1, 1), 0);
  EXPECT_EQ(PixelOf(drawn.get(), 0, 0), 0xFFFFFF);
  EXPECT_EQ(PixelOf(drawn.get(), 3, 3), 0xFFFFFF);
}

TEST(DibSection, DisplayPaletteRoundsTheColourCount) {
  std::vector<std::uint8_t> palette(kPaletteBytes, 7);
  HDC dc = CreateCompatibleDC(nullptr);
  struct Case {
    int count, entries;
  };
  for (Case c : {Case{2, 16}, {16, 16}, {17, 256}, {256, 256}}) {
    DibPaletteSelection selection;
    EXPECT_EQ(DibDisplayPalette(dc, palette.data(), c.count, &selection), 1);
    ASSERT_NE(selection.palette, nullptr);
    EXPECT_EQ(GetPaletteEntries(selection.palette, 0, 0, nullptr), static_cast<UINT>(c.entries)) << c.count;
    DibDisplayPaletteRelease(&selection);
    EXPECT_EQ(selection.palette, nullptr);
  }
  DibPaletteSelection none;
  EXPECT_EQ(DibDisplayPalette(dc, palette.data(), 300, &none), 1);
  EXPECT_EQ(none.palette, nullptr);
  DeleteDC(dc);
}

TEST(DibResource, MissingResourceGivesNull) {
  EXPECT_EQ(DibFromResource(GetModuleHandleA(nullptr), 31999, -1), nullptr);
}

}  // namespace
