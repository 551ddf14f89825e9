#include <gtest/gtest.h>

#include <cstring>

#include "colour/palette.h"
#include "dialogkit/centre.h"
#include "dialogkit/dialog_host.h"
#include "dialogkit/well_cells.h"

namespace {

TEST(CentreCoordinate, HalvesTheRoomLeftWithTruncationTowardZero) {
  EXPECT_EQ(CentreCoordinate(1024, 0, 400), 312);
  EXPECT_EQ(CentreCoordinate(1024, 500, 901), 311);  // 623 / 2
  EXPECT_EQ(CentreCoordinate(100, 0, 201), -50);     // -101 / 2 goes toward zero, not down to -51
  EXPECT_EQ(CentreCoordinate(768, -30, 70), 334);    // only the extent counts
}

TEST(WellCells, EachCellCentreHitsItsOwnCell) {
  for (const WellLayout* layout : {&kEightWayWell, &kFourWayWell, &kTwoWayWell}) {
    for (int i = 0; i < layout->cellCount; ++i) {
      const DibRect& r = layout->cells[i];
      EXPECT_EQ(WellCellAt(*layout, (r.left + r.right) / 2, (r.top + r.bottom) / 2), i);
      EXPECT_EQ(WellCellAt(*layout, r.left, r.top), i);
      EXPECT_EQ(WellCellAt(*layout, r.right - 1, r.bottom - 1), i);
    }
  }
}

TEST(WellCells, EmptyPlacesHitNothing) {
  EXPECT_EQ(WellCellAt(kEightWayWell, 37, 37), -1);  // the centre
  EXPECT_EQ(WellCellAt(kEightWayWell, 75, 10), -1);
  EXPECT_EQ(WellCellAt(kFourWayWell, 10, 10), -1);   // corners
  EXPECT_EQ(WellCellAt(kFourWayWell, 60, 60), -1);
  EXPECT_EQ(WellCellAt(kFourWayWell, 37, 37), -1);
  EXPECT_EQ(WellCellAt(kTwoWayWell, 10, 30), -1);
  EXPECT_EQ(WellCellAt(kEightWayWell, -1, 0), -1);
}

TEST(WellCells, DirectionsSitWhereTheirNumbersSay) {
  EXPECT_EQ(WellCellAt(kEightWayWell, 60, 30), 3);  // right
  EXPECT_EQ(WellCellAt(kEightWayWell, 10, 30), 4);  // left
  EXPECT_EQ(WellCellAt(kFourWayWell, 30, 5), 0);    // up
  EXPECT_EQ(WellCellAt(kFourWayWell, 30, 70), 3);   // down
  EXPECT_EQ(WellCellAt(kTwoWayWell, 40, 5), 1);     // right
}

// A host whose colour box answers with a fixed verdict and remembers what it saw.
struct PickSeen {
  int calls;
  std::uint32_t code;
  ColourPickRecord record;
  std::uint8_t palette[kPaletteBytes];
};
PickSeen g_seen;
std::int64_t g_verdict;

std::int64_t FakeHost(TaskRecord* task, std::uint32_t code, std::int64_t, std::int64_t pointer) {
  ++g_seen.calls;
  g_seen.code = code;
  auto* record = reinterpret_cast<ColourPickRecord*>(pointer);
  g_seen.record = *record;
  std::memcpy(g_seen.palette, record->palette, sizeof g_seen.palette);
  if (g_verdict != 0) record->colour = 0x00123456;
  return task == nullptr ? g_verdict : 0;
}

class ColourPickTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_seen = {};
    host_.callback = FakeHost;
    DialogHostSet(&host_);
  }
  void TearDown() override { DialogHostSet(nullptr); }
  HostRecord host_{};
};

TEST_F(ColourPickTest, OffersTheRecordTheHostExpects) {
  g_verdict = 1;
  std::uint32_t colour = 0x0000FF;
  int owner = 0;
  EXPECT_EQ(ColourPick(&owner, &colour), 1);
  EXPECT_EQ(colour, 0x00123456u);
  EXPECT_EQ(g_seen.calls, 1);
  EXPECT_EQ(g_seen.code, 11u);
  EXPECT_EQ(g_seen.record.size, 40u);
  EXPECT_EQ(g_seen.record.version, 4096u);
  EXPECT_EQ(g_seen.record.bits, 24u);
  EXPECT_EQ(g_seen.record.colour, 0x0000FFu);
  EXPECT_EQ(g_seen.record.ownerWindow, &owner);
  std::uint8_t orthogonal[kPaletteBytes];
  FixedPaletteBuild(orthogonal, nullptr, 6);
  EXPECT_EQ(std::memcmp(g_seen.palette, orthogonal, sizeof orthogonal), 0);
}

TEST_F(ColourPickTest, ARefusalLeavesTheColour) {
  g_verdict = 0;
  std::uint32_t colour = 0x00ABCDEF;
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  EXPECT_EQ(colour, 0x00ABCDEFu);
  EXPECT_EQ(g_seen.calls, 1);
}

TEST_F(ColourPickTest, NoHostOrNoCallbackAsksNobody) {
  std::uint32_t colour = 7;
  host_.callback = nullptr;
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  DialogHostSet(nullptr);
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  EXPECT_EQ(colour, 7u);
  EXPECT_EQ(g_seen.calls, 0);
}

}  // namespace
