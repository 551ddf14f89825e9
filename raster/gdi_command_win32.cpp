// The drawing service's engine in the plug-in: GDI+ through its flat API.
// Fonts are made from the LOGFONT that FontSpec mirrors, on the screen's
// device context; strings are measured in an empty layout rectangle at the
// origin with no format and drawn the same way, and the picture leaves
// through a GDI bitmap. Under Wine a measure leaves trailing blanks out, as
// Windows' does.
#include <windows.h>
#include <objidl.h>
#include <gdiplus.h>

#include <cstring>
#include <cwchar>

#include "raster/dib_win32.h"
#include "raster/gdi_backend.h"

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

static_assert(sizeof(FontSpec) == sizeof(LOGFONTA));
static_assert(offsetof(FontSpec, weight) == offsetof(LOGFONTA, lfWeight));
static_assert(offsetof(FontSpec, italic) == offsetof(LOGFONTA, lfItalic));
static_assert(offsetof(FontSpec, charSet) == offsetof(LOGFONTA, lfCharSet));
static_assert(offsetof(FontSpec, faceName) == offsetof(LOGFONTA, lfFaceName));

namespace {

constexpr int kWideLimit = 261;
constexpr ARGB kOpaqueBlack = 0xFF000000;

LOGFONTA LogfontOf(const FontSpec& font) {
  LOGFONTA logfont;
  std::memcpy(&logfont, &font, sizeof logfont);
  return logfont;
}

// COLORREF (red low) to an opaque ARGB.
ARGB OpaqueArgb(std::uint32_t colour) {
  return kOpaqueBlack | (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

struct WideText {
  WCHAR chars[kWideLimit + 1] = {};
  explicit WideText(const char* text) { MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, text, -1, chars, kWideLimit); }
};

}  // namespace

struct GdiTextSession {
  HDC dc;
  GpFont* font;
  GpGraphics* surface;
};

namespace {

// Wine's GDI+ counts trailing blanks in a measured box whatever the format
// flags say; Windows leaves them out. Wine is known by the export that only
// its ntdll has.
bool RunningUnderWine() {
  static const bool wine = [] {
    HMODULE ntdll = GetModuleHandleA("ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
  }();
  return wine;
}

// Width of the string without padding. The generic typographic format
// belongs to GDI+ and is never deleted.
REAL TypographicWidth(GdiTextSession* session, const WCHAR* text, int length) {
  static GpStringFormat* typographic = nullptr;
  if (typographic == nullptr && GdipStringFormatGetGenericTypographic(&typographic) != Ok) return 0;
  if (length == 0) return 0;
  RectF layout(0, 0, 0, 0);
  RectF box(0, 0, 0, 0);
  GdipMeasureString(session->surface, text, length, session->font, &layout, typographic, &box, nullptr, nullptr);
  return box.Width;
}

// What the trailing blanks add to a typographic measure: the text's width
// less that of the text without them; 0 when it has none.
REAL TrailingBlanksWidth(GdiTextSession* session, const WCHAR* text) {
  int length = static_cast<int>(std::wcslen(text));
  int kept = length;
  while (kept > 0 && text[kept - 1] == L' ') --kept;
  if (kept == length) return 0;
  return TypographicWidth(session, text, length) - TypographicWidth(session, text, kept);
}

}  // namespace

int GdiBackendStart(std::uint64_t* token) {
  GdiplusStartupInput input;  // version 1, no debug callback
  ULONG_PTR started = 0;
  Status status = GdiplusStartup(&started, &input, nullptr);
  *token = started;
  return status == Ok;
}

void GdiBackendStop(std::uint64_t token) { GdiplusShutdown(static_cast<ULONG_PTR>(token)); }

// A picture GDI+ cannot make comes back null, which its caller already takes
// for memory running out; nothing is left to report later.
bool GdiBackendTakeOutOfMemory() { return false; }

GdiTextSession* GdiTextOpen(const GdiOp* op) {
  auto* session = new GdiTextSession{GetDC(nullptr), nullptr, nullptr};
  LOGFONTA logfont = LogfontOf(GdiOpFont(op));
  if (GdipCreateFontFromLogfontA(session->dc, &logfont, &session->font) == Ok &&
      GdipCreateFromHDC(session->dc, &session->surface) == Ok)
    return session;
  GdiTextClose(session);
  return nullptr;
}

void GdiTextClose(GdiTextSession* session) {
  if (session == nullptr) return;
  if (session->surface != nullptr) GdipDeleteGraphics(session->surface);
  if (session->font != nullptr) GdipDeleteFont(session->font);
  ReleaseDC(nullptr, session->dc);
  delete session;
}

int GdiTextBox(GdiTextSession* session, const char* text, int* width, int* height) {
  WideText wide(text);
  RectF layout(0, 0, 0, 0);
  RectF box(0, 0, 0, 0);
  Status status = GdipMeasureString(session->surface, wide.chars, -1, session->font, &layout, nullptr, &box, nullptr,
                                    nullptr);
  if (RunningUnderWine()) box.Width -= TrailingBlanksWidth(session, wide.chars);
  *width = static_cast<int>(box.Width);
  *height = static_cast<int>(box.Height);
  return status == Ok;
}

DibHandle GdiTextPicture(GdiTextSession* session, const char* text, int width, int height, std::uint32_t colour,
                         int antialias) {
  GpBitmap* bitmap = nullptr;
  if (GdipCreateBitmapFromScan0(width, height, 0, PixelFormat24bppRGB, nullptr, &bitmap) != Ok) return nullptr;
  GpGraphics* graphics = nullptr;
  GpSolidFill* brush = nullptr;
  DibHandle picture = nullptr;
  if (GdipGetImageGraphicsContext(bitmap, &graphics) == Ok) {
    GdipSetSmoothingMode(graphics, antialias > 0 ? SmoothingModeHighQuality : SmoothingModeNone);
    GdipFlush(graphics, FlushIntentionFlush);
    GdipGraphicsClear(graphics, kOpaqueBlack);
    GdipSetTextRenderingHint(graphics,
                             antialias != 0 ? TextRenderingHintAntiAlias : TextRenderingHintSingleBitPerPixel);
    GdipCreateSolidFill(OpaqueArgb(colour), &brush);
    GdipFlush(graphics, FlushIntentionFlush);
    GdipGraphicsClear(graphics, kOpaqueBlack);
    WideText wide(text);
    RectF layout(0, 0, 0, 0);
    GdipDrawString(graphics, wide.chars, -1, session->font, &layout, nullptr, reinterpret_cast<GpBrush*>(brush));
    GdipFlush(graphics, FlushIntentionFlush);
    HBITMAP gdiBitmap = nullptr;
    if (GdipCreateHBITMAPFromBitmap(bitmap, &gdiBitmap, kOpaqueBlack) == Ok) {
      picture = DibFromGdiBitmap(gdiBitmap);
      DeleteObject(gdiBitmap);
    }
  }
  if (brush != nullptr) GdipDeleteBrush(reinterpret_cast<GpBrush*>(brush));
  if (graphics != nullptr) GdipDeleteGraphics(graphics);
  GdipDisposeImage(reinterpret_cast<GpImage*>(bitmap));
  return picture;
}

int FontMetricsOf(const FontSpec* font, FontMetrics* metrics) {
  *metrics = FontMetrics{};
  LOGFONTA logfont = LogfontOf(*font);
  HFONT handle = CreateFontIndirectA(&logfont);
  if (handle == nullptr) return 0;
  HDC dc = GetDC(nullptr);
  HGDIOBJ previous = SelectObject(dc, handle);
  TEXTMETRICA textMetrics{};
  BOOL measured = GetTextMetricsA(dc, &textMetrics);
  SelectObject(dc, previous);
  ReleaseDC(nullptr, dc);
  DeleteObject(handle);
  if (!measured) return 0;
  metrics->height = textMetrics.tmHeight;
  metrics->ascent = textMetrics.tmAscent;
  metrics->descent = textMetrics.tmDescent;
  return 1;
}
