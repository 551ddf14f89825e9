#include "fills/matrix_button_win32.h"

#include "dialogkit/control_messages.h"
#include "dialogkit/well_common_win32.h"
#include "fills/matrix_button.h"
#include "fills/matrix_dialog_win32.h"
#include "fills/matrix_tile.h"
#include "plugin/main_dialog_win32.h"
#include "raster/dib_win32.h"

namespace {

constexpr UINT kMessageIndex = 1425;
constexpr WORD kDialogCommand = 99;
constexpr std::uint32_t kHeldDown = 0x2;
constexpr int kInset = 2;
constexpr int kPressedInset = 1;
constexpr UINT kSoftEdges = BF_RECT | BF_SOFT;

void SetUp(HWND window, int index) {
  MatrixButtonRelease(WindowBlock(window));
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(MatrixButtonSetUp(index)));
  InvalidateRect(window, nullptr, TRUE);
}

LRESULT IndexOf(HWND window) {
  MemRecordLock<MatrixRecord> lock(WindowBlock(window));
  return lock.record != nullptr ? lock.record->index : 0;
}

// A raised soft edge, or a dark frame while held down, and inside it the
// tile repeated from the top left.
void Paint(HWND window) {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window, &paint);
  RECT client;
  GetClientRect(window, &client);
  MemRecordLock<MatrixRecord> lock(WindowBlock(window));
  bool pressed = lock.record != nullptr && (lock.record->flags & kHeldDown) != 0;
  if (pressed) FrameRect(dc, &client, GetSysColorBrush(COLOR_3DDKSHADOW));
  else DrawEdge(dc, &client, EDGE_RAISED, kSoftEdges);
  if (lock.record != nullptr) {
    int inset = pressed ? kPressedInset : kInset;
    MatrixRecord shown = *lock.record;
    shown.rectangle = {0, 0, client.right - 2 * inset, client.bottom - 2 * inset};
    DibOwner wall(MatrixTileRender(&shown));
    if (wall != nullptr) DibDraw(dc, inset, inset, wall.get());
  }
  EndPaint(window, &paint);
}

void SetHeldDown(HWND window, bool held) {
  MemRecordLock<MatrixRecord> lock(WindowBlock(window));
  if (lock.record == nullptr) return;
  lock.record->flags = held ? lock.record->flags | kHeldDown : lock.record->flags & ~kHeldDown;
  InvalidateRect(window, nullptr, FALSE);
}

void MouseUp(HWND window) {
  if (GetCapture() != window) return;
  ReleaseCapture();
  SetHeldDown(window, false);
  PostMessageA(window, WM_COMMAND, kDialogCommand, 0);
}

// The tile dialog on the button's record; a confirmed choice goes to the
// main dialog, which keeps the tile number.
void RunTileDialog(HWND window) {
  MemRecordLock<MatrixRecord> lock(WindowBlock(window));
  if (lock.record == nullptr || MatrixDialogRun(GetParent(window), lock.record) == 0) return;
  InvalidateRect(window, nullptr, FALSE);
  PostMessageA(GetParent(window), kMessageMuralChanged, static_cast<WPARAM>(lock.record->index),
               reinterpret_cast<LPARAM>(window));
}

}  // namespace

LRESULT CALLBACK MatrixButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      SetUp(window, static_cast<int>(lParam));
      return 0;
    case kMessageIndex:
      return IndexOf(window);
    case WM_LBUTTONDOWN:
      SetCapture(window);
      SetHeldDown(window, true);
      return 0;
    case WM_LBUTTONUP:
      MouseUp(window);
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) == kDialogCommand) RunTileDialog(window);
      return 0;
    case WM_PAINT:
      Paint(window);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_DESTROY:
      MatrixButtonRelease(WindowBlock(window));
      SetWindowLongPtrA(window, GWLP_USERDATA, 0);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}
