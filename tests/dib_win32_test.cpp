#include <gtest/gtest.h>

#include <vector>

#include "raster/dib_win32.h"

namespace {

void FillArea(HDC dc, RECT area, COLORREF colour) {
  HBRUSH brush = CreateSolidBrush(colour);
  FillRect(dc, &area, brush);
  DeleteObject(brush);
}

// The pixels of a bitmap, rows from the top.
std::vector<std::vector<std::int32_t>> RowsOf(DibHandle dib) {
  DibLock lock(dib);
  std::vector<std::vector<std::int32_t>> rows(static_cast<std::size_t>(lock.head->biHeight));
  for (int y = 0; y < lock.head->biHeight; ++y)
    for (int x = 0; x < lock.head->biWidth; ++x) rows[y].push_back(DibGetPixel(lock.head, x, y));
  return rows;
}

TEST(DibSection, WhatGdiDrawsIsInTheBlockAfterTheCloseAndInTheGdiBitmap) {
  DibSectionPair pair;
  ASSERT_EQ(DibSectionOpen(nullptr, 4, 3, &pair), 1);
  EXPECT_EQ(pair.rect.right, 4);
  EXPECT_EQ(pair.rect.bottom, 3);
  EXPECT_EQ(pair.reserved, 0u);
  FillArea(pair.memoryDc, RECT{1, 0, 3, 2}, RGB(10, 20, 30));
  FillArea(pair.memoryDc, RECT{3, 2, 4, 3}, RGB(1, 2, 3));
  EXPECT_EQ(DibGetPixel(pair.head, 1, 0), 0);  // the block's rows wait for the close
  GdiFlush();
  DibOwner fromGdi(DibFromGdiBitmap(pair.section));
  EXPECT_EQ(DibSectionClose(&pair, kDibSectionKeep), 1);
  DibOwner drawn(pair.dib);
  ASSERT_NE(fromGdi, nullptr);
  std::vector<std::vector<std::int32_t>> expected = {
      {0, 0x1E140A, 0x1E140A, 0}, {0, 0x1E140A, 0x1E140A, 0}, {0, 0, 0, 0x030201}};
  EXPECT_EQ(RowsOf(drawn.get()), expected);
  EXPECT_EQ(RowsOf(fromGdi.get()), expected);
  EXPECT_EQ(DibLock(fromGdi.get()).head->biBitCount, 24);
  // Without keep the block is freed; an empty size opens nothing.
  ASSERT_EQ(DibSectionOpen(nullptr, 2, 2, &pair), 1);
  EXPECT_EQ(DibSectionClose(&pair, 0), 1);
  EXPECT_EQ(pair.dib, nullptr);
  EXPECT_EQ(DibSectionOpen(nullptr, 0, 2, &pair), 0);
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
  std::vector<std::int32_t> white(4, 0xFFFFFF);
  EXPECT_EQ(RowsOf(drawn.get()), (std::vector<std::vector<std::int32_t>>{
                                     white, {0xFFFFFF, 0, 0x140AC8, 0xFFFFFF}, {0xFFFFFF, 0, 0, 0xFFFFFF}, white}));
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
