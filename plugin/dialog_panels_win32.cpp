// The effect panels of the main dialog: made from the control table's
// run-time rows when the dialog opens, shown effect by effect.
#include <windows.h>

#include <commctrl.h>

#include "dialogkit/control_messages.h"
#include "dialogkit/wells_win32.h"
#include "fills/fountain_button_win32.h"
#include "fills/material_swatch_win32.h"
#include "fills/matrix_button_win32.h"
#include "fills/noise_swatch_win32.h"
#include "plugin/control_table.h"
#include "plugin/build_pipeline.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/plugin_state_win32.h"

namespace {

constexpr DWORD kUpDownStyle = 0x40000092;  // child, auto buddy, sets the buddy's number, no thousands
constexpr int kUpDownWidth = 12;
constexpr int kRowOffsetX = 4;
constexpr int kRowOffsetY = 12;

// The window procedure a custom control's class behaviour stands for; null
// where the control is not made yet, which leaves a plain owner-drawn button.
WNDPROC ClassProcedure(ControlClass subclass) {
  switch (subclass) {
    case kClassFillSwatch:
      return MaterialButtonProc;
    case kClassGradientBar:
      return FountainButtonProc;
    case kClassNoiseSwatch:
      return NoiseSwatchProc;
    case kClassColourWell:
      return ColourWellProc;
    case kClassDirectionWell:
      return DirectionWellProc;
    case kClassScrollWell:
      return ScrollWellProc;
    case kClassTwoWayWell:
      return TwoWayWellProc;
    case kClassMuralList:
      return MatrixButtonProc;
    default:
      return nullptr;
  }
}

HMENU IdAsMenu(int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); }

void CreateRow(HWND dialog, const ControlRow& row) {
  int x = row.x + kRowOffsetX;
  int y = row.y + kRowOffsetY;
  HWND control = CreateWindowExA(row.exstyle, row.className, row.caption, row.style & ~WS_VISIBLE, x, y, row.w, row.h,
                                 dialog, IdAsMenu(static_cast<int>(row.id)), g_module, nullptr);
  if (control == nullptr) return;  // left out; effects read 0 from it
  WNDPROC procedure = ClassProcedure(row.subclass);
  if ((row.flags & kRowSubclass) != 0 && procedure != nullptr) {
    SetWindowLongPtrA(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    SendMessageA(control, kMessageControlInit, static_cast<WPARAM>(row.limit), static_cast<LPARAM>(row.param));
  }
  SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(g_fontDialog), 0);
  if (row.kind == kControlNumber) {
    CreateWindowExA(0, UPDOWN_CLASSA, row.paramText, kUpDownStyle, x + row.w, y, kUpDownWidth, row.h, dialog,
                    IdAsMenu(static_cast<int>(row.id) + kUpDownIdOffset), g_module, nullptr);
  }
}

BOOL CALLBACK ShowChild(HWND child, LPARAM effect) {
  switch (EffectPanelVisibility(GetDlgCtrlID(child), static_cast<int>(effect))) {
    case kPanelShow:
      ShowWindow(child, SW_SHOW);
      break;
    case kPanelHide:
      ShowWindow(child, SW_HIDE);
      break;
    default:
      break;
  }
  return TRUE;
}

constexpr int kFontListId = 27;

}  // namespace

void DialogCreatePanels(HWND dialog) {
  for (const ControlRow& row : ControlTable) {
    if ((row.flags & kRowRunTime) != 0) CreateRow(dialog, row);
  }
}

void ShowEffectPanel(HWND dialog, int effect) { EnumChildWindows(dialog, ShowChild, static_cast<LPARAM>(effect)); }

int DialogEffectIndex(HWND dialog) {
  auto selection = static_cast<int>(SendDlgItemMessageA(dialog, kEffectListControl, CB_GETCURSEL, 0, 0));
  if (selection < 0) return 0;
  return selection > kEffectCount ? kEffectCount : selection;
}

void FontListFree(HWND dialog) {
  HWND combo = GetDlgItem(dialog, kFontListId);
  if (combo == nullptr) return;
  auto count = static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0));
  for (int index = 0; index < count; ++index) {
    auto copy = reinterpret_cast<MemHandle>(SendMessageA(combo, CB_GETITEMDATA, static_cast<WPARAM>(index), 0));
    if (copy != nullptr && copy != reinterpret_cast<MemHandle>(CB_ERR)) MemFree(copy);
    SendMessageA(combo, CB_SETITEMDATA, static_cast<WPARAM>(index), 0);
  }
}

void FontListDrawItem(const DRAWITEMSTRUCT* item) {
  bool selected = (item->itemState & ODS_SELECTED) != 0;
  FillRect(item->hDC, &item->rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (item->itemID == static_cast<UINT>(-1)) return;
  char name[LF_FACESIZE + 1] = {};
  if (SendMessageA(item->hwndItem, CB_GETLBTEXTLEN, item->itemID, 0) > LF_FACESIZE) return;
  SendMessageA(item->hwndItem, CB_GETLBTEXT, item->itemID, reinterpret_cast<LPARAM>(name));
  RECT text = item->rcItem;
  text.left += 2;
  SetBkMode(item->hDC, TRANSPARENT);
  SetTextColor(item->hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  HGDIOBJ previous = SelectObject(item->hDC, g_fontDialog);
  DrawTextA(item->hDC, name, -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  SelectObject(item->hDC, previous);
  if ((item->itemState & ODS_FOCUS) != 0) DrawFocusRect(item->hDC, &item->rcItem);
}
