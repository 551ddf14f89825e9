// The main dialog's procedure: start-up in two stages, the table's command
// handlers before the dialog's own commands, Build and Test, and the
// settings written when the window goes.
#include "plugin/main_dialog_win32.h"

#include <commctrl.h>

#include "dialogkit/control_messages.h"
#include "dialogkit/dialog_host.h"
#include "dialogkit/message_box_win32.h"
#include "plugin/build_pipeline.h"
#include "plugin/control_table.h"
#include "plugin/controls_startup.h"
#include "plugin/host_call.h"
#include "plugin/plugin_state_win32.h"
#include "plugin/settings.h"

namespace {

constexpr int kBuildButton = 1;
constexpr int kCancelButton = 2;
constexpr int kHelpButton = 9;
constexpr int kDelayUpDown = 11 + kUpDownIdOffset;
constexpr int kPaletteList = 13;
constexpr int kTextEdit = 23;
constexpr int kFontList = 27;
constexpr int kDelayEdit = 11;
constexpr int kPauseEdit = 33;
constexpr int kCharacterSpaceEdit = 34;
constexpr int kTestButton = 35;
constexpr int kBuildCommand = 47;  // posted by Build, so the press is drawn first
constexpr int kTestCommand = 48;   // posted by Test
constexpr int kMuralList = 357;
constexpr WORD kCloseUp = CBN_CLOSEUP;

constexpr const char* kTitle = "Lettermotion #3";
constexpr const char* kInternalError = "Internal error";
constexpr const char* kCharacterSpaceStart = "90";
constexpr const char* kHelpDocument = "LWMOTIO3.HTML#TEXT";

bool ShiftHeld() { return (GetKeyState(VK_SHIFT) & 0x8000) != 0; }

void EnableItem(HWND dialog, int id, bool enable) { EnableWindow(GetDlgItem(dialog, id), enable ? TRUE : FALSE); }

void EnableBuildByText(HWND dialog) {
  EnableItem(dialog, kBuildButton, GetWindowTextLengthA(GetDlgItem(dialog, kTextEdit)) > 0);
}

void ApplyHostFlags(HWND dialog) {
  std::uint8_t flags = DialogHost()->hostFlags;
  if (!(flags & kHostFlagTrueColour)) EnableItem(dialog, kTrueColourBox, false);
  SetDlgItemTextA(dialog, kDelayUpDown, DelayRangeForHost(flags));
  if (!(flags & kHostFlagPaletteFormat)) {
    EnableItem(dialog, kTransparentBox, false);
    CheckDlgButton(dialog, kSupercompressBox, BST_UNCHECKED);
    EnableItem(dialog, kSupercompressBox, false);
  }
  if (!(flags & kHostFlagTrueColour)) Truecolour = 0;
}

BOOL InitDialog(HWND dialog, HostRecord* host) {
  DialogHostSet(host);  // kept, theme and all, for the life of the dialog
  SettingsLoad();
  if (host == nullptr || host->callback == nullptr) {
    MessageBoxShow(dialog, kInternalError);
    PostMessageA(dialog, WM_DESTROY, 0, 0);
    return TRUE;
  }
  ApplyHostFlags(dialog);
  // The two general controls without a setting start the same each time.
  SetDlgItemTextA(dialog, kCharacterSpaceEdit, kCharacterSpaceStart);
  CheckDlgButton(dialog, kCustomPaletteBox, BST_CHECKED);
  SetFocus(GetDlgItem(dialog, kBuildButton));
  PostMessageA(dialog, WM_COMMAND, kCustomPaletteBox, 0);
  SetWindowTextA(dialog, kTitle);
  CentreWindow(dialog);
  PostMessageA(dialog, kMessageSecondStage, 0, 0);
  return FALSE;  // the focus is set
}

void SecondStage(HWND dialog) {
  if (ControlRow* mural = ControlRowFind(kMuralList)) mural->param = MainMuralIndex;
  DialogCreatePanels(dialog);
  Controls controls = DialogControls(dialog);
  ControlsLoad(&controls);
  if (ShiftHeld()) {
    bool trueColour = (DialogHost()->hostFlags & kHostFlagTrueColour) != 0;
    if (trueColour) CheckDlgButton(dialog, kTrueColourBox, BST_CHECKED);
    SetDlgItemInt(dialog, kDelayEdit, trueColour ? 40 : 4, FALSE);
    SetDlgItemInt(dialog, kPauseEdit, trueColour ? 1000 : 100, FALSE);
  }
  int effect = DialogEffectIndex(dialog);
  ShowEffectPanel(dialog, -1);
  ShowEffectPanel(dialog, effect);
  EnableBuildByText(dialog);
}

// The row's own handler; false ends the message there.
bool RunRowCommand(HWND dialog, const ControlRow& row) {
  switch (row.command) {
    case kCommandInvalidatePreview:
      PreviewInvalidate(dialog);
      return true;
    case kCommandGradientRefresh: {
      HWND noise = GetDlgItem(dialog, 261);
      SendMessageA(noise, kMessageControlRefresh, 0, 0);
      InvalidateRect(noise, nullptr, FALSE);
      PreviewInvalidate(dialog);
      return true;
    }
    case kCommandRestartTimer:
      PreviewRestartTimer(dialog);
      return true;
    default:
      return true;
  }
}

// The first row with a handler for this command; false if it ended the message.
bool TableCommand(HWND dialog, WPARAM wParam) {
  for (const ControlRow& row : ControlTable) {
    if (row.command == kCommandNone || row.id != LOWORD(wParam)) continue;
    if (row.kind == kControlDropList && HIWORD(wParam) != kCloseUp) continue;
    return RunRowCommand(dialog, row);
  }
  return true;
}

void TextChanged(HWND dialog) {
  if (!IsWindowVisible(dialog)) return;
  GetDlgItemTextA(dialog, kTextEdit, MainText, kSettingStringSize);
  PreviewInvalidate(dialog);
  EnableBuildByText(dialog);
}

void EffectChosen(HWND dialog) {
  int effect = DialogEffectIndex(dialog);
  if (static_cast<std::uint32_t>(effect) == MainEffect) return;
  ShowEffectPanel(dialog, -1);
  ShowEffectPanel(dialog, effect);
  MainEffect = static_cast<std::uint32_t>(effect);
  PreviewInvalidate(dialog);
}

void RunBuild(HWND dialog, int testRun) {
  HostCall(DialogHost(), kHostBuildStarted);
  UpdateWindow(GetDlgItem(dialog, testRun ? kTestButton : kBuildButton));
  Controls controls = DialogControls(dialog);
  if (!testRun) ControlsSave(&controls);
  BuildAnimation(&controls, DialogHost(), testRun);
  if (testRun) UpdateWindow(dialog);
  else EndDialog(dialog, 1);
}

void Command(HWND dialog, WPARAM wParam) {
  if (!TableCommand(dialog, wParam)) return;
  WORD notification = HIWORD(wParam);
  switch (LOWORD(wParam)) {
    case kBuildButton:
      PostMessageA(dialog, WM_COMMAND, kBuildCommand, 0);
      return;
    case kCancelButton:
      EndDialog(dialog, 0);
      return;
    case kHelpButton:
      HelpShow(dialog, kHelpDocument);
      return;
    case kPaletteList:
      if (notification != kCloseUp) return;
      {
        auto selection = static_cast<int>(SendDlgItemMessageA(dialog, kPaletteList, CB_GETCURSEL, 0, 0));
        MainPalette = selection < 0 ? 0 : static_cast<std::uint32_t>(selection);
      }
      return;
    case kCustomPaletteBox:
      EnableItem(dialog, kPaletteList, IsDlgButtonChecked(dialog, kCustomPaletteBox) != BST_CHECKED);
      return;
    case kTextEdit:
      TextChanged(dialog);
      return;
    case kEffectListControl:
      if (notification == kCloseUp) EffectChosen(dialog);
      return;
    case kTestButton:
      PostMessageA(dialog, WM_COMMAND, kTestCommand, 0);
      return;
    case kBuildCommand:
      RunBuild(dialog, 0);
      return;
    case kTestCommand:
      RunBuild(dialog, 1);
      return;
    default:
      return;
  }
}

void Destroy(HWND dialog) {
  KillTimer(dialog, kPreviewTimer);
  FontListFree(dialog);
  SettingsSave();
  DialogHostSet(nullptr);
}

}  // namespace

