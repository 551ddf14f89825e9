#include "dialogkit/centre.h"
#include "dialogkit/message_box_win32.h"

void CentreWindow(HWND window) {
  RECT rect;
  if (!GetWindowRect(window, &rect)) return;
  int x = CentreCoordinate(GetSystemMetrics(SM_CXSCREEN), rect.left, rect.right);
  int y = CentreCoordinate(GetSystemMetrics(SM_CYSCREEN), rect.top, rect.bottom);
  SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
