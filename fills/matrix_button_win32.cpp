#include "fills/matrix_button_win32.h"

#include "dialogkit/control_messages.h"
#include "fills/matrix_button.h"
#include "fills/matrix_tile.h"
#include "raster/dib_win32.h"

namespace {

constexpr UINT kMessageIndex = 1425;
constexpr int kInset = 2;
constexpr UINT kSoftEdges = BF_RECT | BF_SOFT;

MemHandle BlockOf(HWND window) { return reinterpret_cast<MemHandle>(GetWindowLongPtrA(window, GWLP_USERDATA)); }

void SetUp(HWND window, int index) {
  MatrixButtonRelease(BlockOf(window));
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(MatrixButtonSetUp(index)));
  InvalidateRect(window, nullptr, TRUE);
}

LRESULT IndexOf(HWND window) {
  MemHandle block = BlockOf(window);
  auto* record = static_cast<MatrixRecord*>(block != nullptr ? MemLock(block) : nullptr);
  if (record == nullptr) return 0;
  LRESULT index = record->index;
  MemUnlock(block);
  return index;
}

// A raised soft edge and, inside it, the tile repeated from the top left.
void Paint(HWND window) {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window, &paint);
  RECT client;
  GetClientRect(window, &client);
  DrawEdge(dc, &client, EDGE_RAISED, kSoftEdges);
  MemHandle block = BlockOf(window);
  if (auto* record = static_cast<MatrixRecord*>(block != nullptr ? MemLock(block) : nullptr)) {
    MatrixRecord shown = *record;
    shown.rectangle = {0, 0, client.right - 2 * kInset, client.bottom - 2 * kInset};
    DibOwner wall(MatrixTileRender(&shown));
    if (wall != nullptr) DibDraw(dc, kInset, kInset, wall.get());
    MemUnlock(block);
  }
  EndPaint(window, &paint);
}

}  // namespace

LRESULT CALLBACK MatrixButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      SetUp(window, static_cast<int>(lParam));
      return 0;
    case kMessageIndex:
      return IndexOf(window);
    case WM_PAINT:
      Paint(window);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_DESTROY:
      MatrixButtonRelease(BlockOf(window));
      SetWindowLongPtrA(window, GWLP_USERDATA, 0);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}
