// The noise swatch and the numeric value box on real windows.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <filesystem>

#include "dialogkit/numeric_value_box_win32.h"
#include "fills/noise_record.h"
#include "fills/noise_swatch_win32.h"
#include "host/data_folders.h"
#include "plugin/control_table.h"
#include "plugin/main_dialog_win32.h"
#include "plugin/plugin_state_win32.h"

namespace {

INT_PTR CALLBACK PlainDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

struct NoiseSwatchTest : ::testing::Test {
  void SetUp() override {
    g_module = GetModuleHandleA(nullptr);
    std::string error;
    ASSERT_EQ(HostMakeDataFolders(&error), 1) << error;
    dialog = CreateDialogParamA(g_module, MAKEINTRESOURCEA(1000), nullptr, PlainDialogProc, 0);
    if (dialog == nullptr) GTEST_SKIP() << "no desktop to make windows on";
  }
  void TearDown() override {
    if (dialog != nullptr) DestroyWindow(dialog);
  }
  HWND dialog = nullptr;
};

constexpr int kSwatchId = 9978;  // no panel uses it, so its file is the test's own

TEST_F(NoiseSwatchTest, MakesItsPictureAtTheClientSizeAndSavesOnDestruction) {
  std::remove(NoiseSwatchPath(kSwatchId));
  HWND swatch = CreateWindowExA(0, "button", "", WS_CHILD | BS_OWNERDRAW, 0, 0, 56, 40, dialog,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(kSwatchId)), g_module, nullptr);
  ASSERT_NE(swatch, nullptr);
  SetWindowLongPtrA(swatch, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NoiseSwatchProc));
  SendMessageA(swatch, 1424, 0, kColouringFromGradient259);
  Controls controls = DialogControls(dialog);
  MemHandle block = ControlData(&controls, kSwatchId);
  auto* record = static_cast<NoiseRecord*>(MemLock(block));
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->seed, 10356);
  EXPECT_EQ(record->colouring, NoiseColourFromGradient259);
  int width = 0, height = 0;
  EXPECT_EQ(DibSizeOf(record->picture, &width, &height), 1);
  EXPECT_EQ(std::pair(width, height), std::pair(56, 40));
  record->seed = 4321;
  MemUnlock(block);
  DestroyWindow(swatch);
  ASSERT_EQ(std::filesystem::file_size(NoiseSwatchPath(kSwatchId)), 345u);
  NoiseRecord saved;
  NoiseDefaults(&saved, "");
  NoiseRecordLoad(&saved, NoiseSwatchPath(kSwatchId), 1);
  EXPECT_EQ(saved.seed, 4321);
  std::remove(NoiseSwatchPath(kSwatchId));
}

TEST_F(NoiseSwatchTest, TheValueBoxShowsItsRequestAndHoldsTheAnswerToTheRange) {
  NumericValueRequest request{"Depth:", 1, 32, 8};
  HWND box = CreateDialogParamA(g_module, kNumericValueBoxTemplate, dialog, NumericValueBoxProc,
                                reinterpret_cast<LPARAM>(&request));
  ASSERT_NE(box, nullptr);
  char label[32] = {};
  GetDlgItemTextA(box, kNumericValueLabelId, label, sizeof label);
  EXPECT_STREQ(label, "Depth:");
  EXPECT_EQ(GetDlgItemInt(box, kNumericValueEditId, nullptr, TRUE), 8u);
  SetDlgItemTextA(box, kNumericValueEditId, "500");
  SendMessageA(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(request.value, 32);
  DestroyWindow(box);
}

}  // namespace
