#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <utility>
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

// The resources are linked into the test program itself. Tests that make
// windows need a desktop that this process can draw on; a Wine session shared
// with a process whose X display has gone away has none, which says nothing
// about the code under test.
class DialogKitTest : public ::testing::Test {
 protected:
  void SetUp() override { g_module = GetModuleHandleA(nullptr); }
};
class DialogKitWindowTest : public DialogKitTest {
 protected:
  void SetUp() override {
    DialogKitTest::SetUp();
    HWND probe = CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (probe == nullptr) GTEST_SKIP() << "no desktop to make windows on";
    DestroyWindow(probe);
  }
};

TEST_F(DialogKitTest, StringLookupGivesTheTableTextsOrTheDamageTextInOneBuffer) {
  const std::pair<int, const char*> texts[] = {
      {0, "Ok"}, {6, "Memory error"}, {15, "Library error"}, {1600, "Black and white"}, {1608, "256 gray levels"}};
  for (auto [id, text] : texts) EXPECT_STREQ(StringLookup(id), text) << id;
  const char* missing = StringLookup(16);
  EXPECT_STREQ(missing, kDamage);
  EXPECT_STREQ(StringLookup(1609), kDamage);
  EXPECT_EQ(StringLookup(6), missing);  // one buffer, overwritten by the later call
  EXPECT_STREQ(missing, "Memory error");
}

TEST_F(DialogKitTest, EachWellHasAStripOfSquareArrowIconsOnePerCell) {
  const std::int32_t background = 0x00C0C0C0;
  for (const WellLayout* layout : {&kEightWayWell, &kFourWayWell, &kTwoWayWell}) {
    DibOwner strip(DibFromResource(g_module, layout->iconResource, background));
    ASSERT_NE(strip.get(), nullptr) << layout->iconResource;
    DibLock lock(strip.get());
    EXPECT_EQ(lock.head->biHeight, 25);
    EXPECT_EQ(lock.head->biWidth, 25 * layout->cellCount);
    for (int left = 0; left < lock.head->biWidth; left += 25) {
      EXPECT_EQ(DibGetPixel(lock.head, left + 2, 2), background) << left;  // clear around the arrow
      EXPECT_NE(DibGetPixel(lock.head, left + 12, 12), background) << left;  // the arrow's shaft
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
  WNDCLASSA parentClass{0, RecordingParentProc, 0, 0, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr,
                        "DialogKitTestParent"};
  RegisterClassA(&parentClass);  // refused after the first time, which is no harm
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

// A click, then the messages it posted.
void Click(HWND window, int x, int y) {
  SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

TEST_F(DialogKitWindowTest, ClickingACellWritesItsNumberAndTellsTheParent) {
  const std::pair<WNDPROC, const WellLayout*> cases[] = {
      {DirectionWellProc, &kEightWayWell}, {ScrollWellProc, &kFourWayWell}, {TwoWayWellProc, &kTwoWayWell}};
  for (auto [procedure, layout] : cases) {
    HWND parent = MakeParent();
    HWND well = MakeWell(parent, 115, procedure, "0", 75, 75);
    ASSERT_NE(well, nullptr);
    for (int cell = layout->cellCount - 1; cell >= 0; --cell) {
      const DibRect& r = layout->cells[cell];
      Click(well, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
      EXPECT_EQ(TextOf(well), std::to_string(cell));
    }
    ASSERT_EQ(g_commands.size(), static_cast<std::size_t>(layout->cellCount));
    EXPECT_EQ(g_commands[0], MAKEWPARAM(115, BN_CLICKED));
    DestroyWindow(parent);
  }
}

TEST_F(DialogKitWindowTest, TheCentreOfTheEightWayWellChangesNothingButStillClicks) {
  HWND parent = MakeParent();
  HWND well = MakeWell(parent, 137, DirectionWellProc, "6", 75, 75);
  Click(well, 37, 37);
  EXPECT_EQ(TextOf(well), "6");
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
  EXPECT_EQ(g_offered, 255u);
  EXPECT_EQ(TextOf(well), "255");
  ASSERT_EQ(g_commands.size(), 1u);  // the command follows a refusal too
  EXPECT_EQ(g_commands[0], 119u);
  g_verdict = 1;
  Click(well, 10, 10);
  EXPECT_EQ(TextOf(well), std::to_string(0x00336699));
  EXPECT_EQ(g_commands.size(), 2u);
  DestroyWindow(parent);
  DialogHostSet(nullptr);
}

// Closes the message box from inside its own modal loop, after noting what it shows.
struct SeenBox {
  std::string text;
  RECT rect;
  int focusId;
} g_box;
WPARAM g_answer;

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
  HWND box = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), [](HWND window, LPARAM found) -> BOOL {
    char title[32] = {};
    GetWindowTextA(window, title, sizeof title);
    if (std::string(title) != "Message") return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }, reinterpret_cast<LPARAM>(&box));
  if (box == nullptr) return;
  KillTimer(nullptr, timer);
  char text[256] = {};
  GetDlgItemTextA(box, kMessageBoxTextId, text, sizeof text);
  g_box = {text, {}, GetDlgCtrlID(GetFocus())};
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

}  // namespace
