// The fill swatch control. The face shows a preview of the fill, rendered
// when the fill changes and never at paint time; the arrow strip at the right
// opens the kind menu. The record is the window's user data.
#include "fills/material_swatch_win32.h"

#include "dialogkit/control_messages.h"
#include "dialogkit/dialog_host.h"
#include "dialogkit/well_common_win32.h"
#include "fills/material.h"
#include "plugin/plugin_state_win32.h"
#include "raster/dib_win32.h"

namespace {

constexpr UINT kMessageKindMenu = 1325;
constexpr UINT kMessageCopy = 1425;  // a deep copy of the record; nothing sends it yet
constexpr UINT kMessageChanged = 1327;  // to the parent: the fill may have changed
constexpr WORD kEditorCommand = 99;
constexpr WORD kFirstKindCommand = 100;
constexpr int kArrowWidth = 16;
constexpr int kArrowMaxHeight = 20;
constexpr int kInset = 2;
constexpr UINT kSoftEdges = BF_RECT | BF_SOFT;  // 4111
constexpr int kDarkLuminance = 129;

using SwatchLock = WindowRecordLock<MaterialRecord>;

RECT ArrowStrip(HWND window) {
  RECT strip;
  GetClientRect(window, &strip);
  strip.left = strip.right - kArrowWidth;
  return strip;
}

RECT Face(HWND window) {
  RECT face;
  GetClientRect(window, &face);
  face.right -= kArrowWidth;
  return face;
}

RECT Inner(HWND window) {
  RECT inner = Face(window);
  InflateRect(&inner, -kInset, -kInset);
  return inner;
}

// A new preview for the inner rectangle in place of the old one.
void ReplacePreview(HWND window, MaterialRecord* record, bool recomputeAverage) {
  RECT inner = Inner(window);
  DibHandle preview = MaterialRender(record, inner.right - inner.left, inner.bottom - inner.top);
  MemFree(record->preview);
  record->preview = preview;
  if (recomputeAverage) record->averageColour = MaterialAverageColour(preview);
}

void NotifyParent(HWND window, std::uint32_t kind) {
  PostMessageA(GetParent(window), kMessageChanged, kind, reinterpret_cast<LPARAM>(window));
}

void SetUp(HWND window, std::uint32_t colour) {
  bool useFile = (GetKeyState(VK_SHIFT) & 0x8000) == 0;
  MemHandle block = MaterialSetUp(GetDlgCtrlID(window), colour, useFile ? 1 : 0);
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(block));
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  ReplacePreview(window, lock.record, true);
  InvalidateRect(window, nullptr, TRUE);
}

// A new block with the record, its own copy of the tile and no preview; null
// on failure.
MemHandle CopyRecord(HWND window) {
  SwatchLock lock(window);
  if (lock.record == nullptr) return nullptr;
  MemOwner copy(MemAlloc(kMemMoveableZeroed, sizeof(MaterialRecord)));
  auto* record = static_cast<MaterialRecord*>(MemLock(copy.get()));
  if (record == nullptr) return nullptr;
  *record = *lock.record;
  record->preview = nullptr;
  record->matrix.tile = lock.record->matrix.tile != nullptr ? DibClone(lock.record->matrix.tile) : nullptr;
  bool failed = lock.record->matrix.tile != nullptr && record->matrix.tile == nullptr;
  MemUnlock(copy.get());
  return failed ? nullptr : copy.release();
}

void ShowKindMenu(HWND window) {
  std::uint32_t kind = 0;
  {
    SwatchLock lock(window);
    if (lock.record == nullptr) return;
    kind = lock.record->kind;
  }
  HMENU menu = CreatePopupMenu();
  for (int row = 0; row < kMaterialKindCount; ++row) {
    UINT flags = MF_STRING | (static_cast<std::uint32_t>(row) == kind ? MF_CHECKED : MF_UNCHECKED);
    AppendMenuA(menu, flags, kFirstKindCommand + row, MaterialKinds[row].name);
  }
  RECT client;
  GetClientRect(window, &client);
  POINT place{client.right, (client.top + client.bottom) / 2};
  ClientToScreen(window, &place);
  TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON, place.x, place.y, 0, window, nullptr);
  DestroyMenu(menu);
}

// A kind from the menu: a new preview, the caption colour kept.
void ChooseKind(HWND window, std::uint32_t kind) {
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  lock.record->kind = kind;
  ReplacePreview(window, lock.record, false);
  RECT inner = Inner(window);
  InvalidateRect(window, &inner, FALSE);
  NotifyParent(window, kind);
}

// The editor of the current kind. The solid colour is chosen through the
// host; the other kinds' editors are not offered here, which counts as a
// cancellation.
void RunEditor(HWND window) {
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  bool confirmed = lock.record->kind == kMaterialSimple && ColourPick(window, &lock.record->colour) != 0;
  if (confirmed) {
    ReplacePreview(window, lock.record, true);
    RECT inner = Inner(window);
    InvalidateRect(window, &inner, FALSE);
  }
  NotifyParent(window, lock.record->kind);
}

void MouseDown(HWND window, LPARAM lParam) {
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  SetCapture(window);
  POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
  RECT strip = ArrowStrip(window);
  RECT face = Face(window);
  if (PtInRect(&strip, point)) lock.record->state |= kMaterialStateArrow;
  else if (PtInRect(&face, point)) lock.record->state |= kMaterialStateFace;
  InvalidateRect(window, nullptr, FALSE);
}

