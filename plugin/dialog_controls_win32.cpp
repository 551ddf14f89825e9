// The controls seam over the live dialog: every read and write goes to the
// child window with that id. Lists answer by their class, combo box or list
// box; a custom control's data block is its window's user data.
#include <windows.h>

#include <commctrl.h>

#include <cstring>

#include "dialogkit/control_messages.h"
#include "dialogkit/message_box_win32.h"
#include "plugin/control_table.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/settings.h"

namespace {

HWND DialogOf(void* impl) { return static_cast<HWND>(impl); }
HWND ItemOf(void* impl, int id) { return GetDlgItem(DialogOf(impl), id); }

bool IsListBox(HWND item) {
  char name[16];
  return GetClassNameA(item, name, sizeof name) > 0 && lstrcmpiA(name, "listbox") == 0;
}

// The message of a combo box, or the list box's counterpart.
UINT ListMessage(HWND item, UINT comboMessage, UINT listMessage) { return IsListBox(item) ? listMessage : comboMessage; }

int Text(void* impl, int id, char* buffer, int size) {
  if (size > 0) buffer[0] = '\0';
  return static_cast<int>(GetDlgItemTextA(DialogOf(impl), id, buffer, size));
}

int Checked(void* impl, int id) { return IsDlgButtonChecked(DialogOf(impl), id) == BST_CHECKED ? 1 : 0; }

int Selection(void* impl, int id) {
  HWND item = ItemOf(impl, id);
  if (item == nullptr) return -1;
  return static_cast<int>(SendMessageA(item, ListMessage(item, CB_GETCURSEL, LB_GETCURSEL), 0, 0));
}

MemHandle Data(void* impl, int id) {
  HWND item = ItemOf(impl, id);
  return item == nullptr ? nullptr : reinterpret_cast<MemHandle>(GetWindowLongPtrA(item, GWLP_USERDATA));
}

void SetText(void* impl, int id, const char* text) { SetDlgItemTextA(DialogOf(impl), id, text); }

void SetCheck(void* impl, int id, int checked) {
  CheckDlgButton(DialogOf(impl), id, checked ? BST_CHECKED : BST_UNCHECKED);
}

void SetSelection(void* impl, int id, int index) {
  HWND item = ItemOf(impl, id);
  if (item != nullptr) SendMessageA(item, ListMessage(item, CB_SETCURSEL, LB_SETCURSEL), static_cast<WPARAM>(index), 0);
}

void SelectText(void* impl, int id, const char* text) {
  HWND item = ItemOf(impl, id);
  if (item == nullptr) return;
  SendMessageA(item, ListMessage(item, CB_SELECTSTRING, LB_SELECTSTRING), static_cast<WPARAM>(-1),
               reinterpret_cast<LPARAM>(text));
}

void ClearList(void* impl, int id) {
  HWND item = ItemOf(impl, id);
  if (item != nullptr) SendMessageA(item, ListMessage(item, CB_RESETCONTENT, LB_RESETCONTENT), 0, 0);
}

void AddItem(void* impl, int id, const char* text) {
  HWND item = ItemOf(impl, id);
  if (item != nullptr) SendMessageA(item, ListMessage(item, CB_ADDSTRING, LB_ADDSTRING), 0, reinterpret_cast<LPARAM>(text));
}

// A font family for the list: each named family once, with a global copy of
// its name as the item's data.
int CALLBACK AddFontFamily(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM list) {
  HWND combo = reinterpret_cast<HWND>(list);
  const char* name = font->lfFaceName;
  if (name[0] == '\0' || name[0] == '@') return 1;
  if (SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name)) != CB_ERR)
    return 1;
  std::size_t length = std::strlen(name) + 1;
  MemHandle copy = MemAlloc(kMemMoveableZeroed, length);
  if (char* text = static_cast<char*>(MemLock(copy))) {
    std::memcpy(text, name, length);
    MemUnlock(copy);
  }
  LRESULT index = SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
  if (index >= 0) SendMessageA(combo, CB_SETITEMDATA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(copy));
  else MemFree(copy);
  return 1;
}

constexpr int kFontItemHeight = 22;
constexpr int kFontFieldHeight = 18;

void FillFontList(HWND dialog, int id) {
  HWND combo = GetDlgItem(dialog, id);
  if (combo == nullptr) return;
  FontListFree(dialog);
  SendMessageA(combo, CB_RESETCONTENT, 0, 0);
  SendMessageA(combo, CB_SETITEMHEIGHT, 0, kFontItemHeight);
  SendMessageA(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), kFontFieldHeight);
  HDC dc = GetDC(dialog);
  EnumFontFamiliesA(dc, nullptr, AddFontFamily, reinterpret_cast<LPARAM>(combo));
  ReleaseDC(dialog, dc);
  SendMessageA(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(MainFontName));
}

void Fill(void* impl, int id, int filler) {
  if (filler == kFillerFontList) {
    FillFontList(DialogOf(impl), id);
    return;
  }
  Controls controls = DialogControls(DialogOf(impl));
  ControlFillList(&controls, id, static_cast<ControlFiller>(filler));
}

void SetUpDown(void* impl, int id, int found, int minimum, int maximum, int position) {
  HWND item = ItemOf(impl, id);
  if (item == nullptr) return;
  if (found >= 2) SendMessageA(item, UDM_SETRANGE32, static_cast<WPARAM>(minimum), static_cast<LPARAM>(maximum));
  if (found >= 3) SendMessageA(item, UDM_SETPOS32, 0, static_cast<LPARAM>(position));
}

void LimitText(void* impl, int id, long long limit) {
  SendDlgItemMessageA(DialogOf(impl), id, EM_LIMITTEXT, static_cast<WPARAM>(limit), 0);
}

void Refresh(void* impl, int id, long long limit, long long param) {
  SendDlgItemMessageA(DialogOf(impl), id, kMessageControlRefresh, static_cast<WPARAM>(limit),
                      static_cast<LPARAM>(param));
}

void ShowMessage(void* impl, const char* text) { MessageBoxShow(DialogOf(impl), text); }

void* WaitCursor(void*, int wait, void* previous) {
  if (wait) return SetCursor(LoadCursor(nullptr, IDC_WAIT));
  return SetCursor(static_cast<HCURSOR>(previous));
}

constexpr ControlsOps kWindowOps = {Text,      Checked,  Selection, Data,     SetText,     SetCheck,
                                    SetSelection, SelectText, ClearList, AddItem, Fill,        SetUpDown,
                                    LimitText, Refresh,  ShowMessage, WaitCursor};

}  // namespace

Controls DialogControls(HWND dialog) { return Controls{&kWindowOps, dialog, dialog}; }
