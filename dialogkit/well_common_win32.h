// What the well procedures share: the button class they chain to, their
// window data (one u32 in a global block) and their number in the window text.
#pragma once

#include <windows.h>

#include <cstdint>

#include "raster/global_memory.h"

// The window procedure of the system's button class.
WNDPROC ButtonClassProc();
// Passes a message on to the button class.
LRESULT ButtonDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The window data block. Reading a window without one gives 0, writing to
// one does nothing.
void WellDataCreate(HWND window, std::uint32_t value);
std::uint32_t WellDataRead(HWND window);
void WellDataWrite(HWND window, std::uint32_t value);
void WellDataFree(HWND window);

// Answers WM_PAINT: paint(dc) between BeginPaint and EndPaint. Result 0.
template <typename Painter>
LRESULT PaintWindow(HWND window, Painter paint) {
  PAINTSTRUCT paintRecord;
  HDC dc = BeginPaint(window, &paintRecord);
  paint(dc);
  EndPaint(window, &paintRecord);
  return 0;
}

// The number in the window text, and writing one as "%d".
int WellNumber(HWND window);
void WellNumberSet(HWND window, int number);

// The block a custom control keeps as its window's user data, or null.
inline MemHandle WindowBlock(HWND window) {
  return reinterpret_cast<MemHandle>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

// Locks a control's record for a scope; record is null without one.
template <typename Record>
struct WindowRecordLock {
  explicit WindowRecordLock(HWND window)
      : block(WindowBlock(window)), record(static_cast<Record*>(block ? MemLock(block) : nullptr)) {}
  ~WindowRecordLock() {
    if (record != nullptr) MemUnlock(block);
  }
  WindowRecordLock(const WindowRecordLock&) = delete;
  WindowRecordLock& operator=(const WindowRecordLock&) = delete;
  MemHandle block;
  Record* record;
};
