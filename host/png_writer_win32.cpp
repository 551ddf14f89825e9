// PNG frames through GDI+'s PNG encoder (GDI+ is running: the drawing
// service started it).
#include <windows.h>
#include <objidl.h>
#include <gdiplus.h>

#include <cstdio>
#include <string>

#include "host/png_writer.h"

namespace {

// {557CF406-1A04-11D3-9A73-0000F81EF32E}: GDI+'s built-in PNG encoder.
const CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

std::wstring Widen(const char* path) {
  int length = MultiByteToWideChar(CP_ACP, 0, path, -1, nullptr, 0);
  std::wstring wide(length > 0 ? length : 1, L'\0');
  MultiByteToWideChar(CP_ACP, 0, path, -1, wide.data(), length);
  return wide;
}

}  // namespace

int PngWrite(const char* path, DibHandle image) {
  DibLock lock(image);
  if (lock.head == nullptr || lock.head->biBitCount != 24) return 0;
  DibHead* head = lock.head;
  // The store keeps rows bottom-up: start at the top row, step backwards.
  int stride = DibStride(24, head->biWidth);
  Gdiplus::GpBitmap* bitmap = nullptr;
  if (Gdiplus::DllExports::GdipCreateBitmapFromScan0(head->biWidth, head->biHeight, -stride, PixelFormat24bppRGB,
                                                     DibRow(head, 0), &bitmap) != Gdiplus::Ok)
    return 0;
  std::wstring wide = Widen(path);
  bool saved = Gdiplus::DllExports::GdipSaveImageToFile(bitmap, wide.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
  Gdiplus::DllExports::GdipDisposeImage(bitmap);
  if (!saved) std::remove(path);
  return saved ? 1 : 0;
}
