// Pictures through GDI+ (running: the drawing service started it).
#include <windows.h>
#include <objidl.h>
#include <gdiplus.h>

#include <string>

#include "host/image_reader.h"
#include "raster/dib_win32.h"

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

DibHandle ImageRead(const char* path, std::string* error) {
  int length = MultiByteToWideChar(CP_ACP, 0, path, -1, nullptr, 0);
  std::wstring wide(length > 0 ? length : 1, L'\0');
  MultiByteToWideChar(CP_ACP, 0, path, -1, wide.data(), length);
  GpBitmap* bitmap = nullptr;
  if (GdipCreateBitmapFromFile(wide.c_str(), &bitmap) != Ok) {
    *error = "not a picture this host can read";
    return nullptr;
  }
  HBITMAP gdiBitmap = nullptr;
  DibHandle picture = nullptr;
  if (GdipCreateHBITMAPFromBitmap(bitmap, &gdiBitmap, 0xFFFFFFFF) == Ok) {
    picture = DibFromGdiBitmap(gdiBitmap);
    DeleteObject(gdiBitmap);
  }
  GdipDisposeImage(reinterpret_cast<GpImage*>(bitmap));
  if (picture == nullptr) *error = "Memory error";
  return picture;
}
