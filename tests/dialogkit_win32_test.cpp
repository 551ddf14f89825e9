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

// The resources are linked into the test program itself. Tests that make
// windows need a desktop that this process can draw on; a Wine session shared
// with a process whose X display has gone away has none, which says nothing
// about the code under test.
struct DialogKitTest : ::testing::Test {
  void SetUp() override { g_module = GetModuleHandleA(nullptr); }
};
struct DialogKitWindowTest : DialogKitTest {
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
  const char* damage = "String table error - this application may be damaged";
  EXPECT_STREQ(StringLookup(1609), damage);
  const char* missing = StringLookup(16);
  EXPECT_STREQ(missing, damage);
  EXPECT_EQ(StringLookup(6), missing);  // one buffer, overwritten by the later call
  EXPECT_STREQ(missing, "Memory error");
}

TEST_F(DialogKitTest, EachWellHasAStripOfSquareArrowIconsOnePerCell) {
  const std::int32_t background = 0x00C0C0C0;
  for (const WellLayout* layout : {&kEightWayWell, &kFourWayWell, &kTwoWayWell}) {
    DibOwner strip(DibFromResource(g_module, layout->iconResource, background));
    ASSERT_NE(strip.get(), nullptr) << layout->iconResource;
    DibLock lock(strip.get());
    EXPECT_EQ(std::pair(lock.head->biWidth, lock.head->biHeight), std::pair(25 * layout->cellCount, 25));
    int left = lock.head->biWidth - 25;  // the last icon
    EXPECT_EQ(DibGetPixel(lock.head, left + 2, 2), background);   // clear around the arrow
    EXPECT_NE(DibGetPixel(lock.head, left + 12, 12), background);  // the arrow's shaft
  }
}

// A plain top-level window that records the commands its children send.
std::vector<WPARAM> g_commands;

LRESULT CALLBACK RecordingParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) g_commands.push_back(wParam);
  return DefWindowProcA(window, message, wParam, lParam);
}

// The parent, and in it an owner-drawn button with the well procedure, as the
// control table makes it.
HWND MakeWell(int id, WNDPROC procedure, const char* text, int width, int height) {
  WNDCLASSA parentClass{0, RecordingParentProc, 0, 0, g_module, nullptr, nullptr, nullptr, nullptr, "DialogKitParent"};
  RegisterClassA(&parentClass);  // refused after the first time, which is no harm
  g_commands.clear();
  HWND parent = CreateWindowExA(0, "DialogKitParent", "wells", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr,
                                g_module, nullptr);
  HWND well = CreateWindowExA(0, "button", text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW, 4, 12, width,
                              height, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), g_module, nullptr);
  SetWindowLongPtrA(well, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
  SendMessageA(well, kMessageControlInit, 0, 0);
  SendMessageA(well, kMessageControlRefresh, 0, 0);
  return well;
}

// A click, then the messages it posted; the well's text afterwards.
std::string Click(HWND window, int x, int y) {
  SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
  char text[64] = {};
  GetWindowTextA(window, text, sizeof text);
  return text;
}

TEST_F(DialogKitWindowTest, ClickingACellWritesItsNumberAndTellsTheParentButTheEightWayCentreChangesNothing) {
  const std::pair<WNDPROC, const WellLayout*> cases[] = {
      {DirectionWellProc, &kEightWayWell}, {ScrollWellProc, &kFourWayWell}, {TwoWayWellProc, &kTwoWayWell}};
  for (auto [procedure, layout] : cases) {
    HWND well = MakeWell(115, procedure, "1", 75, 75);
    bool centre = layout == &kEightWayWell;  // the empty centre still sends the command
    if (centre) {
      EXPECT_EQ(Click(well, 37, 37), "1");
    }
    for (int cell = layout->cellCount - 1; cell >= 0; --cell) {
      const DibRect& r = layout->cells[cell];
      EXPECT_EQ(Click(well, (r.left + r.right) / 2, (r.top + r.bottom) / 2), std::to_string(cell));
    }
    EXPECT_EQ(g_commands, std::vector<WPARAM>(layout->cellCount + centre, MAKEWPARAM(115, BN_CLICKED)));
    DestroyWindow(GetParent(well));
  }
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
  HWND well = MakeWell(119, ColourWellProc, "255", 40, 20);
  g_verdict = 0;
  EXPECT_EQ(Click(well, 10, 10), "255");
  EXPECT_EQ(g_offered, 255u);
  EXPECT_EQ(g_commands, std::vector<WPARAM>{119});  // the command follows a refusal too
  g_verdict = 1;
  EXPECT_EQ(Click(well, 10, 10), std::to_string(0x00336699));
  EXPECT_EQ(g_commands.size(), 2u);
  DestroyWindow(GetParent(well));
  DialogHostSet(nullptr);
}

// Notes what the message box shows, then closes it with OK from inside its
// own modal loop.
bool g_answered;

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
  HWND box = FindWindowA(nullptr, "Message");
  if (box == nullptr || GetWindowThreadProcessId(box, nullptr) != GetCurrentThreadId()) return;
  KillTimer(nullptr, timer);
  char text[256] = {};
  GetDlgItemTextA(box, kMessageBoxTextId, text, sizeof text);
  EXPECT_STREQ(text, "Memory error");
  EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDOK);
  RECT r;
  GetWindowRect(box, &r);
  EXPECT_EQ(r.left, CentreCoordinate(GetSystemMetrics(SM_CXSCREEN), 0, r.right - r.left));
  EXPECT_EQ(r.top, CentreCoordinate(GetSystemMetrics(SM_CYSCREEN), 0, r.bottom - r.top));
  PostMessageA(box, WM_COMMAND, IDOK, 0);
  g_answered = true;
}

TEST_F(DialogKitWindowTest, MessageBoxShowsTheTextCentredAndEndsOnOk) {
  g_answered = false;
  SetTimer(nullptr, 0, 50, AnswerBox);
  MessageBoxShow(nullptr, "Memory error");
  EXPECT_TRUE(g_answered);
}

}  // namespace
