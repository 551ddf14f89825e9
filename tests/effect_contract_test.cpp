#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>

#include "effects/effect.h"
#include "effects/generator_common.h"
#include "plugin/controls_snapshot.h"

namespace {

// A zeroed bitmap kept locked for the test: 24-bit frames and fills, 8-bit masks.
struct TestBitmap {
  TestBitmap(int width, int height, int bitCount)
      : block(DibNew(width, height, nullptr, bitCount)), lock(block.get()), head(lock.head) {}
  DibOwner block;
  DibLock lock;
  DibHead* head;
};

void FillWith(DibHead* head, std::uint32_t value) {
  for (int y = 0; y < head->biHeight; ++y)
    for (int x = 0; x < head->biWidth; ++x) DibPutPixel(head, x, y, value);
}

std::uint32_t At(const DibHead* head, int x, int y) { return static_cast<std::uint32_t>(DibGetPixel(head, x, y)); }

TEST(EffectTable, TwentyOneRowsWithSimpleAtTheDefaultAndTerminatedPanelLists) {
  ASSERT_EQ(kEffectCount, 21);
  EXPECT_EQ(kEffectSimple, 17);
  EXPECT_STREQ(EffectTable[kEffectSimple].name, "Simple");
  EXPECT_STREQ(EffectTable[9].settingsPrefix, "MainTeletype");  // not always the display name
  for (const EffectEntry& entry : EffectTable) {
    std::set<int> ids;
    const std::int32_t* id = entry.controls;
    for (int guard = 0; *id != 0 && guard < 200; ++id, ++guard) {
      const bool panel = *id >= kPanelFirstId && *id <= kPanelLastId;
      const bool companion = *id >= kPanelFirstId + kUpDownIdOffset && *id <= kPanelLastId + kUpDownIdOffset;
      EXPECT_TRUE(panel || companion) << entry.name << " " << *id;
      EXPECT_TRUE(ids.insert(*id).second) << entry.name << " repeats " << *id;
    }
    EXPECT_EQ(*id, 0) << entry.name;
    // An up-down never stands without its edit; the background fill is on the panel.
    for (int value : ids) EXPECT_TRUE(value <= kPanelLastId || ids.count(value - kUpDownIdOffset)) << value;
    EXPECT_TRUE(ids.count(entry.backgroundFill)) << entry.name;
  }
}

TEST(FrameGeometry, MarginGrowsWithSoftnessAndTheShadowOffsetWidensTheFrame) {
  // Shadow on, offset 4, text 20 high, MainPadding 0.
  EXPECT_EQ(FrameSizeFor(50, 20, FrameMargin(0, 0, 0), 1, 4).height, 24);
  EXPECT_EQ(FrameMargin(0, 10, 0), 2);
  FrameSize soft = FrameSizeFor(50, 20, FrameMargin(0, 10, 0), 1, 4);
  EXPECT_EQ(soft.height, 28);
  EXPECT_EQ(soft.width, 58);
  EXPECT_EQ(FrameMargin(3, 9, 0), 4);   // 9 / 10 is 0, the 1 still counts
  EXPECT_EQ(FrameMargin(0, 0, 1), 1);   // an outline needs one pixel
  FrameSize noShadow = FrameSizeFor(50, 20, 2, 0, 4);
  EXPECT_EQ(noShadow.width, 54);
  EXPECT_EQ(noShadow.height, 24);
}

TEST(FrameGeometry, DirectionCellsPlaceTheShadowAndNeverGoNegative) {
  ShadowPlacement right = ShadowPlacementFor(3, 4), left = ShadowPlacementFor(4, 4);
  EXPECT_GT(right.shadowX, right.textX);
  EXPECT_EQ(right.shadowY, right.textY);
  EXPECT_LT(left.shadowX, left.textX);
  EXPECT_EQ(left.shadowY, left.textY);
  for (int direction : {8, -1}) {
    ShadowPlacement none = ShadowPlacementFor(direction, 6);
    EXPECT_EQ(none.textX + none.textY + none.shadowX + none.shadowY, 0) << direction;
  }
}

TEST(Blend, EachProductIsTruncatedBeforeTheSum) {
  // 200 over 100 at 128: 100 + 49 = 149, where one division would give 150.
  EXPECT_EQ(BlendPixel(200, 100, 128), 149u);
  // The channels are independent: red low, blue high.
  EXPECT_EQ(BlendPixel(0x64C8FF, 0xC86400, 128), 0x959580u);
  EXPECT_EQ(BlendPixel(0x123456, 0xABCDEF, 0), 0xABCDEFu);
  EXPECT_EQ(BlendPixel(0x123456, 0xABCDEF, 255), 0x123456u);
  // A read past a bitmap is -1, which counts as white.
  EXPECT_EQ(BlendPixel(0xFFFFFFFFu, 0, 255), 0xFFFFFFu);
}

TEST(Composite, OpacityLevelZeroLeavesTheFrameAndFullCoverShowsOnlyTheFill) {
  TestBitmap frame(5, 3, 24), fill(5, 3, 24), mask(5, 3, 8);
  FillWith(frame.head, 0x102030);
  FillWith(fill.head, 0xA0B0C0);

  CompositeFill(frame.head, fill.head, mask.head);  // level 0 everywhere
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 5; ++x) EXPECT_EQ(At(frame.head, x, y), 0x102030u);

