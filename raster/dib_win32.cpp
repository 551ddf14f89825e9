// The bitmap store meeting GDI: resources, GDI bitmaps, palettes, drawing.
#include "raster/dib_win32.h"

#include <cstring>

namespace {

// A palette of count entries (at most 256) from red, green, blue triples.
HPALETTE MakePalette(const std::uint8_t* palette, int count) {
  struct {
    WORD palVersion;
    WORD palNumEntries;
    PALETTEENTRY entries[256];
  } logical{};
  logical.palVersion = 0x300;
  logical.palNumEntries = static_cast<WORD>(count);
  for (int i = 0; i < count; ++i) {
    logical.entries[i] = {palette[i * 3], palette[i * 3 + 1], palette[i * 3 + 2], 0};
  }
  return CreatePalette(reinterpret_cast<LOGPALETTE*>(&logical));
}

int SelectMadePalette(HDC dc, HPALETTE palette, DibPaletteSelection* selection) {
  *selection = {dc, palette, nullptr};
  if (palette == nullptr) return 0;
  selection->previous = SelectPalette(dc, palette, FALSE);
  RealizePalette(dc);
  return 1;
}

BITMAPINFO* AsBitmapInfo(DibHead* head) { return reinterpret_cast<BITMAPINFO*>(head); }

}  // namespace

DibHandle DibFromResource(HMODULE module, int resourceId, std::int32_t background) {
  HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(resourceId), MAKEINTRESOURCEA(10));  // RT_RCDATA
  if (found == nullptr) return nullptr;
  HGLOBAL loaded = LoadResource(module, found);
  if (loaded == nullptr) return nullptr;
  const auto* bytes = static_cast<const std::uint8_t*>(LockResource(loaded));
  if (background == -1) background = static_cast<std::int32_t>(GetSysColor(COLOR_BTNFACE));
  return DibFromBmpFile(bytes, SizeofResource(module, found), background);
}

DibHandle DibFromGdiBitmap(HBITMAP bitmap) {
  BITMAP info{};
  if (GetObjectA(bitmap, sizeof info, &info) == 0) return nullptr;
  int depth = info.bmPlanes * info.bmBitsPixel;
  DibOwner dib(DibNew(info.bmWidth, info.bmHeight, nullptr, depth > 8 ? 24 : depth));
  DibLock lock(dib.get());
  if (lock.head == nullptr) return nullptr;
  HDC screen = GetDC(nullptr);
  int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(info.bmHeight), DibRows(lock.head),
                       AsBitmapInfo(lock.head), DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  if (rows == 0 && info.bmHeight > 0) return nullptr;
  return dib.release();
}

void DibDraw(HDC dc, int x, int y, DibHandle dib) {
  DibLock lock(dib);
  if (lock.head == nullptr) return;
  DibHead* head = lock.head;
  DibPaletteSelection selection{dc, nullptr, nullptr};
  if (head->biBitCount <= 8) {
    std::uint8_t palette[kPaletteBytes];
    DibPaletteOf(head, palette);
    SelectMadePalette(dc, MakePalette(palette, 1 << head->biBitCount), &selection);
  }
  HBITMAP bitmap = CreateDIBitmap(dc, reinterpret_cast<BITMAPINFOHEADER*>(head), CBM_INIT, DibRows(head),
                                  AsBitmapInfo(head), DIB_RGB_COLORS);
  if (bitmap != nullptr) {
    HDC memory = CreateCompatibleDC(dc);
    if (memory != nullptr) {
      HGDIOBJ old = SelectObject(memory, bitmap);
      BitBlt(dc, x, y, head->biWidth, head->biHeight, memory, 0, 0, SRCCOPY);
      SelectObject(memory, old);
      DeleteDC(memory);
    }
    DeleteObject(bitmap);
  }
  DibDisplayPaletteRelease(&selection);
}

int DibDisplayPalette(HDC dc, const std::uint8_t* palette, int count, DibPaletteSelection* selection) {
  *selection = {dc, nullptr, nullptr};
  if (count > 256) return 1;
  if (count >= 17) count = 256;
  if (count >= 2 && count <= 16) count = 16;
  return SelectMadePalette(dc, MakePalette(palette, count), selection);
}

void DibDisplayPaletteRelease(DibPaletteSelection* selection) {
  if (selection->palette == nullptr) return;
  SelectPalette(selection->dc, selection->previous, FALSE);
  DeleteObject(selection->palette);
  selection->palette = nullptr;
}

int DibSectionOpen(void*, int width, int height, DibSectionPair* pair) {
  *pair = {};
  DibOwner dib(DibNew(width, height, nullptr, 24));
  if (dib == nullptr) return 0;
  auto* head = static_cast<DibHead*>(MemLock(dib.get()));
  if (head == nullptr) return 0;
  HDC screen = GetDC(nullptr);
  void* pixels = nullptr;
  HBITMAP section =
      screen != nullptr ? CreateDIBSection(screen, AsBitmapInfo(head), DIB_RGB_COLORS, &pixels, nullptr, 0) : nullptr;
  HDC memory = section != nullptr ? CreateCompatibleDC(screen) : nullptr;
  if (memory == nullptr) {
    if (section != nullptr) DeleteObject(section);
    if (screen != nullptr) ReleaseDC(nullptr, screen);
    MemUnlock(dib.get());
    return 0;
  }
  HGDIOBJ previous = SelectObject(memory, section);
  SetMapMode(memory, MM_ISOTROPIC);
  SetWindowExtEx(memory, width, height, nullptr);
  SetViewportExtEx(memory, width, height, nullptr);
  *pair = {dib.release(), head, section, previous, pixels, memory, screen, {0, 0, width, height}, 0};
  return 1;
}

int DibSectionClose(DibSectionPair* pair, unsigned flags) {
  GdiFlush();
  DibHead* head = pair->head;
  std::memcpy(DibRows(head), pair->pixels,
              static_cast<std::size_t>(DibStride(head->biBitCount, head->biWidth)) * head->biHeight);
  SelectObject(pair->memoryDc, pair->previous);
  DeleteObject(pair->section);
  DeleteDC(pair->memoryDc);
  ReleaseDC(nullptr, pair->screenDc);
  MemUnlock(pair->dib);
  if ((flags & kDibSectionKeep) == 0) {
    MemFree(pair->dib);
    pair->dib = nullptr;
  }
  return 1;
}
