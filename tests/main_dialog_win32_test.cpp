// The main dialog's pieces on real windows: the controls seam over a dialog
// made from template 1000, the fill swatch, and the preview's fallback.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <string>

#include "fills/material.h"
#include "host/data_folders.h"
#include "fills/material_swatch_win32.h"
#include "plugin/control_table.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/plugin_state_win32.h"
#include "plugin/settings.h"

namespace {

INT_PTR CALLBACK PlainDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// Windows need a desktop this process can draw on; without one the tests
// say nothing about the code and are skipped.
class MainDialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_module = GetModuleHandleA(nullptr);
    std::string error;
    ASSERT_EQ(HostMakeDataFolders(&error), 1) << error;  // the swatches save their files there
    HWND probe = CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (probe == nullptr) GTEST_SKIP() << "no desktop to make windows on";
    DestroyWindow(probe);
  }
  void TearDown() override {
    if (dialog != nullptr) DestroyWindow(dialog);
    SettingsReset();
  }
  // The template's controls without the main dialog's own start-up.
  HWND MakeTemplateDialog() {
    return dialog = CreateDialogParamA(g_module, MAKEINTRESOURCEA(1000), nullptr, PlainDialogProc, 0);
  }
  HWND dialog = nullptr;
};

std::string TextOf(HWND dialog, int id) {
  char text[300] = {};
  GetDlgItemTextA(dialog, id, text, sizeof text);
  return text;
}

TEST_F(MainDialogTest, ReadControlIntClampsWhatWasTypedButLeavesTheScreenAlone) {
  ASSERT_NE(MakeTemplateDialog(), nullptr);
  Controls controls = DialogControls(dialog);
  SetDlgItemTextA(dialog, 28, "2");  // Size, 4 to 144
  EXPECT_EQ(ReadControlInt(&controls, 28), 4);
  EXPECT_EQ(TextOf(dialog, 28), "2");
  SetDlgItemTextA(dialog, 28, "200");
  EXPECT_EQ(ReadControlInt(&controls, 28), 144);
  // A control that does not exist reads as the bottom of the fallback range.
  EXPECT_EQ(ReadControlInt(&controls, 999), 0);
}

TEST_F(MainDialogTest, TheTableLoadsAndSavesTheGeneralControls) {
  ASSERT_NE(MakeTemplateDialog(), nullptr);
  MainFontSize = 30;
  MainDither = 1;
  MainEffect = 3;
  Controls controls = DialogControls(dialog);
  ControlsLoad(&controls);
  EXPECT_EQ(TextOf(dialog, 28), "30");
  EXPECT_EQ(IsDlgButtonChecked(dialog, 15), BST_CHECKED);
  EXPECT_EQ(TextOf(dialog, 30), EffectTable[3].name);
  SetDlgItemTextA(dialog, 28, "500");
  CheckDlgButton(dialog, 15, BST_UNCHECKED);
  SendDlgItemMessageA(dialog, 30, CB_SETCURSEL, kEffectSimple, 0);
  SetDlgItemTextA(dialog, 23, "Saved");
  ControlsSave(&controls);
  EXPECT_EQ(MainFontSize, 144u);  // clamped on the way out
  EXPECT_EQ(MainDither, 0u);
  EXPECT_EQ(MainEffect, static_cast<std::uint32_t>(kEffectSimple));
  EXPECT_STREQ(MainText, "Saved");
}

// A swatch with an id that no panel uses, so its file is the test's own.
constexpr int kSwatchId = 9977;