  DibPutPixel(fill.head, 2, 1, 0x010203);  // the fill is read at the frame's coordinates
  FillWith(mask.head, 255);
  CompositeFill(frame.head, fill.head, mask.head);
  EXPECT_EQ(At(frame.head, 0, 0), 0xA0B0C0u);
  EXPECT_EQ(At(frame.head, 2, 1), 0x010203u);
}

TEST(Composite, ShadowFillReadFromItsPlaceMovesWithTheMask) {
  TestBitmap frame(6, 4, 24), fill(6, 4, 24), mask(6, 4, 8);
  DibPutPixel(fill.head, 0, 0, 0x0000FF);
  DibPutPixel(mask.head, 3, 2, 255);  // the fill's corner lands here
  DibPutPixel(mask.head, 1, 1, 255);  // left of the place: the fill reads as white
  CompositeFillFrom(frame.head, fill.head, mask.head, 3, 2);
  EXPECT_EQ(At(frame.head, 3, 2), 0x0000FFu);
  EXPECT_EQ(At(frame.head, 1, 1), 0xFFFFFFu);
  EXPECT_EQ(At(frame.head, 0, 0), 0u);
}

TEST(Composite, OutlineAtTheMaskOrShiftedOnePixelLeft) {
  TestBitmap plain(4, 2, 24), shifted(4, 2, 24), mask(4, 2, 8);
  DibPutPixel(mask.head, 0, 0, 255);  // the first column is not used when shifting
  DibPutPixel(mask.head, 2, 1, 255);
  DibPutPixel(mask.head, 3, 0, 128);

  CompositeOutline(plain.head, 0xFFFFFF, mask.head);
  CompositeOutlineShiftedLeft(shifted.head, 0xFFFFFF, mask.head);
  // Columns 0 to 3 of rows 0 and 1 as drawn in place and shifted.
  const std::uint32_t plainRows[2][4] = {{0xFFFFFF, 0, 0, 0x808080}, {0, 0, 0xFFFFFF, 0}};
  const std::uint32_t shiftedRows[2][4] = {{0, 0, 0x808080, 0}, {0, 0xFFFFFF, 0, 0}};
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 4; ++x) {
      EXPECT_EQ(At(plain.head, x, y), plainRows[y][x]) << x << "," << y;
      EXPECT_EQ(At(shifted.head, x, y), shiftedRows[y][x]) << x << "," << y;
    }
}

// A single letter's mask is laid at its place with the fill read at the
// frame's; its ring lands one up and left, loses its top row and left
// column and is scaled by the letter's level.
TEST(Composite, LetterMaskAtItsPlaceAndItsRingOnlyRightAndBelow) {
  TestBitmap frame(6, 4, 24), fill(6, 4, 24), letter(2, 2, 8), ring(3, 3, 8);
  DibPutPixel(fill.head, 4, 3, 0x0000FF);
  DibPutPixel(letter.head, 1, 1, 255);
  CompositeFillAt(frame.head, fill.head, letter.head, 3, 2);
  EXPECT_EQ(At(frame.head, 4, 3), 0x0000FFu);

  FillWith(ring.head, 255);
  CompositeLetterOutline(frame.head, 0xFFFFFF, ring.head, 1, 1, 128);
  EXPECT_EQ(At(frame.head, 0, 0), 0u);  // the ring's corner is not used
  EXPECT_EQ(At(frame.head, 1, 1), 0x808080u);
  EXPECT_EQ(At(frame.head, 2, 2), 0x808080u);
  EXPECT_EQ(At(frame.head, 3, 1), 0u);
}

