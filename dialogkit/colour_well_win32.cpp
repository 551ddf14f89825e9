// The colour well: the window data holds flags, bit 0 while the mouse button
// is down on it; the colour is the number in the window text.
#include <cstdint>

#include "dialogkit/control_messages.h"
#include "dialogkit/dialog_host.h"
#include "dialogkit/well_common_win32.h"
#include "dialogkit/wells_win32.h"

namespace {

constexpr std::uint32_t kPressed = 0x1;
constexpr WORD kPickCommand = 100;  // posted to itself when the click ends

void SetPressed(HWND window, bool pressed) {
  std::uint32_t flags = WellDataRead(window);
  WellDataWrite(window, pressed ? flags | kPressed : flags & ~kPressed);
  InvalidateRect(window, nullptr, FALSE);
}

void PaintWell(HWND window, HDC dc) {
  RECT rect;
  GetClientRect(window, &rect);
  FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  bool pressed = (WellDataRead(window) & kPressed) != 0;
  DrawEdge(dc, &rect, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT);
  InflateRect(&rect, -2, -2);
  HBRUSH colour = CreateSolidBrush(static_cast<COLORREF>(WellNumber(window)));
  FillRect(dc, &rect, colour);
  DeleteObject(colour);
}

// Asks the host for a colour; refused or not, the well repaints from its text
// and the parent hears of it, so the preview follows.
void PickColour(HWND window) {
  auto colour = static_cast<std::uint32_t>(WellNumber(window));
  if (ColourPick(window, &colour)) WellNumberSet(window, static_cast<int>(colour));
  PostMessageA(window, kMessageControlRefresh, 0, 0);
  PostMessageA(GetParent(window), WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID(window)),
               reinterpret_cast<LPARAM>(window));
}

}  // namespace

LRESULT CALLBACK ColourWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      WellDataCreate(window, static_cast<std::uint32_t>(wParam));
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case kMessageControlRefresh:  // the colour is read from the text at every paint
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_LBUTTONDOWN:
      SetCapture(window);
      SetPressed(window, true);
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      SetPressed(window, false);
      PostMessageA(window, WM_COMMAND, kPickCommand, 0);
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) != kPickCommand) break;
      PickColour(window);
      return 0;
    case WM_PAINT:
      return PaintWindow(window, [window](HDC dc) { PaintWell(window, dc); });
    case WM_ERASEBKGND:
      return 1;
    case WM_DESTROY:
      WellDataFree(window);
      break;
    default:
      break;
  }
  return ButtonDefault(window, message, wParam, lParam);
}