TEST_F(MainDialogTest, TheFillSwatchKeepsItsRecordChangesKindAndSavesOnDestruction) {
  std::remove(MaterialPath(kSwatchId));
  ASSERT_NE(MakeTemplateDialog(), nullptr);
  HWND swatch = CreateWindowExA(0, "button", "", WS_CHILD | BS_OWNERDRAW, 0, 0, 56, 40, dialog,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(kSwatchId)), g_module, nullptr);
  ASSERT_NE(swatch, nullptr);
  SetWindowLongPtrA(swatch, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MaterialButtonProc));
  SendMessageA(swatch, 1424, 0, 0x336699);
  Controls controls = DialogControls(dialog);
  auto current = [&] {  // the swatch's record as it stands
    const MaterialRecord* record = MaterialLock(&controls, kSwatchId);
    MaterialRecord copy = record != nullptr ? *record : MaterialRecord{};
    MaterialUnlock(&controls, kSwatchId);
    return copy;
  };
  MaterialRecord record = current();
  EXPECT_EQ(record.kind, kMaterialSimple);
  EXPECT_EQ(record.colour, 0x336699u);
  EXPECT_EQ(record.averageColour, 0x336699u);
  {
    DibLock preview(record.preview);
    ASSERT_NE(preview.head, nullptr);
    EXPECT_EQ(preview.head->biWidth, 56 - 16 - 4);  // the face less the arrow strip and the inset
    EXPECT_EQ(preview.head->biHeight, 40 - 4);
  }

  // The kind menu's choice: the kind changes, the caption colour stays, the
  // dialog hears of it.
  SendMessageA(swatch, WM_COMMAND, 100 + kMaterialGradient, 0);
  EXPECT_EQ(current().kind, kMaterialGradient);
  EXPECT_EQ(current().averageColour, 0x336699u);
  MSG posted;
  ASSERT_TRUE(PeekMessageA(&posted, dialog, kMessageCustomChanged, kMessageCustomChanged, PM_REMOVE));
  EXPECT_EQ(posted.wParam, static_cast<WPARAM>(kMaterialGradient));

  // A press on the arrow strip and its release ask for the menu.
  SendMessageA(swatch, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 20));
  EXPECT_EQ(current().state, kMaterialStateArrow);
  SendMessageA(swatch, WM_LBUTTONUP, 0, MAKELPARAM(50, 20));
  EXPECT_TRUE(PeekMessageA(&posted, swatch, 1325, 1325, PM_REMOVE));
  EXPECT_EQ(current().state, 0u);

  // A deep copy: the same fill, with no preview of its own.
  MemOwner copy(reinterpret_cast<MemHandle>(SendMessageA(swatch, 1425, 0, 0)));
  const auto* copied = static_cast<const MaterialRecord*>(MemLock(copy.get()));
  ASSERT_NE(copied, nullptr);
  EXPECT_EQ(copied->kind, kMaterialGradient);
  EXPECT_EQ(copied->colour, 0x336699u);
  EXPECT_EQ(copied->preview, nullptr);
  MemUnlock(copy.get());

  DestroyWindow(swatch);
  MemOwner saved(MaterialLoad(MaterialPath(kSwatchId), 0, 1));
  const auto* reloaded = static_cast<const MaterialRecord*>(MemLock(saved.get()));
  ASSERT_NE(reloaded, nullptr);
  EXPECT_EQ(reloaded->kind, kMaterialGradient);
  EXPECT_EQ(reloaded->colour, 0x336699u);
  MemUnlock(saved.get());
  std::remove(MaterialPath(kSwatchId));
}

TEST_F(MainDialogTest, WithoutAPictureThePreviewIsFramedAndFilledPlain) {
  ASSERT_NE(MakeTemplateDialog(), nullptr);
  SendDlgItemMessageA(dialog, 30, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);  // no effect selected
  BITMAPINFO info{{sizeof(BITMAPINFOHEADER), 40, 20, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
  void* bits = nullptr;
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP section = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ previous = SelectObject(dc, section);
  DRAWITEMSTRUCT item{0, kPreviewControl, 0, 0, 0, nullptr, dc, {0, 0, 40, 20}, 0};
  PreviewDraw(dialog, &item);
  GdiFlush();
  EXPECT_EQ(GetPixel(dc, 20, 10), GetSysColor(COLOR_3DLIGHT));
  EXPECT_EQ(GetPixel(dc, 0, 0), GetSysColor(COLOR_BTNSHADOW));  // the frame stays outside the clip
  SelectObject(dc, previous);
  DeleteObject(section);
  DeleteDC(dc);
}

}  // namespace
