#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "fills/material.h"
#include "plugin/control_table.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"

namespace {

const SettingRow* SettingOf(const ControlRow& row) {
  for (const SettingRow& setting : SettingTable)
    if (setting.value == row.value) return &setting;
  return nullptr;
}

bool OnList(const std::int32_t* list, int id) {
  for (; *list != 0; ++list)
    if (*list == id) return true;
  return false;
}

int EffectOf(int id) {
  for (int effect = 0; effect < kEffectCount; ++effect)
    if (OnList(EffectTable[effect].controls, id)) return effect;
  return -1;
}

// Every setting's value as text, to compare before and after.
std::map<std::string, std::string> SettingValues() {
  std::map<std::string, std::string> values;
  for (const SettingRow& setting : SettingTable) {
    values[setting.name] = (setting.flags & kSettingString)
                               ? std::string(static_cast<const char*>(setting.value))
                               : std::to_string(*static_cast<const std::uint32_t*>(setting.value));
  }
  return values;
}

std::string Text(ControlsSnapshot* snapshot, int id) {
  char buffer[400];
  ControlText(&snapshot->controls, id, buffer, sizeof buffer);
  return buffer;
}

}  // namespace

TEST(ControlTableRows, CountsByKindAndIdOrder) {
  std::map<std::uint32_t, int> byKind;
  for (const ControlRow& row : ControlTable) ++byKind[row.kind];
  EXPECT_EQ(byKind, (std::map<std::uint32_t, int>{{kControlDropList, 5}, {kControlCheckBox, 49},
                                                   {kControlNumber, 100}, {kControlTextEdit, 1},
                                                   {kControlCustom, 100}, {kControlLabel, 197}}));
  // Template rows first; then panel rows run in order of id from 100 to 538,
  // where the lookup finds them.
  for (int i = 0; i < kControlRowCount; ++i) {
    const bool panel = i >= kTemplateRowCount;
    EXPECT_EQ(ControlTable[i].flags & kRowRunTime, panel ? kRowRunTime : 0u) << ControlTable[i].id;
    EXPECT_TRUE(!panel || (ControlTable[i].flags & kRowRunTimeMark)) << ControlTable[i].id;
    EXPECT_TRUE(i <= kTemplateRowCount || ControlTable[i - 1].id < ControlTable[i].id) << ControlTable[i].id;
  }
  EXPECT_EQ(ControlTable[kTemplateRowCount].id, 100u);
  EXPECT_EQ(ControlTable[kControlRowCount - 1].id, 538u);
  EXPECT_EQ(ControlRowFind(330), nullptr);
}

TEST(ControlTableRows, RangesParseAndRowsAgreeWithTheirSettings) {
  int named = 0;
  for (const ControlRow& row : ControlTable) {
    const SettingRow* setting = row.value ? SettingOf(row) : nullptr;
    if (row.value) {
      ++named;
      ASSERT_NE(setting, nullptr) << row.id;
      EXPECT_EQ((row.flags & kRowText) != 0, (setting->flags & kSettingString) != 0) << setting->name;
    }
    if (row.kind != kControlNumber) continue;
    int minimum = 0, maximum = 0, defaultValue = 0;
    ASSERT_EQ(std::sscanf(row.paramText, "%d,%d,%d", &minimum, &maximum, &defaultValue), 3) << row.id;
    EXPECT_LE(minimum, defaultValue) << row.id;
    EXPECT_LE(defaultValue, maximum) << row.id;
    if (!setting) continue;
    EXPECT_GE(static_cast<int>(setting->defaultNumber), minimum) << setting->name;
    EXPECT_LE(static_cast<int>(setting->defaultNumber), maximum) << setting->name;
  }
  // All but controls 14 and 34, the fill swatches, the gradient bars and the
  // noise swatch.
  EXPECT_EQ(named, kControlRowCount - 197 - 2 - 50 - 4 - 1);
}

TEST(ControlTableRows, EachPanelRowIsOnItsEffectsListWithItsLabel) {
  for (int i = kTemplateRowCount; i < kControlRowCount; ++i) {
    const ControlRow& row = ControlTable[i];
    int effect = EffectOf(row.id);
    ASSERT_GE(effect, 0) << row.id;
    EXPECT_TRUE(row.kind != kControlNumber || OnList(EffectTable[effect].controls, row.id + kUpDownIdOffset)) << row.id;
    EXPECT_TRUE(row.kind != kControlLabel || EffectOf(row.id - 1) == effect) << row.id;
  }
  // Every listed id has a row, but for Doppler's two empty places and up-downs.
  for (const EffectEntry& effect : EffectTable) {
    for (const std::int32_t* id = effect.controls; *id != 0; ++id) {
      int rowId = *id > kUpDownIdOffset ? *id - kUpDownIdOffset : *id;
      EXPECT_TRUE(*id == 330 || *id == 331 || ControlRowFind(rowId)) << effect.name << " " << *id;
    }
  }
}

