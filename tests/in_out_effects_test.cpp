// The effects that come in, hold and go out; and what the effects whose
// layers pass through one transform share at their ends.
#include <algorithm>

#include "effects/chaos.h"
#include "effects/framework.h"
#include "effects/text_frame.h"
#include "tests/effect_test_support.h"

namespace {

constexpr int kChaos = 5;
constexpr int kFramework = 8;
constexpr int kLiquidMetal = 11;

using InOutEffects = EffectOnDefaults;

// 2 * (Frames / 2) + 1 frames; the hold frame in the middle and the last
// frame pause; equal amplitudes give equal frames; one frame is the sharp
// hold frame alone.
TEST_F(InOutEffects, ChaosScattersInHoldsAndScattersOut) {
  ASSERT_EQ(Build(kChaos), 1);
  std::vector<std::uint32_t> delays = Delays();
  ASSERT_EQ(delays.size(), 31u);
  std::vector<std::uint32_t> expected(31, 8u);
  expected[15] = expected[30] = 108u;
  EXPECT_EQ(delays, expected);
  EXPECT_EQ(FramePixels(0).values, FramePixels(30).values);

  ChaosExtra sharp = {255, 0};
  context_.extra = &sharp;
  Pixels hold = TakePixels(ChaosGenerate(&context_));
  SnapshotSetNumber(&snapshot_, 511, 1);
  ASSERT_EQ(Build(kChaos), 1);
  EXPECT_EQ(Delays(), std::vector<std::uint32_t>{108u});
  EXPECT_EQ(FramePixels(0).values, hold.values);
}

// Frames starts at 8; the first frame, at level 0, shows the background
// alone; "Full frame" widens the margins by 38 per cent of the text.
TEST_F(InOutEffects, FrameworkFadesInAndOutThroughTheSmear) {
  SnapshotSetNumber(&snapshot_, 533, 2);
  ASSERT_EQ(Build(kFramework), 1);
  std::vector<std::uint32_t> expected(9, 8u);
  expected[4] = expected[8] = 108u;
  EXPECT_EQ(Delays(), expected);
  Pixels first = FramePixels(0);
  EXPECT_EQ(std::count(first.values.begin(), first.values.end(), 0xE5E5E5), first.width * first.height);

  FrameworkExtra sharp = {8, 0, 255};
  context_.extra = &sharp;
  Pixels plain = TakePixels(FrameworkGenerate(&context_));
  SnapshotSetCheck(&snapshot_, 538, 1);
  Pixels full = TakePixels(FrameworkGenerate(&context_));
  TextFrame text;
  ASSERT_EQ(TextFrameMeasure(&snapshot_.controls, {516, 537, 519, 525, 527, 529, 531, 535}, &text), 1);
  EXPECT_EQ(full.width - plain.width, 2 * (text.textWidth * 38 / 100));
  EXPECT_EQ(full.height - plain.height, 2 * (text.textHeight * 38 / 100));
}

// With the text unseen and no outline, the sharp frame of either effect
// shows the soft shadow cut where its place begins: nothing of its blur to
// the left or above.
TEST_F(InOutEffects, ShadowIsCutWhereItsPlaceBegins) {
  struct Row { EffectGenerator generate; void* sharp; PanelLookIds look; };
  ChaosExtra chaos = {255, 0};
  FrameworkExtra framework = {8, 0, 255};
  for (Row row : {Row{ChaosGenerate, &chaos, {494, 515, 497, 503, 505, 507, 509, 513}},
                  Row{FrameworkGenerate, &framework, {516, 537, 519, 525, 527, 529, 531, 535}}}) {
    for (int id : {497, 519}) SnapshotSetNumber(&snapshot_, id, 1);
    for (int id : {505, 527}) SnapshotSetNumber(&snapshot_, id, 40);
    for (int id : {515, 537}) SnapshotSetCheck(&snapshot_, id, 0);
    TextFrame layout;
    ASSERT_EQ(TextFrameMeasure(&snapshot_.controls, row.look, &layout), 1);
    int place = layout.pad + SpreadMargin(layout.shared.fontSize) + layout.place.shadowX;
    context_.extra = row.sharp;
    Pixels frame = TakePixels(row.generate(&context_));
    int firstX = frame.width, firstY = frame.height;
    for (int y = 0; y < frame.height; ++y)
      for (int x = 0; x < frame.width; ++x)
        if (frame.At(x, y) != frame.At(0, 0)) firstX = std::min(firstX, x), firstY = std::min(firstY, y);
    EXPECT_EQ(firstX, place);
    EXPECT_EQ(firstY, place);
  }
}

TEST_F(InOutEffects, EmptyTextGivesNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  for (int row : {kChaos, kFramework, kLiquidMetal}) {
    context_.previewBitmap = nullptr;
    EXPECT_EQ(EffectTable[row].preview(&context_), 1);
    EXPECT_EQ(context_.previewBitmap, nullptr) << row;
    EXPECT_EQ(Build(row), 0) << row;
    EXPECT_EQ(frames_.count, 0) << row;
  }
}

}  // namespace