// Frames wider than the blending runs, with random pixels, fills and masks,
// against BlendPixel pixel by pixel: fills moved off every side, a fill
// narrower and shorter than the mask, a moved colour and a faded outline.
TEST(Composite, RowsBlendAsBlendPixelDoesPixelByPixel) {
  const int width = 300, height = 7;
  TestBitmap frame(width, height, 24), fill(width, height, 24), narrow(width - 40, height - 2, 24), mask(width, height, 8);
  std::uint32_t seed = 12345;
  auto next = [&seed] { return seed = seed * 1103515245u + 12345u, seed >> 8; };
  for (DibHead* head : {frame.head, fill.head, narrow.head})
    for (int y = 0; y < head->biHeight; ++y)
      for (int x = 0; x < head->biWidth; ++x) DibPutPixel(head, x, y, next() & 0xFFFFFF);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(mask.head, x, y, (x / 50) % 2 == 0 ? next() & 0xFF : 0);

  struct Case {
    const char* name;
    std::function<void(DibHead*)> composite;
    std::function<std::uint32_t(int x, int y, std::uint32_t pixel)> expected;  // for mask place (x, y)
  };
  auto level = [&](int x, int y) { return static_cast<int>(At(mask.head, x, y)); };
  auto fillAt = [&](const DibHead* from, int x, int y) { return static_cast<std::uint32_t>(DibGetPixel(from, x, y)); };
  const Case cases[] = {
      {"moved fill", [&](DibHead* f) { CompositeFillFrom(f, fill.head, mask.head, 130, -2); },
       [&](int x, int y, std::uint32_t p) { return BlendPixel(fillAt(fill.head, x - 130, y + 2), p, level(x, y)); }},
      {"fill moved left", [&](DibHead* f) { CompositeFillFrom(f, fill.head, mask.head, -70, 1); },
       [&](int x, int y, std::uint32_t p) { return BlendPixel(fillAt(fill.head, x + 70, y - 1), p, level(x, y)); }},
      {"narrow fill", [&](DibHead* f) { CompositeFillWithin(f, narrow.head, mask.head); },
       [&](int x, int y, std::uint32_t p) {
         return x < width - 40 && y < height - 2 ? BlendPixel(fillAt(narrow.head, x, y), p, level(x, y)) : p;
       }},
      {"colour moved", [&](DibHead* f) { CompositeColourFrom(f, 0x123456, 100, 5, mask.head, 130, -2); },
       [&](int x, int y, std::uint32_t p) {
         bool inside = x >= 130 && x < 230 && y + 2 < 5;
         return BlendPixel(inside ? 0x123456u : 0xFFFFFFFFu, p, level(x, y));
       }},
      {"faded outline", [&](DibHead* f) { CompositeOutlineFaded(f, 0x3366CC, mask.head, 100); },
       [&](int x, int y, std::uint32_t p) { return BlendPixel(0x3366CC, p, level(x, y) * 100 / 255); }},
  };
  for (const Case& c : cases) {
    TestBitmap result(width, height, 24);
    std::memcpy(DibRows(result.head), DibRows(frame.head), frame.head->biSizeImage);
    c.composite(result.head);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        ASSERT_EQ(At(result.head, x, y), c.expected(x, y, At(frame.head, x, y))) << c.name << " " << x << "," << y;
  }
}

class EffectControls : public ::testing::Test {
 protected:
  void SetUp() override { SnapshotInit(&snapshot); }
  void TearDown() override { SnapshotClear(&snapshot); }
  void Number(int id, long long value, const char* range) {
    SnapshotSetNumber(&snapshot, id, value);
    SnapshotSetText(&snapshot, id + kUpDownIdOffset, range);
  }
  ControlsSnapshot snapshot;
};

TEST_F(EffectControls, SharedControlsComeFromTheirOwnIdsWithTheirClamps) {
  SnapshotSetText(&snapshot, 23, std::string(400, 'x'));  // the edit's limit holds
  Number(28, 200, "4,144,24");
  Number(34, 40, "50,150,100");
  SnapshotSetCheck(&snapshot, 26, 1);
  SharedControls shared{};
  ReadSharedControls(&snapshot.controls, &shared);
  EXPECT_EQ(shared.text, std::string(kEffectTextLimit, 'x'));
  EXPECT_EQ(shared.textLength, kEffectTextLimit);
  EXPECT_EQ(shared.fontSize, 144);
  EXPECT_EQ(shared.characterSpace, 50);
  EXPECT_EQ(shared.italic, 1);
}

TEST_F(EffectControls, PanelLookTurnsOpacitiesIntoLevelsAndAbsentControlsIntoDefaults) {
  // Simple's panel.
  SnapshotSetCheck(&snapshot, 100, 1);
  Number(103, 256, "1,256,256");
  Number(109, 1, "1,256,256");
  Number(113, 4, "1,256,256");
  SnapshotSetNumber(&snapshot, 115, 3);
  PanelLook look{}, bare{};
  ReadPanelLook(&snapshot.controls, {100, 121, 103, 109, 111, 113, 115, 119}, &look);
  EXPECT_EQ(look.shadowOn, 1);
  EXPECT_EQ(look.fillLevel, 255);
  EXPECT_EQ(look.shadowLevel, 0);
  EXPECT_EQ(look.offset, 4);
  EXPECT_EQ(look.direction, 3);
  ReadPanelLook(&snapshot.controls, {}, &bare);  // a panel with no look controls
  EXPECT_EQ(bare.fillLevel, 255);
  EXPECT_EQ(bare.shadowOn, 0);
}

}  // namespace
