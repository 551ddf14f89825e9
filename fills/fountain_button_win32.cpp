#include "fills/fountain_button_win32.h"

#include "dialogkit/control_messages.h"
#include "dialogkit/well_common_win32.h"
#include "fills/fountain_button.h"
#include "fills/material.h"
#include "raster/dib_win32.h"

namespace {

constexpr int kMarkerHalf = 5;
constexpr int kMarkerBase = 4;
constexpr int kMarkerTip = 9;
constexpr int kTrackTop = 3;
constexpr int kTrackBottom = 11;
constexpr int kEndBoxTop = 4;
constexpr int kEndBoxBottom = 10;

using BarLock = WindowRecordLock<FountainRecord>;

RECT ClientOf(HWND window) {
  RECT client;
  GetClientRect(window, &client);
  return client;
}

RECT BarOf(HWND window) {
  RECT client = ClientOf(window);
  DibRect bar = FountainBarRect({client.left, client.top, client.right, client.bottom});
  return {bar.left, bar.top, bar.right, bar.bottom};
}

// A new strip of the bar's size in place of the old one.
void RebuildPreview(HWND window, FountainRecord* record) {
  RECT bar = BarOf(window);
  MemFree(record->preview);
  record->preview = FountainStrip(record, bar.right - bar.left, bar.bottom - bar.top);
}

void SetUp(HWND window, WPARAM setUp) {
  SetWindowPos(window, nullptr, 0, 0, kFountainButtonWidth, kFountainButtonHeight,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  char caption[64] = {};
  GetWindowTextA(window, caption, sizeof caption);
  bool useFile = (GetKeyState(VK_SHIFT) & 0x8000) == 0;
  MemHandle block = FountainSetUp(GetDlgCtrlID(window), caption, static_cast<long long>(setUp), useFile ? 1 : 0);
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(block));
  BarLock lock(window);
  if (lock.record != nullptr) RebuildPreview(window, lock.record);
  InvalidateRect(window, nullptr, TRUE);
}

void FillWith(HDC dc, RECT box, int systemColour) { FillRect(dc, &box, GetSysColorBrush(systemColour)); }
void FrameWith(HDC dc, RECT box, int systemColour) { FrameRect(dc, &box, GetSysColorBrush(systemColour)); }

// The strip, or a copy with its saturation halved when disabled; a bar
// without a strip is filled plain.
void PaintStrip(HDC dc, const RECT& bar, DibHandle preview, bool enabled) {
  DibOwner faded(enabled || preview == nullptr ? nullptr : DibAdjustHsv(preview, 1.0f, 0.5f, 1.0f));
  DibHandle shown = enabled ? preview : faded.get();
  if (shown != nullptr) DibDraw(dc, bar.left, bar.top, shown);
  else FillWith(dc, bar, COLOR_BTNFACE);
  FrameWith(dc, bar, enabled ? COLOR_BTNSHADOW : COLOR_BTNFACE);
}

void PaintEndBox(HDC dc, int x, int systemColour) {
  FillWith(dc, {x - kMarkerHalf, kEndBoxTop, x + kMarkerHalf, kEndBoxBottom}, systemColour);
}

void PaintMarkers(HDC dc, const RECT& client, const RECT& bar, const FountainRecord& record, bool enabled) {
  int positions[kFountainMaxMarkers];
  FountainMarkerPositions(&record, bar.right - bar.left, positions);
  HPEN pen = CreatePen(PS_SOLID, 1, GetSysColor(enabled ? COLOR_3DDKSHADOW : COLOR_BTNSHADOW));
  HGDIOBJ oldPen = SelectObject(dc, pen);
  HGDIOBJ oldBrush = SelectObject(dc, GetSysColorBrush(enabled ? COLOR_BTNSHADOW : COLOR_BTNFACE));
  for (int i = 0; i < record.markerCount && i < kFountainMaxMarkers; ++i) {
    int x = bar.left + positions[i];
    POINT triangle[3] = {{x - kMarkerHalf, client.top + kMarkerBase},
                         {x + kMarkerHalf, client.top + kMarkerBase},
                         {x, client.top + kMarkerTip}};
    Polygon(dc, triangle, 3);
  }
  SelectObject(dc, oldBrush);
  SelectObject(dc, oldPen);
  DeleteObject(pen);
}

void Paint(HWND window, HDC dc) {
  BarLock lock(window);
  if (lock.record == nullptr) return;
  bool enabled = IsWindowEnabled(window) != FALSE;
  RECT client = ClientOf(window);
  RECT bar = BarOf(window);
  FillWith(dc, client, COLOR_BTNHIGHLIGHT);
  FrameWith(dc, client, COLOR_BTNSHADOW);
  FillWith(dc, {client.left + 8, client.top + kTrackTop, client.right - 8, client.top + kTrackBottom}, COLOR_BTNFACE);
  PaintStrip(dc, bar, lock.record->preview, enabled);
  int boxColour = enabled ? COLOR_3DDKSHADOW : COLOR_BTNSHADOW;
  PaintEndBox(dc, bar.left, boxColour);
  if ((lock.record->flags & kFountainFlagLooped) == 0) PaintEndBox(dc, bar.right, boxColour);
  PaintMarkers(dc, client, bar, *lock.record, enabled);
}

// Frees the strip, keeps the file if the bar is persistent, frees the record.
void Destroy(HWND window) {
  MemHandle block = WindowBlock(window);
  if (block == nullptr) return;
  if (auto* record = static_cast<FountainRecord*>(MemLock(block))) {
    record->preview = MemFree(record->preview);
    MemUnlock(block);
  }
  FountainButtonSave(block, FountainPath(GetDlgCtrlID(window)));
  MemFree(block);
  SetWindowLongPtrA(window, GWLP_USERDATA, 0);
}

}  // namespace

LRESULT CALLBACK FountainButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      SetUp(window, wParam);
      return 0;
    case WM_PAINT:
      return PaintWindow(window, [&](HDC dc) { Paint(window, dc); });
    case WM_ERASEBKGND:
      return 1;
    case WM_NCPAINT:
      return 0;
    case WM_DESTROY:
      Destroy(window);
      break;
    default:
      break;
  }
  return ButtonDefault(window, message, wParam, lParam);
}