INT_PTR CALLBACK MainDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      return InitDialog(dialog, reinterpret_cast<HostRecord*>(lParam));
    case kMessageSecondStage:
      SecondStage(dialog);
      return TRUE;
    case WM_CTLCOLORSTATIC:
      SetTextColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOWTEXT));
      SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
      return reinterpret_cast<INT_PTR>(GetStockObject(NULL_BRUSH));
    case WM_MEASUREITEM: {
      auto* measure = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
      if (measure->CtlID != kFontList) return FALSE;
      measure->itemHeight = measure->itemID == static_cast<UINT>(-1) ? 18 : 22;
      return TRUE;
    }
    case WM_DRAWITEM: {
      const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (item->CtlID == kPreviewControl) PreviewDraw(dialog, item);
      else if (item->CtlID == kFontList) FontListDrawItem(item);
      else return FALSE;
      return TRUE;
    }
    case WM_TIMER:
      if (wParam != kPreviewTimer) return FALSE;
      KillTimer(dialog, kPreviewTimer);
      PreviewInvalidate(dialog);
      return TRUE;
    case kMessageCustomChanged:
      PreviewInvalidate(dialog);
      return TRUE;
    case kMessageMuralChanged:
      MainMuralIndex = static_cast<std::uint32_t>(wParam);
      PreviewInvalidate(dialog);
      return TRUE;
    case WM_COMMAND:
      Command(dialog, wParam);
      return TRUE;
    case WM_DESTROY:
      Destroy(dialog);
      return TRUE;
    default:
      return FALSE;
  }
}

INT_PTR MainDialogRun(HWND parent, HostRecord* host) {
  // The template and the panels use the up-down control; a host need not
  // have registered the common controls for us.
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  return DialogBoxParamA(g_module, MAKEINTRESOURCEA(1000), parent, MainDialogProc, reinterpret_cast<LPARAM>(host));
}
