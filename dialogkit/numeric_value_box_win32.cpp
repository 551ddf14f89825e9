#include "dialogkit/numeric_value_box_win32.h"

#include <commctrl.h>

#include "dialogkit/message_box_win32.h"
#include "plugin/plugin_state_win32.h"

namespace {

void SetUp(HWND dialog, const NumericValueRequest& request) {
  SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(&request));
  SetDlgItemTextA(dialog, kNumericValueLabelId, request.label);
  SendDlgItemMessageA(dialog, kNumericValueUpDownId, UDM_SETRANGE32, request.minimum, request.maximum);
  SendDlgItemMessageA(dialog, kNumericValueUpDownId, UDM_SETPOS32, 0, request.value);
  SetDlgItemInt(dialog, kNumericValueEditId, static_cast<UINT>(request.value), TRUE);
  HWND edit = GetDlgItem(dialog, kNumericValueEditId);
  SetFocus(edit);
  SendMessageA(edit, EM_SETSEL, 0, -1);
  CentreWindow(dialog);
}

// The typed number, held to the range; an unreadable one keeps the old value.
void TakeValue(HWND dialog, NumericValueRequest* request) {
  BOOL read = FALSE;
  int value = static_cast<int>(GetDlgItemInt(dialog, kNumericValueEditId, &read, TRUE));
  if (read == FALSE) return;
  if (value < request->minimum) value = request->minimum;
  if (value > request->maximum) value = request->maximum;
  request->value = value;
}

}  // namespace

int NumericValueBox(HWND owner, NumericValueRequest* request) {
  INT_PTR result = DialogBoxParamA(g_module, kNumericValueBoxTemplate, owner, NumericValueBoxProc,
                                   reinterpret_cast<LPARAM>(request));
  return result == IDOK ? 1 : 0;
}

INT_PTR CALLBACK NumericValueBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetUp(dialog, *reinterpret_cast<NumericValueRequest*>(lParam));
      return FALSE;  // the focus is set
    case WM_COMMAND: {
      int id = LOWORD(wParam);
      if (id != IDOK && id != IDCANCEL) return FALSE;
      if (id == IDOK) TakeValue(dialog, reinterpret_cast<NumericValueRequest*>(GetWindowLongPtrA(dialog, DWLP_USER)));
      EndDialog(dialog, id);
      return TRUE;
    }
    default:
      return FALSE;
  }
}
