#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <string>
#include <vector>

#include "dialogkit/centre.h"
#include "dialogkit/control_messages.h"
#include "dialogkit/dialog_host.h"
#include "dialogkit/message_box_win32.h"
#include "dialogkit/well_cells.h"
#include "dialogkit/wells_win32.h"
#include "plugin/plugin_state_win32.h"
#include "raster/dib_win32.h"

namespace {

const char* const kDamage = "String table error - this application may be damaged";

// The resources are linked into the test program itself.
class DialogKitTest : public ::testing::Test {
 protected:
  void SetUp() override { g_module = GetModuleHandleA(nullptr); }
};

// Tests that make windows need a desktop that this process can draw on. A Wine
// session shared with a process whose X display has gone away has none; that
// says nothing about the code under test.
class DialogKitWindowTest : public DialogKitTest {
 protected:
  void SetUp() override {
    DialogKitTest::SetUp();
    HWND probe = CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (probe == nullptr) GTEST_SKIP() << "no desktop to make windows on";
    DestroyWindow(probe);
  }
};

TEST_F(DialogKitTest, StringLookupGivesTheTableTexts) {
  const char* const expected[] = {"Ok",
                                  "Error opening file",
                                  "Corrupted file",
                                  "Error reading file",
                                  "Function cancelled",
                                  "Unsupported function",
                                  "Memory error",
                                  "Information error",
                                  "Unsupported format",
                                  "Error renaming file",
                                  "Error creating file",
                                  "Error writing file",
                                  "Too many colours",
                                  "Unsuitable image",
                                  "Resource error",
                                  "Library error"};
  for (int id = 0; id < 16; ++id) EXPECT_STREQ(StringLookup(id), expected[id]) << id;
  const char* const palettes[] = {"Black and white",      "Sixteen-color Windows", "32-color orthogonal",
                                  "64-color orthogonal",  "128-color orthogonal",  "216-color safe",
                                  "256-color orthogonal", "256-color with gray",   "256 gray levels"};
  for (int row = 0; row < 9; ++row) EXPECT_STREQ(StringLookup(1600 + row), palettes[row]) << row;
}

TEST_F(DialogKitTest, AMissingStringGivesTheDamageTextInTheSharedBuffer) {
  const char* missing = StringLookup(16);
  EXPECT_STREQ(missing, kDamage);
  EXPECT_STREQ(StringLookup(1609), kDamage);
  const char* memory = StringLookup(6);
  EXPECT_EQ(memory, missing);  // one buffer, overwritten by the later call
  EXPECT_STREQ(missing, "Memory error");
}

TEST_F(DialogKitTest, EachWellHasAStripOfSquareArrowIconsOnePerCell) {
  const std::int32_t background = 0x00C0C0C0;
  for (const WellLayout* layout : {&kEightWayWell, &kFourWayWell, &kTwoWayWell}) {
    DibOwner strip(DibFromResource(g_module, layout->iconResource, background));
    ASSERT_NE(strip.get(), nullptr) << layout->iconResource;
    DibLock lock(strip.get());
    int size = lock.head->biHeight;
    EXPECT_EQ(size, 25);
    EXPECT_EQ(lock.head->biWidth, size * layout->cellCount);
    for (int cell = 0; cell < layout->cellCount; ++cell) {
      int left = cell * size;
      EXPECT_EQ(DibGetPixel(lock.head, left + 2, 2), background) << cell;  // clear around the arrow
      EXPECT_EQ(DibGetPixel(lock.head, left + size - 3, size - 3), background) << cell;
      EXPECT_NE(DibGetPixel(lock.head, left + size / 2, size / 2), background) << cell;  // the arrow's shaft
    }
  }
}

// A plain top-level window that records the commands its children send.
std::vector<WPARAM> g_commands;

LRESULT CALLBACK RecordingParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) g_commands.push_back(wParam);
  return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeParent() {
  static const bool registered = [] {
    WNDCLASSA parentClass{};
    parentClass.lpfnWndProc = RecordingParentProc;
    parentClass.hInstance = GetModuleHandleA(nullptr);
    parentClass.lpszClassName = "DialogKitTestParent";
    return RegisterClassA(&parentClass) != 0;
  }();
  EXPECT_TRUE(registered);
  g_commands.clear();
  return CreateWindowExA(0, "DialogKitTestParent", "wells", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
}

// An owner-drawn button with the well procedure, as the control table makes it.
HWND MakeWell(HWND parent, int id, WNDPROC procedure, const char* text, int width, int height) {
  HWND well = CreateWindowExA(0, "button", text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW, 4, 12, width,
                              height, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                              GetModuleHandleA(nullptr), nullptr);
  SetWindowLongPtrA(well, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
  SendMessageA(well, kMessageControlInit, 0, 0);
  SendMessageA(well, kMessageControlRefresh, 0, 0);
  return well;
}

std::string TextOf(HWND window) {
  char text[64] = {};
  GetWindowTextA(window, text, sizeof text);
  return text;
}

void Click(HWND window, int x, int y) {
  SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void PumpMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

TEST_F(DialogKitWindowTest, ClickingACellWritesItsNumberAndTellsTheParent) {
  struct Case {
    WNDPROC procedure;
    const WellLayout* layout;
  };
  for (Case c : {Case{DirectionWellProc, &kEightWayWell}, Case{ScrollWellProc, &kFourWayWell},
                 Case{TwoWayWellProc, &kTwoWayWell}}) {
    HWND parent = MakeParent();
    HWND well = MakeWell(parent, 115, c.procedure, "0", 75, 75);
    ASSERT_NE(well, nullptr);
    for (int cell = c.layout->cellCount - 1; cell >= 0; --cell) {
      const DibRect& r = c.layout->cells[cell];
      Click(well, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
      EXPECT_EQ(TextOf(well), std::to_string(cell));
    }
    PumpMessages();
    ASSERT_EQ(g_commands.size(), static_cast<std::size_t>(c.layout->cellCount));
    EXPECT_EQ(LOWORD(g_commands[0]), 115);
    EXPECT_EQ(HIWORD(g_commands[0]), BN_CLICKED);
    DestroyWindow(parent);
  }
}

TEST_F(DialogKitWindowTest, TheCentreOfTheEightWayWellChangesNothingButStillClicks) {
  HWND parent = MakeParent();
  HWND well = MakeWell(parent, 137, DirectionWellProc, "6", 75, 75);
  Click(well, 37, 37);
  EXPECT_EQ(TextOf(well), "6");
  PumpMessages();
  EXPECT_EQ(g_commands.size(), 1u);
  // The refresh took 6 from the text: clicking cell 6 again is no change either.
  Click(well, 37, 62);
  EXPECT_EQ(TextOf(well), "6");
  Click(well, 62, 62);
  EXPECT_EQ(TextOf(well), "7");
  DestroyWindow(parent);
}

std::uint32_t g_offered;
std::int64_t g_verdict;

std::int64_t ColourHost(TaskRecord*, std::uint32_t code, std::int64_t, std::int64_t pointer) {
  auto* record = reinterpret_cast<ColourPickRecord*>(pointer);
  g_offered = record->colour;
  if (code == 11 && g_verdict != 0) record->colour = 0x00336699;
  return g_verdict;
}

TEST_F(DialogKitWindowTest, AColourWellKeepsItsColourWhenTheHostRefusesAndTakesAnAcceptedOne) {
  HostRecord host{};
  host.callback = ColourHost;
  DialogHostSet(&host);
  HWND parent = MakeParent();
  HWND well = MakeWell(parent, 119, ColourWellProc, "255", 40, 20);

  g_verdict = 0;
  Click(well, 10, 10);
  PumpMessages();
  EXPECT_EQ(g_offered, 255u);
  EXPECT_EQ(TextOf(well), "255");
  ASSERT_EQ(g_commands.size(), 1u);  // the command follows a refusal too
  EXPECT_EQ(g_commands[0], 119u);

  g_verdict = 1;
  Click(well, 10, 10);
  PumpMessages();
  EXPECT_EQ(TextOf(well), std::to_string(0x00336699));
  EXPECT_EQ(g_commands.size(), 2u);
  DestroyWindow(parent);
  DialogHostSet(nullptr);
}

// Closes the message box from inside its own modal loop, after noting what it shows.
struct SeenBox {
  std::string title;
  std::string text;
  RECT rect;
  int focusId;
};
SeenBox g_box;
WPARAM g_answer;

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
  char title[32] = {};
  GetWindowTextA(window, title, sizeof title);
  if (std::strcmp(title, "Message") != 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
  HWND box = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), FindBox, reinterpret_cast<LPARAM>(&box));
  if (box == nullptr) return;
  KillTimer(nullptr, timer);
  char text[256] = {};
  GetDlgItemTextA(box, kMessageBoxTextId, text, sizeof text);
  g_box = {"Message", text, {}, GetDlgCtrlID(GetFocus())};
  GetWindowRect(box, &g_box.rect);
  PostMessageA(box, WM_COMMAND, g_answer, 0);
}

TEST_F(DialogKitWindowTest, MessageBoxShowsTheTextCentredAndEndsOnOk) {
  g_box = {};
  g_answer = IDOK;
  SetTimer(nullptr, 0, 50, AnswerBox);
  MessageBoxShow(nullptr, "Memory error");
  EXPECT_EQ(g_box.text, "Memory error");
  EXPECT_EQ(g_box.focusId, IDOK);
  int width = g_box.rect.right - g_box.rect.left;
  int height = g_box.rect.bottom - g_box.rect.top;
  EXPECT_EQ(g_box.rect.left, CentreCoordinate(GetSystemMetrics(SM_CXSCREEN), 0, width));
  EXPECT_EQ(g_box.rect.top, CentreCoordinate(GetSystemMetrics(SM_CYSCREEN), 0, height));
}

TEST_F(DialogKitWindowTest, TheYesNoFormsEndWithThePressedId) {
  g_answer = IDNO;
  SetTimer(nullptr, 0, 50, AnswerBox);
  INT_PTR result = DialogBoxParamA(g_module, kMessageBoxYesNoCancelTemplate, nullptr, MessageBoxProc,
                                   reinterpret_cast<LPARAM>("Save the group?"));
  EXPECT_EQ(result, IDNO);
  EXPECT_EQ(g_box.text, "Save the group?");
  EXPECT_EQ(g_box.focusId, IDYES);

  g_answer = IDCANCEL;
  SetTimer(nullptr, 0, 50, AnswerBox);
  result = DialogBoxParamA(g_module, kMessageBoxYesNoTemplate, nullptr, MessageBoxProc,
                           reinterpret_cast<LPARAM>("Delete?"));
  EXPECT_EQ(result, IDCANCEL);
}

TEST_F(DialogKitWindowTest, TheMainDialogTemplateHoldsItsControlsAndRanges) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_UPDOWN_CLASS};
  ASSERT_TRUE(InitCommonControlsEx(&controls));
  HWND dialog = CreateDialogParamA(g_module, MAKEINTRESOURCEA(1000), nullptr, nullptr, 0);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(TextOf(dialog), "Lettermotion #3");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10011)), "1,1000,10");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10028)), "4,144,24");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10031)), "0,512,0");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10033)), "1,10000,10");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10034)), "50,150,100");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 10)), "Tr&ue color");
  EXPECT_EQ(TextOf(GetDlgItem(dialog, 43)), "Character space:");
  for (int id : {1, 2, 9, 10, 11, 13, 14, 15, 17, 18, 19, 20, 22, 23, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36,
                 46, 37, 38, 39, 40, 41, 42, 43, 44, 45})
    EXPECT_NE(GetDlgItem(dialog, id), nullptr) << id;
  // 416 by 308 dialog units.
  RECT units{0, 0, 416, 308};
  MapDialogRect(dialog, &units);
  RECT client;
  GetClientRect(dialog, &client);
  EXPECT_EQ(client.right, units.right);
  EXPECT_EQ(client.bottom, units.bottom);
  DestroyWindow(dialog);
}

}  // namespace
