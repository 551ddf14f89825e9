// The direction wells: the window data holds the selected cell.
#include <windowsx.h>

#include "dialogkit/control_messages.h"
#include "dialogkit/well_cells.h"
#include "dialogkit/well_common_win32.h"
#include "dialogkit/wells_win32.h"
#include "plugin/plugin_state_win32.h"
#include "raster/dib_win32.h"

namespace {

RECT CellRect(const WellLayout& layout, int cell) {
  const DibRect& r = layout.cells[cell];
  return RECT{r.left, r.top, r.right, r.bottom};
}

void InvalidateCell(HWND window, const WellLayout& layout, int cell) {
  if (cell < 0 || cell >= layout.cellCount) return;
  RECT rect = CellRect(layout, cell);
  InvalidateRect(window, &rect, FALSE);
}

// Icon cell of the strip, cut 2 pixels in on every side, at inset from the
// cell's top left. The strip is as high as each of its square icons.
void DrawCellIcon(HDC dc, DibHandle strip, int cell, const RECT& rect, int inset) {
  DibLock lock(strip);
  if (lock.head == nullptr) return;
  int iconSize = lock.head->biHeight;
  DibRect part{cell * iconSize + 2, 2, cell * iconSize + iconSize - 2, iconSize - 2};
  DibOwner icon(DibCrop(strip, part));
  if (icon) DibDraw(dc, rect.left + inset, rect.top + inset, icon.get());
}

// The selected cell sunk in the shadow colour, the others raised on the face.
void PaintCells(HWND window, HDC dc, const WellLayout& layout) {
  int selected = static_cast<int>(WellDataRead(window));
  DibOwner selectedStrip(DibFromResource(g_module, layout.iconResource, GetSysColor(COLOR_BTNSHADOW)));
  DibOwner strip(DibFromResource(g_module, layout.iconResource, GetSysColor(COLOR_BTNFACE)));
  for (int cell = 0; cell < layout.cellCount; ++cell) {
    RECT rect = CellRect(layout, cell);
    if (cell == selected) {
      FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNSHADOW));
      FrameRect(dc, &rect, GetSysColorBrush(COLOR_3DDKSHADOW));
      DrawCellIcon(dc, selectedStrip.get(), cell, rect, 2);
    } else {
      FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNFACE));
      DrawEdge(dc, &rect, EDGE_RAISED, BF_RECT | BF_SOFT);
      DrawCellIcon(dc, strip.get(), cell, rect, 1);
    }
  }
}

void SelectCellAt(HWND window, const WellLayout& layout, int x, int y) {
  int cell = WellCellAt(layout, x, y);
  int previous = static_cast<int>(WellDataRead(window));
  if (cell >= 0 && cell != previous) {
    InvalidateCell(window, layout, previous);
    InvalidateCell(window, layout, cell);
    WellDataWrite(window, static_cast<std::uint32_t>(cell));
    WellNumberSet(window, cell);
  }
  UpdateWindow(window);
}

LRESULT DirectionWellMessage(const WellLayout& layout, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      WellDataCreate(window, static_cast<std::uint32_t>(wParam));
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case kMessageControlRefresh:
      WellDataWrite(window, static_cast<std::uint32_t>(WellNumber(window)));
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_LBUTTONDOWN:
      SetCapture(window);
      SelectCellAt(window, layout, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
      return ButtonDefault(window, message, wParam, lParam);
    case WM_LBUTTONUP: {
      // The button reports the click before the capture goes.
      LRESULT result = ButtonDefault(window, message, wParam, lParam);
      ReleaseCapture();
      return result;
    }
    case WM_PAINT:
      return PaintWindow(window, [&](HDC dc) { PaintCells(window, dc, layout); });
    case WM_ERASEBKGND:
      return 1;
    case WM_DESTROY:
      WellDataFree(window);
      return ButtonDefault(window, message, wParam, lParam);
    default:
      return ButtonDefault(window, message, wParam, lParam);
  }
}

}  // namespace

LRESULT CALLBACK DirectionWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return DirectionWellMessage(kEightWayWell, window, message, wParam, lParam);
}

LRESULT CALLBACK ScrollWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return DirectionWellMessage(kFourWayWell, window, message, wParam, lParam);
}

LRESULT CALLBACK TwoWayWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return DirectionWellMessage(kTwoWayWell, window, message, wParam, lParam);
}
