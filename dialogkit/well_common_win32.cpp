#include "dialogkit/well_common_win32.h"

#include <cstdio>
#include <cstdlib>

#include "raster/global_memory.h"

namespace {

MemHandle DataOf(HWND window) { return reinterpret_cast<MemHandle>(GetWindowLongPtrA(window, GWLP_USERDATA)); }

}  // namespace

WNDPROC ButtonClassProc() {
  static WNDPROC procedure = [] {
    WNDCLASSA buttonClass{};
    GetClassInfoA(nullptr, "button", &buttonClass);
    return buttonClass.lpfnWndProc;
  }();
  return procedure;
}

LRESULT ButtonDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return CallWindowProcA(ButtonClassProc(), window, message, wParam, lParam);
}

void WellDataCreate(HWND window, std::uint32_t value) {
  WellDataFree(window);
  MemHandle block = MemAlloc(kMemMoveableZeroed, sizeof(std::uint32_t));
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(block));
  WellDataWrite(window, value);
}

std::uint32_t WellDataRead(HWND window) {
  MemHandle block = DataOf(window);
  auto* data = static_cast<std::uint32_t*>(MemLock(block));
  if (data == nullptr) return 0;
  std::uint32_t value = *data;
  MemUnlock(block);
  return value;
}

void WellDataWrite(HWND window, std::uint32_t value) {
  MemHandle block = DataOf(window);
  auto* data = static_cast<std::uint32_t*>(MemLock(block));
  if (data == nullptr) return;
  *data = value;
  MemUnlock(block);
}

void WellDataFree(HWND window) {
  MemFree(DataOf(window));
  SetWindowLongPtrA(window, GWLP_USERDATA, 0);
}

int WellNumber(HWND window) {
  char text[32] = {};
  GetWindowTextA(window, text, sizeof text);
  return static_cast<int>(std::strtol(text, nullptr, 10));
}

void WellNumberSet(HWND window, int number) {
  char text[32];
  std::snprintf(text, sizeof text, "%d", number);
  SetWindowTextA(window, text);
}
