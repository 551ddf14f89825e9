// The main dialog's pieces on real windows: the controls seam over a dialog
// made from template 1000, the fill swatch, and the preview's fallback.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <string>
#include <tuple>
#include <utility>

#include "fills/fountain_button.h"
#include "fills/fountain_button_win32.h"
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
struct MainDialogTest : ::testing::Test {
  void SetUp() override {
    g_module = GetModuleHandleA(nullptr);
    std::string error;
    ASSERT_EQ(HostMakeDataFolders(&error), 1) << error;  // the swatches save their files there
    HWND probe = CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (probe == nullptr) GTEST_SKIP() << "no desktop to make windows on";
    DestroyWindow(probe);
    ASSERT_NE(dialog, nullptr);
  }
  void TearDown() override {
    if (dialog != nullptr) DestroyWindow(dialog);
    SettingsReset();
  }
  // The template's controls without the main dialog's own start-up.
  HWND dialog = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(1000), nullptr, PlainDialogProc, 0);
};

std::string TextOf(HWND dialog, int id) {
  char text[300] = {};
  GetDlgItemTextA(dialog, id, text, sizeof text);
  return text;
}

TEST_F(MainDialogTest, ReadControlIntClampsWhatWasTypedButLeavesTheScreenAlone) {
  Controls controls = DialogControls(dialog);
  for (auto [typed, read] : {std::pair("2", 4), {"200", 144}}) {  // Size, 4 to 144
    SetDlgItemTextA(dialog, 28, typed);
    EXPECT_EQ(ReadControlInt(&controls, 28), read);
    EXPECT_EQ(TextOf(dialog, 28), typed);
  }
  // A control that does not exist reads as the bottom of the fallback range.
  EXPECT_EQ(ReadControlInt(&controls, 999), 0);
}

TEST_F(MainDialogTest, TheTableLoadsAndSavesTheGeneralControls) {
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
  // The size is clamped on the way out.
  EXPECT_EQ(std::tuple(MainFontSize, MainDither, MainEffect), std::tuple(144u, 0u, std::uint32_t{kEffectSimple}));
  EXPECT_STREQ(MainText, "Saved");
}

// The record in a movable block (freed here), or an empty one.
MaterialRecord RecordIn(MemHandle handle) {
  MemOwner owner(handle);
  const auto* record = static_cast<const MaterialRecord*>(MemLock(owner.get()));
  if (record == nullptr) return {};
  MaterialRecord copy = *record;
  MemUnlock(owner.get());
  return copy;
}

// A swatch with an id that no panel uses, so its file is the test's own.
constexpr int kSwatchId = 9977;

TEST_F(MainDialogTest, TheFillSwatchKeepsItsRecordChangesKindAndSavesOnDestruction) {
  std::remove(MaterialPath(kSwatchId));
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
  EXPECT_EQ(std::tuple(record.kind, record.colour, record.averageColour),
            std::tuple(kMaterialSimple, 0x336699u, 0x336699u));
  {
    DibLock preview(record.preview);
    ASSERT_NE(preview.head, nullptr);
    // The face less the arrow strip and the inset.
    EXPECT_EQ(std::pair(preview.head->biWidth, preview.head->biHeight), std::pair(56 - 16 - 4, 40 - 4));
  }

  // The kind menu's choice: the kind changes, the caption colour stays, the
  // dialog hears of it.
  SendMessageA(swatch, WM_COMMAND, 100 + kMaterialGradient, 0);
  record = current();
  EXPECT_EQ(std::tuple(record.kind, record.averageColour), std::tuple(kMaterialGradient, 0x336699u));
  MSG posted;
  ASSERT_TRUE(PeekMessageA(&posted, dialog, kMessageCustomChanged, kMessageCustomChanged, PM_REMOVE));
  EXPECT_EQ(posted.wParam, static_cast<WPARAM>(kMaterialGradient));

  // A deep copy: the same fill, with no preview of its own.
  record = RecordIn(reinterpret_cast<MemHandle>(SendMessageA(swatch, 1425, 0, 0)));
  EXPECT_EQ(std::tuple(record.kind, record.colour, record.preview), std::tuple(kMaterialGradient, 0x336699u, nullptr));

  DestroyWindow(swatch);  // saves the swatch's file
  record = RecordIn(MaterialLoad(MaterialPath(kSwatchId), 0, 1));
  EXPECT_EQ(std::tuple(record.kind, record.colour), std::tuple(kMaterialGradient, 0x336699u));
  std::remove(MaterialPath(kSwatchId));
}

// A looped, persistent bar: sized on set-up, its strip as wide as the bar,
// its file written when it goes and read by the next bar of that id.
TEST_F(MainDialogTest, TheGradientBarSetsUpLoopedAndKeepsItsFile) {
  constexpr int kBarId = 9978;
  std::remove(FountainPath(kBarId));
  auto makeBar = [&] {
    HWND bar = CreateWindowExA(0, "button", kFountainLoopedCaption, WS_CHILD | BS_OWNERDRAW, 0, 0, 10, 10, dialog,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(kBarId)), g_module, nullptr);
    SetWindowLongPtrA(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FountainButtonProc));
    SendMessageA(bar, 1424, kFountainSetUpPersist, 0);
    return bar;
  };
  HWND bar = makeBar();
  ASSERT_NE(bar, nullptr);
  RECT client;
  GetClientRect(bar, &client);
  EXPECT_EQ(std::pair(client.right, client.bottom), std::pair(197L, 50L));
  Controls controls = DialogControls(dialog);
  FountainRecord* record = FountainLock(&controls, kBarId);
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->flags, kFountainFlagPersist | kFountainFlagLooped);
  int width = 0, height = 0;
  DibSizeOf(record->preview, &width, &height);
  EXPECT_EQ(std::pair(width, height), std::pair(181, 30));
  record->markers[0] = 0x10123456;
  FountainUnlock(&controls, kBarId);
  UpdateWindow(bar);  // paints without trouble

  DestroyWindow(bar);
  bar = makeBar();
  record = FountainLock(&controls, kBarId);
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->markers[0], 0x10123456u);
  FountainUnlock(&controls, kBarId);
  DestroyWindow(bar);
  std::remove(FountainPath(kBarId));
}

TEST_F(MainDialogTest, WithoutAPictureThePreviewIsFramedAndFilledPlain) {
  SendDlgItemMessageA(dialog, 30, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);  // no effect selected
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateBitmap(40, 20, 1, 32, nullptr);
  SelectObject(dc, bitmap);
  DRAWITEMSTRUCT item{0, kPreviewControl, 0, 0, 0, nullptr, dc, {0, 0, 40, 20}, 0};
  PreviewDraw(dialog, &item);
  GdiFlush();
  EXPECT_EQ(GetPixel(dc, 20, 10), GetSysColor(COLOR_3DLIGHT));
  EXPECT_EQ(GetPixel(dc, 0, 0), GetSysColor(COLOR_BTNSHADOW));  // the frame stays outside the clip
  DeleteDC(dc);
  DeleteObject(bitmap);
}

}  // namespace
