// The preview control: one still of the current effect, made, drawn and freed
// at each repaint. A change only invalidates the control; a change in the
// Spiral rows waits UpdateDelay first, so a run of keystrokes costs one render.
#include "effects/effect.h"
#include "plugin/build_pipeline.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/settings.h"
#include "raster/dib_win32.h"

namespace {

constexpr int kFallbackBrush = COLOR_3DLIGHT + 1;

// The still of the selected effect, or null.
DibHandle RenderStill(HWND dialog, const RECT& inner) {
  auto selection = static_cast<int>(SendDlgItemMessageA(dialog, kEffectListControl, CB_GETCURSEL, 0, 0));
  if (selection < 0 || selection >= kEffectCount || EffectTable[selection].preview == nullptr) return nullptr;
  Controls controls = DialogControls(dialog);
  EffectContext context{};
  context.dialog = &controls;
  context.previewWidth = inner.right - inner.left;
  context.previewHeight = inner.bottom - inner.top;
  if (EffectTable[selection].preview(&context) == 0) {
    MemFree(context.previewBitmap);
    return nullptr;
  }
  return context.previewBitmap;
}

// Centres the picture in inner, cut evenly where it is larger, and paints
// white over what it leaves free.
void DrawCentred(HDC dc, const RECT& inner, HRGN clip, DibHandle picture) {
  int width = 0;
  int height = 0;
  int sized = DibSizeOf(picture, &width, &height);
  int dx = sized != 0 ? (inner.right - inner.left - width) / 2 : 0;
  int dy = sized != 0 ? (inner.bottom - inner.top - height) / 2 : 0;
  int left = inner.left + dx;
  int top = inner.top + dy;
  HRGN surround = CreateRectRgn(left, top, left + width, top + height);
  CombineRgn(surround, surround, clip, RGN_XOR);
  SelectClipRgn(dc, surround);
  FillRect(dc, &inner, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  SelectClipRgn(dc, clip);
  DeleteObject(surround);
  DibDraw(dc, left, top, picture);
}

}  // namespace

void PreviewDraw(HWND dialog, const DRAWITEMSTRUCT* item) {
  HDC dc = item->hDC;
  RECT inner = item->rcItem;
  InflateRect(&inner, -1, -1);
  FrameRect(dc, &item->rcItem, GetSysColorBrush(COLOR_BTNSHADOW));
  HRGN clip = CreateRectRgnIndirect(&inner);
  SelectClipRgn(dc, clip);
  DibHandle picture = RenderStill(dialog, inner);
  if (picture != nullptr) {
    DrawCentred(dc, inner, clip, picture);
    MemFree(picture);
  } else {
    FillRect(dc, &item->rcItem, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(kFallbackBrush)));
  }
  SelectClipRgn(dc, nullptr);
  DeleteObject(clip);
}

void PreviewInvalidate(HWND dialog) { InvalidateRect(GetDlgItem(dialog, kPreviewControl), nullptr, FALSE); }

void PreviewRestartTimer(HWND dialog) {
  KillTimer(dialog, kPreviewTimer);
  SetTimer(dialog, kPreviewTimer, UpdateDelay, nullptr);
}
