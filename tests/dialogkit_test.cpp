#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "colour/palette.h"
#include "dialogkit/centre.h"
#include "dialogkit/dialog_host.h"

namespace {

TEST(CentreCoordinate, HalvesTheRoomLeftWithTruncationTowardZero) {
  EXPECT_EQ(CentreCoordinate(1024, 0, 400), 312);
  EXPECT_EQ(CentreCoordinate(1024, 500, 901), 311);  // 623 / 2
  EXPECT_EQ(CentreCoordinate(100, 0, 201), -50);     // -101 / 2 goes toward zero, not down to -51
  EXPECT_EQ(CentreCoordinate(768, -30, 70), 334);    // only the extent counts
}

// A host whose colour box answers with a fixed verdict and remembers what it saw.
int g_calls;
ColourPickRecord g_seen;
std::uint8_t g_seenPalette[kPaletteBytes];
std::int64_t g_verdict;

std::int64_t FakeHost(TaskRecord* task, std::uint32_t code, std::int64_t, std::int64_t pointer) {
  auto* record = reinterpret_cast<ColourPickRecord*>(pointer);
  ++g_calls;
  g_seen = *record;
  std::memcpy(g_seenPalette, record->palette, sizeof g_seenPalette);
  if (g_verdict != 0) record->colour = 0x00123456;
  return task == nullptr && code == 11 ? g_verdict : 0;
}

TEST(ColourPick, OffersTheHostsRecordAndTakesOnlyAnAcceptedColour) {
  HostRecord host{};
  host.callback = FakeHost;
  DialogHostSet(&host);
  std::uint32_t colour = 0x0000FF;
  int owner = 0;
  g_verdict = 1;
  EXPECT_EQ(ColourPick(&owner, &colour), 1);
  EXPECT_EQ(colour, 0x00123456u);
  EXPECT_EQ(std::make_tuple(g_seen.size, g_seen.version, g_seen.bits, g_seen.colour),
            std::make_tuple(40u, 4096u, std::uint64_t{24}, 0x0000FFu));
  EXPECT_EQ(g_seen.ownerWindow, &owner);
  std::uint8_t orthogonal[kPaletteBytes];
  FixedPaletteBuild(orthogonal, nullptr, 6);
  EXPECT_EQ(std::memcmp(g_seenPalette, orthogonal, sizeof orthogonal), 0);

  g_verdict = 0;
  colour = 0x00ABCDEF;
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  EXPECT_EQ(colour, 0x00ABCDEFu);
  EXPECT_EQ(g_calls, 2);
  host.callback = nullptr;  // no callback, or no host: nobody is asked
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  DialogHostSet(nullptr);
  EXPECT_EQ(ColourPick(nullptr, &colour), 0);
  EXPECT_EQ(g_calls, 2);
}

}  // namespace
