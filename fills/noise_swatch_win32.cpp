// The noise swatch control. The picture is made at the client size on set-up
// and after each edit, never at paint time; the record is the window's user
// data.
#include "fills/noise_swatch_win32.h"

#include "dialogkit/control_messages.h"
#include "dialogkit/numeric_value_box_win32.h"
#include "dialogkit/well_common_win32.h"
#include "fills/noise_record.h"
#include "plugin/control_table.h"
#include "plugin/main_dialog_win32.h"
#include "raster/dib_win32.h"

namespace {

constexpr UINT kMessageRecompute = 1326;
constexpr UINT kMessageContextMenu = 1328;
constexpr WORD kSeedCommand = 101;
constexpr WORD kScaleCommand = 104;
constexpr WORD kDepthCommand = 105;

using NoiseLock = MemRecordLock<NoiseRecord>;

// A new map at the client size, coloured when the record has a colouring;
// a map that cannot be made leaves the swatch blank.
void Recompute(HWND window) {
  NoiseLock lock(WindowBlock(window));
  if (lock.record == nullptr) return;
  lock.record->picture = MemFree(lock.record->picture);
  RECT client;
  GetClientRect(window, &client);
  DibHandle grey = MakeNoise(client.right - client.left, client.bottom - client.top, *lock.record);
  if (grey != nullptr && lock.record->colouring != nullptr) {
    Controls dialog = DialogControls(GetParent(window));
    DibHandle coloured = lock.record->colouring(&dialog, grey);
    MemFree(grey);
    grey = coloured;
  }
  lock.record->picture = grey;
}

void SetUp(HWND window, LPARAM colouring) {
  bool useFile = (GetKeyState(VK_SHIFT) & 0x8000) == 0;
  MemHandle block = NoiseSetUp(GetDlgCtrlID(window), useFile ? 1 : 0);
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(block));
  {
    NoiseLock lock(WindowBlock(window));
    if (lock.record == nullptr) return;
    lock.record->colouring = colouring == kColouringFromGradient259 ? NoiseColourFromGradient259 : nullptr;
  }
  Recompute(window);
  InvalidateRect(window, nullptr, TRUE);
}

void ShowMenu(HWND window, LPARAM place) {
  HMENU menu = CreatePopupMenu();
  AppendMenuA(menu, MF_STRING, kSeedCommand, "&Random seed");
  AppendMenuA(menu, MF_STRING, kScaleCommand, "&Scale");
  AppendMenuA(menu, MF_STRING, kDepthCommand, "&Depth");
  POINT point{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
  ClientToScreen(window, &point);
  TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, point.x, point.y, 0, window, nullptr);
  DestroyMenu(menu);
}

// One of the three edits through the numeric value box; after OK a new map,
// and a new preview in the dialog.
void Edit(HWND window, WORD command) {
  NumericValueRequest request{};
  {
    NoiseLock lock(WindowBlock(window));
    if (lock.record == nullptr) return;
    if (command == kSeedCommand) request = {"Random seed:", 1000, 32760, lock.record->seed};
    else if (command == kScaleCommand) request = {"Scale:", 2, 256, static_cast<int>(lock.record->scale)};
    else if (command == kDepthCommand) request = {"Depth:", 1, 32, static_cast<int>(lock.record->depth)};
    else return;
  }
  if (NumericValueBox(window, &request) == 0) return;
  {
    NoiseLock lock(WindowBlock(window));
    if (lock.record == nullptr) return;
    if (command == kSeedCommand) lock.record->seed = request.value;
    else if (command == kScaleCommand) lock.record->scale = request.value;
    else lock.record->depth = request.value;
  }
  SendMessageA(window, kMessageRecompute, 0, 0);
  InvalidateRect(window, nullptr, FALSE);
  UpdateWindow(window);
  InvalidateRect(GetDlgItem(GetParent(window), kPreviewControl), nullptr, FALSE);
}

void Paint(HWND window, HDC dc) {
  RECT client;
  GetClientRect(window, &client);
  FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  NoiseLock lock(WindowBlock(window));
  if (lock.record == nullptr) FillRect(dc, &client, GetSysColorBrush(COLOR_WINDOW));
  else if (lock.record->picture != nullptr) DibDraw(dc, client.left, client.top, lock.record->picture);
  FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
}

void Destroy(HWND window) {
  MemHandle block = WindowBlock(window);
  if (block == nullptr) return;
  if (auto* record = static_cast<NoiseRecord*>(MemLock(block))) {
    record->picture = MemFree(record->picture);
    NoiseRecordSave(*record);
    MemUnlock(block);
  }
  MemFree(block);
  SetWindowLongPtrA(window, GWLP_USERDATA, 0);
}

}  // namespace

LRESULT CALLBACK NoiseSwatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      SetUp(window, lParam);
      return 0;
    case kMessageRecompute:
      Recompute(window);
      return 0;
    case kMessageContextMenu:
      ShowMenu(window, lParam);
      return 0;
    case WM_RBUTTONDOWN: {
      RECT client;
      GetClientRect(window, &client);
      POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
      if (PtInRect(&client, point)) PostMessageA(window, kMessageContextMenu, 0, lParam);
      return 0;
    }
    case WM_COMMAND:
      Edit(window, LOWORD(wParam));
      return 0;
    case WM_PAINT:
      return PaintWindow(window, [&](HDC dc) { Paint(window, dc); });
    case WM_ERASEBKGND:
      return 1;
    case WM_DESTROY:
      Destroy(window);
      break;
    default:
      break;
  }
  return ButtonDefault(window, message, wParam, lParam);
}
