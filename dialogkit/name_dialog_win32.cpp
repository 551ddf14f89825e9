#include "dialogkit/name_dialog_win32.h"

#include <cstdio>

#include "dialogkit/message_box_win32.h"
#include "plugin/plugin_state_win32.h"

namespace {

void EnableOk(HWND dialog) {
  EnableWindow(GetDlgItem(dialog, IDOK), GetWindowTextLengthA(GetDlgItem(dialog, kNameEditId)) > 0);
}

INT_PTR CALLBACK NameDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      SendDlgItemMessageA(dialog, kNameEditId, EM_LIMITTEXT, kNameLimit, 0);
      SetDlgItemTextA(dialog, kNameEditId, "Untitled");
      EnableOk(dialog);
      CentreWindow(dialog);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == kNameEditId && HIWORD(wParam) == EN_CHANGE) {
        EnableOk(dialog);
      } else if (LOWORD(wParam) == IDOK) {
        auto* name = reinterpret_cast<char*>(GetWindowLongPtrA(dialog, DWLP_USER));
        GetDlgItemTextA(dialog, kNameEditId, name, kNameLimit + 1);
        EndDialog(dialog, 1);
      } else if (LOWORD(wParam) == IDCANCEL) {
        EndDialog(dialog, 0);
      }
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

int NameDialogRun(HWND owner, char* name) {
  return DialogBoxParamA(g_module, MAKEINTRESOURCEA(kNameDialogTemplate), owner, NameDialogProc,
                         reinterpret_cast<LPARAM>(name)) == 1;
}