TEST(EffectPanelMembership, OnlyPanelIdsAreTouchedAndAnEffectShowsItsOwn) {
  for (int id : {1, 23, 36, 99, 639, 10011, 10099, 10639}) {
    EXPECT_EQ(EffectPanelVisibility(id, -1), kPanelLeaveAlone) << id;
    EXPECT_EQ(EffectPanelVisibility(id, kEffectSimple), kPanelLeaveAlone) << id;
  }
  for (int id : {100, 102, 638, 10100, 10103, 10638}) EXPECT_EQ(EffectPanelVisibility(id, -1), kPanelHide) << id;
  const std::pair<int, int> cases[] = {{100, kPanelShow}, {102, kPanelShow} /* a label */,
                                       {10103, kPanelShow} /* an up-down */, {10101, kPanelHide},
                                       {124, kPanelHide}};
  for (auto [id, visibility] : cases) EXPECT_EQ(EffectPanelVisibility(id, kEffectSimple), visibility) << id;
  EXPECT_EQ(EffectPanelVisibility(330, 6), kPanelShow);  // Doppler's empty places
  EXPECT_EQ(EffectPanelVisibility(100, kEffectCount), kPanelHide);
}

class ControlsLoadSave : public ::testing::Test {
 protected:
  void SetUp() override { SettingsReset(); SnapshotInit(&snapshot); }
  void TearDown() override { SnapshotClear(&snapshot); SettingsReset(); }
  ControlsSnapshot snapshot;
};

TEST_F(ControlsLoadSave, LoadThenSaveGivesBackEverySetting) {
  std::memset(MainText, 'x', kSettingStringSize - 1);  // the longest text the limit lets through
  std::strcpy(MainFontName, "Arial");
  MainEffect = 3;
  MainStripesType = 6;
  MainSimpleShadowDirection = 0xFFFFFFFE;  // custom numbers are signed
  MainSimpleOutlineColor = 0xFFFFFFFF;
  MainSimpleFrames = 32760;
  const auto before = SettingValues();

  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat | kHostFlagTrueColour, 0);
  EXPECT_EQ(Text(&snapshot, 115), "-2");
  EXPECT_EQ(Text(&snapshot, 445), "Reverse Split Chevron");
  // Junk in every global a row saves, so that the save must restore it. The
  // tile list's setting is stored by the dialog, not by the table.
  for (const ControlRow& row : ControlTable) {
    if (!row.value || row.subclass == kClassMuralList) continue;
    if (row.flags & kRowText) std::strcpy(static_cast<char*>(row.value), "junk");
    else *static_cast<std::uint32_t*>(row.value) = 12345;
  }
  ControlsSave(&snapshot.controls);
  auto after = SettingValues();
  for (const auto& [key, value] : before) EXPECT_EQ(after[key], value) << key;
}

TEST_F(ControlsLoadSave, SaveAndReadKeepTheLimitsAndAnUnknownEffectSavesAsNone) {
  MainEffect = 30;
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  EXPECT_EQ(ControlSelection(&snapshot.controls, 30), -1);
  EXPECT_EQ(Text(&snapshot, 30), "");
  SnapshotSetText(&snapshot, 23, std::string(300, 'y'));
  SnapshotSetText(&snapshot, 117, "40000");
  SnapshotSetText(&snapshot, 111, "-3");
  ControlsSave(&snapshot.controls);
  EXPECT_EQ(std::strlen(MainText), 260u);
  EXPECT_EQ(MainSimpleFrames, 32760u);
  EXPECT_EQ(MainSimpleShadowSoftness, 0u);  // unsigned read: no digits
  EXPECT_EQ(MainEffect, 0xFFFFFFFFu);
  // Typed text stays while the reader clamps.
  SnapshotSetText(&snapshot, 200, "5");
  SnapshotSetText(&snapshot, 200 + kUpDownIdOffset, "10,20,15");
  EXPECT_EQ(ReadControlInt(&snapshot.controls, 200), 10);
  EXPECT_EQ(Text(&snapshot, 200), "5");
}

TEST_F(ControlsLoadSave, ListsSelectByIndexOrByLeadingTextIgnoringCase) {
  const Controls* controls = &snapshot.controls;
  ControlAddItem(controls, 7, "Arial");
  ControlAddItem(controls, 7, "Times New Roman");
  ControlSelectText(controls, 7, "times");
  EXPECT_EQ(Text(&snapshot, 7), "Times New Roman");
  ControlSelectText(controls, 7, "Courier");
  EXPECT_EQ(ControlSelection(controls, 7), 1);
  ControlSetSelection(controls, 7, 2);
  EXPECT_EQ(ControlSelection(controls, 7), -1);
}

TEST_F(ControlsLoadSave, StartUpFollowsTheHostAndTheGeneralControlsAndFillsSwatchesSolid) {
  Truecolour = 1;
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat | kHostFlagTrueColour, 0);
  for (const ControlRow& row : ControlTable) {
    if (row.kind != kControlCustom || row.subclass != kClassFillSwatch) continue;
    MaterialRecord* record = MaterialLock(&snapshot.controls, row.id);
    ASSERT_NE(record, nullptr) << row.id;
    EXPECT_EQ(record->kind, kMaterialSimple);
    EXPECT_EQ(record->colour, static_cast<std::uint32_t>(row.param)) << row.id;
    MaterialUnlock(&snapshot.controls, row.id);
  }
  EXPECT_EQ(Text(&snapshot, 10011), "1,25,8");
  EXPECT_TRUE(ControlChecked(&snapshot.controls, 10));
  EXPECT_TRUE(ControlChecked(&snapshot.controls, 14));
  EXPECT_EQ(ReadControlInt(&snapshot.controls, 34), 90);
  EXPECT_EQ(Text(&snapshot, 10247), "1,100,10");
  SnapshotFromSettings(&snapshot, 0, 0);
  EXPECT_EQ(Text(&snapshot, 10011), "1,250,80");
  EXPECT_FALSE(ControlChecked(&snapshot.controls, 10));
}
