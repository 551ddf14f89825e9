#include "dialogkit/message_box_win32.h"

#include <cstdint>

#include "dialogkit/dialog_host.h"
#include "plugin/host_call.h"
#include "plugin/plugin_state_win32.h"

namespace {

// Focus goes to the first of these buttons that the box has.
constexpr int kFocusOrder[] = {IDOK, IDYES};

constexpr const char* kHelpError = "There has been an error displaying the Help document.";

bool EndsTheBox(int id) { return id == IDOK || id == IDCANCEL || id == IDYES || id == IDNO; }

}  // namespace

void MessageBoxShow(HWND owner, const char* text) {
  DialogBoxParamA(g_module, kMessageBoxTemplate, owner, MessageBoxProc, reinterpret_cast<LPARAM>(text));
  UpdateWindow(owner);
}

void HelpShow(HWND owner, const char* document) {
  if (HostCall(DialogHost(), kHostShowHelp, 0, reinterpret_cast<std::int64_t>(document)) == 0)
    MessageBoxShow(owner, kHelpError);
}

INT_PTR CALLBACK MessageBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetDlgItemTextA(dialog, kMessageBoxTextId, reinterpret_cast<const char*>(lParam));
      for (int id : kFocusOrder) {
        if (HWND button = GetDlgItem(dialog, id)) {
          SetFocus(button);
          break;
        }
      }
      CentreWindow(dialog);
      return FALSE;  // the focus is set
    case WM_COMMAND: {
      int id = LOWORD(wParam);
      if (!EndsTheBox(id)) return FALSE;
      EndDialog(dialog, id);
      return TRUE;
    }
    default:
      return FALSE;
  }
}