// Acted on wherever the pointer has gone, as long as the capture is held.
void MouseUp(HWND window) {
  if (GetCapture() != window) return;
  ReleaseCapture();
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  if (lock.record->state & kMaterialStateArrow) PostMessageA(window, kMessageKindMenu, 0, 0);
  if (lock.record->state & kMaterialStateFace) PostMessageA(window, WM_COMMAND, kEditorCommand, 0);
  lock.record->state &= ~(kMaterialStateArrow | kMaterialStateFace);
  InvalidateRect(window, nullptr, FALSE);
}

void DrawArrow(HDC dc, RECT strip, bool pressed, bool enabled) {
  FillRect(dc, &strip, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(dc, &strip, pressed ? EDGE_SUNKEN : EDGE_RAISED, kSoftEdges);
  if (strip.bottom - strip.top > kArrowMaxHeight) {
    int middle = (strip.top + strip.bottom) / 2;
    strip.top = middle - kArrowMaxHeight / 2;
    strip.bottom = strip.top + kArrowMaxHeight;
  }
  int p = pressed ? 1 : 0;
  int middle = (strip.top + strip.bottom) / 2;
  POINT points[3] = {{strip.left + 5 + p, strip.top + 5 + p},
                     {strip.right - 6 + p, middle + p},
                     {strip.left + 5 + p, strip.bottom - 5 + p}};
  HBRUSH fill = GetSysColorBrush(enabled ? COLOR_3DDKSHADOW : COLOR_3DHILIGHT);
  HPEN outline = CreatePen(PS_SOLID, 1, GetSysColor(enabled ? COLOR_3DDKSHADOW : COLOR_3DHILIGHT));
  HGDIOBJ previousBrush = SelectObject(dc, fill);
  HGDIOBJ previousPen = SelectObject(dc, outline);
  Polygon(dc, points, 3);
  HPEN shade = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW));
  SelectObject(dc, shade);
  MoveToEx(dc, points[0].x, points[0].y, nullptr);
  LineTo(dc, points[1].x, points[1].y);
  SelectObject(dc, previousPen);
  SelectObject(dc, previousBrush);
  DeleteObject(shade);
  DeleteObject(outline);
}

bool IsDark(std::uint32_t colour) {
  int red = colour & 0xFF;
  int green = colour >> 8 & 0xFF;
  int blue = colour >> 16 & 0xFF;
  return red * 77 / 255 + green * 150 / 255 + blue * 28 / 255 < kDarkLuminance;
}

void DrawCaption(HWND window, HDC dc, const RECT& inner, std::uint32_t averageColour) {
  char caption[128];
  if (GetWindowTextA(window, caption, sizeof caption) <= 0) return;
  RECT place = inner;
  HGDIOBJ previous = SelectObject(dc, g_fontDialog);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, IsDark(averageColour) ? RGB(255, 255, 255) : RGB(0, 0, 0));
  DrawTextA(dc, caption, -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(dc, previous);
}

void Paint(HWND window, HDC dc) {
  SwatchLock lock(window);
  if (lock.record == nullptr) return;
  bool enabled = IsWindowEnabled(window) != FALSE;
  RECT client;
  GetClientRect(window, &client);
  FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  DrawArrow(dc, ArrowStrip(window), (lock.record->state & kMaterialStateArrow) != 0, enabled);
  RECT face = Face(window);
  DrawEdge(dc, &face, (lock.record->state & kMaterialStateFace) ? EDGE_SUNKEN : EDGE_RAISED, kSoftEdges);
  RECT inner = Inner(window);
  if (enabled && lock.record->preview != nullptr) DibDraw(dc, inner.left, inner.top, lock.record->preview);
  else FillRect(dc, &inner, GetSysColorBrush(COLOR_BTNFACE));
  if (enabled) DrawCaption(window, dc, inner, lock.record->averageColour);
}

// Saves the file and frees the record with its preview and tile.
void Destroy(HWND window) {
  MemHandle block = WindowBlock(window);
  if (block == nullptr) return;
  MaterialSave(block, MaterialPath(GetDlgCtrlID(window)));
  MaterialRelease(block);
  SetWindowLongPtrA(window, GWLP_USERDATA, 0);
}

}  // namespace

LRESULT CALLBACK MaterialButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessageControlInit:
      SetUp(window, static_cast<std::uint32_t>(lParam));
      return 0;
    case kMessageKindMenu:
      ShowKindMenu(window);
      return 0;
    case kMessageCopy:
      return reinterpret_cast<LRESULT>(CopyRecord(window));
    case WM_COMMAND: {
      WORD command = LOWORD(wParam);
      if (command == kEditorCommand) RunEditor(window);
      else if (command >= kFirstKindCommand && command < kFirstKindCommand + kMaterialKindCount)
        ChooseKind(window, command - kFirstKindCommand);
      return 0;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      MouseDown(window, lParam);
      return 0;
    case WM_LBUTTONUP:
      MouseUp(window);
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT paint;
      HDC dc = BeginPaint(window, &paint);
      Paint(window, dc);
      EndPaint(window, &paint);
      return 0;
    }
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
