// The host's own window: a frame with one status line and a progress bar.
#include <windows.h>

#include <commctrl.h>

#include "host/lwhost/lwhost.h"

namespace {

constexpr const char* kFrameClass = "LettermotionHostFrame";
constexpr int kFrameWidth = 420;
constexpr int kFrameHeight = 110;

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE) return 0;  // the plug-in's dialog decides when the run ends
  return DefWindowProcA(window, message, wParam, lParam);
}

bool RegisterFrameClass(HINSTANCE instance) {
  WNDCLASSA frameClass{};
  frameClass.lpfnWndProc = FrameProc;
  frameClass.hInstance = instance;
  frameClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  frameClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  frameClass.lpszClassName = kFrameClass;
  return RegisterClassA(&frameClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

bool HostWindowCreate(HINSTANCE instance, const char* pluginName, HostWindow* window) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  if (!RegisterFrameClass(instance)) return false;
  char title[96];
  wsprintfA(title, "Reference host - %s", pluginName);
  window->frame = CreateWindowExA(0, kFrameClass, title, WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 40, 40,
                                  kFrameWidth, kFrameHeight, nullptr, nullptr, instance, nullptr);
  if (window->frame == nullptr) return false;
  window->status = CreateWindowExA(0, "static", "Ready", WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 8, 8,
                                   kFrameWidth - 32, 18, window->frame, nullptr, instance, nullptr);
  window->progress = CreateWindowExA(0, PROGRESS_CLASSA, "", WS_CHILD | WS_VISIBLE, 8, 32, kFrameWidth - 32, 18,
                                     window->frame, nullptr, instance, nullptr);
  SendMessageA(window->status, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), 0);
  UpdateWindow(window->frame);
  return true;
}
