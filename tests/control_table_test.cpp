#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fills/material.h"
#include "plugin/control_table.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"

namespace {

const SettingRow* SettingOf(const ControlRow& row) {
  for (const SettingRow& setting : SettingTable) {
    if (setting.value == row.value) return &setting;
  }
  return nullptr;
}

int ParseRange(const char* text, int* minimum, int* maximum, int* defaultValue) {
  return std::sscanf(text, "%d,%d,%d", minimum, maximum, defaultValue);
}

bool OnList(const std::int32_t* list, int id) {
  for (; *list != 0; ++list) {
    if (*list == id) return true;
  }
  return false;
}

int EffectOf(int id) {
  for (int effect = 0; effect < kEffectCount; ++effect) {
    if (OnList(EffectTable[effect].controls, id)) return effect;
  }
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

// Puts junk in every global that a row saves, so that the save must restore
// it. The tile list's setting is stored by the dialog, not by the table.
void ScribbleOverRowSettings() {
  for (const ControlRow& row : ControlTable) {
    if (!row.value || row.subclass == kClassMuralList) continue;
    if (row.flags & kRowText) {
      std::strcpy(static_cast<char*>(row.value), "junk");
    } else {
      *static_cast<std::uint32_t*>(row.value) = 12345;
    }
  }
}

std::string Text(ControlsSnapshot* snapshot, int id) {
  char buffer[400];
  ControlText(&snapshot->controls, id, buffer, sizeof buffer);
  return buffer;
}

}  // namespace

TEST(ControlTableRows, CountsByKindAndTemplateRows) {
  std::map<std::uint32_t, int> byKind;
  for (const ControlRow& row : ControlTable) ++byKind[row.kind];
  EXPECT_EQ(byKind[kControlDropList], 5);
  EXPECT_EQ(byKind[kControlCheckBox], 49);
  EXPECT_EQ(byKind[kControlNumber], 100);
  EXPECT_EQ(byKind[kControlTextEdit], 1);
  EXPECT_EQ(byKind[kControlCustom], 100);
  EXPECT_EQ(byKind[kControlLabel], 197);
  EXPECT_EQ(byKind[kControlListBox], 0);

  std::set<int> templateIds;
  for (int i = 0; i < kTemplateRowCount; ++i) {
    EXPECT_EQ(ControlTable[i].flags & kRowRunTime, 0u) << ControlTable[i].id;
    templateIds.insert(ControlTable[i].id);
  }
  EXPECT_EQ(templateIds, (std::set<int>{10, 11, 13, 14, 15, 19, 20, 22, 23, 25, 26, 27, 28, 29, 30, 31, 32, 33,
                                        34, 46}));
  for (int i = kTemplateRowCount; i < kControlRowCount; ++i) {
    EXPECT_EQ(ControlTable[i].flags & (kRowRunTime | kRowRunTimeMark), kRowRunTime | kRowRunTimeMark);
  }
}

TEST(ControlTableRows, PanelRowsRunInOrderOfIdWhereOtherCodeFindsThem) {
  for (int i = kTemplateRowCount + 1; i < kControlRowCount; ++i) {
    EXPECT_LT(ControlTable[i - 1].id, ControlTable[i].id);
  }
  EXPECT_EQ(ControlTable[kTemplateRowCount].id, 100u);
  EXPECT_EQ(ControlTable[kControlRowCount - 1].id, 538u);
  EXPECT_EQ(ControlTable[4].id, 28u);
  EXPECT_EQ(ControlTable[271].id, 357u);
  EXPECT_EQ(ControlRowFind(357), &ControlTable[271]);
  EXPECT_EQ(ControlRowFind(330), nullptr);
}

TEST(ControlTableRows, TemplateRowsCarryTheirSettingsAndRanges) {
  struct Expected {
    int id;
    const void* value;
    const char* range;
  };
  const Expected expected[] = {
      {28, &MainFontSize, "4,144,24"}, {11, &MainDelay, "1,1000,10"},    {33, &MainPause, "1,10000,10"},
      {31, &MainPadding, "0,512,0"},   {34, nullptr, "50,150,100"},
  };
  for (const Expected& row : expected) {
    const ControlRow* found = ControlRowFind(row.id);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->kind, kControlNumber);
    EXPECT_EQ(found->value, row.value);
    EXPECT_STREQ(found->paramText, row.range);
  }
  EXPECT_EQ(ControlRowFind(14)->value, nullptr);
  EXPECT_EQ(ControlRowFind(10)->value, &Truecolour);
  EXPECT_EQ(ControlRowFind(23)->value, MainText);
  EXPECT_EQ(ControlRowFind(27)->value, MainFontName);
  EXPECT_EQ(ControlRowFind(27)->flags & (kRowText | kRowSaveText), kRowText | kRowSaveText);
  EXPECT_EQ(ControlRowFind(30)->init, kFillerEffectList);
  EXPECT_EQ(ControlRowFind(13)->init, kFillerPaletteList);
}

TEST(ControlTableRows, NumberRangesParseAndHoldBothDefaults) {
  for (const ControlRow& row : ControlTable) {
    if (row.kind != kControlNumber) continue;
    int minimum = 0, maximum = 0, defaultValue = 0;
    ASSERT_EQ(ParseRange(row.paramText, &minimum, &maximum, &defaultValue), 3) << row.id;
    EXPECT_LE(minimum, defaultValue) << row.id;
    EXPECT_LE(defaultValue, maximum) << row.id;
    const SettingRow* setting = SettingOf(row);
    if (!setting) continue;
    EXPECT_GE(static_cast<int>(setting->defaultNumber), minimum) << setting->name;
    EXPECT_LE(static_cast<int>(setting->defaultNumber), maximum) << setting->name;
  }
}

TEST(ControlTableRows, EverySettingARowNamesIsInTheSettingTable) {
  int named = 0;
  for (const ControlRow& row : ControlTable) {
    if (!row.value) continue;
    ++named;
    const SettingRow* setting = SettingOf(row);
    ASSERT_NE(setting, nullptr) << row.id;
    EXPECT_EQ((row.flags & kRowText) != 0, (setting->flags & kSettingString) != 0) << setting->name;
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
    if (row.kind == kControlNumber) {
      EXPECT_TRUE(OnList(EffectTable[effect].controls, row.id + kUpDownIdOffset)) << row.id;
    }
    if (row.kind == kControlLabel) {
      EXPECT_EQ(EffectOf(row.id - 1), effect) << row.id;
    }
  }
  // Every listed id has a row, but for Doppler's two empty places and up-downs.
  for (const EffectEntry& effect : EffectTable) {
    for (const std::int32_t* id = effect.controls; *id != 0; ++id) {
      if (*id == 330 || *id == 331) continue;
      int rowId = *id > kUpDownIdOffset ? *id - kUpDownIdOffset : *id;
      EXPECT_NE(ControlRowFind(rowId), nullptr) << effect.name << " " << *id;
    }
  }
}

TEST(ControlTableRows, CustomControlsCarryWhatTheirClassesNeed) {
  for (const ControlRow& row : ControlTable) {
    if (row.kind != kControlCustom) continue;
    EXPECT_TRUE(row.flags & kRowSubclass) << row.id;
    switch (row.subclass) {
      case kClassColourWell:
      case kClassDirectionWell:
      case kClassScrollWell:
      case kClassTwoWayWell:
        EXPECT_EQ(row.flags & (kRowLoad | kRowSave | kRowRefresh), kRowLoad | kRowSave | kRowRefresh) << row.id;
        EXPECT_NE(row.value, nullptr);
        break;
      case kClassGradientBar:
        EXPECT_STREQ(row.caption, "FountainButtonLooped");
        EXPECT_EQ(row.limit, 4096);
        break;
      case kClassFillSwatch:
      case kClassMuralList:
      case kClassNoiseSwatch:
        EXPECT_EQ(row.flags & (kRowLoad | kRowSave), 0u) << row.id;
        break;
      default:
        ADD_FAILURE() << row.id;
    }
  }
  EXPECT_EQ(ControlRowFind(101)->param, 0x996633);
  EXPECT_EQ(ControlRowFind(259)->command, kCommandGradientRefresh);
  EXPECT_EQ(ControlRowFind(247)->command, kCommandRestartTimer);
  EXPECT_EQ(ControlRowFind(357)->value, &MainMuralIndex);
}

struct Box {
  int left, top, right, bottom;
};

bool Overlap(const Box& a, const Box& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// The places where a panel row's windows are made: the control, and for a
// number edit its up-down. A drop list counts at its closed height.
std::vector<Box> BoxesOf(const ControlRow& row) {
  int left = row.x + 4, top = row.y + 12;
  int height = row.kind == kControlDropList ? 20 : row.h;
  std::vector<Box> boxes = {{left, top, left + row.w, top + height}};
  if (row.kind == kControlNumber) boxes.push_back({row.x + row.w + 4, top, row.x + row.w + 16, top + row.h});
  return boxes;
}

TEST(ControlTableRows, EachPanelFitsItsAreaWithoutOverlaps) {
  const Box area = {12, 208, 396, 488};
  for (const EffectEntry& effect : EffectTable) {
    std::vector<std::pair<int, Box>> placed;
    for (const std::int32_t* id = effect.controls; *id != 0; ++id) {
      const ControlRow* row = ControlRowFind(*id);
      if (!row) continue;
      for (const Box& box : BoxesOf(*row)) {
        EXPECT_TRUE(box.left >= area.left && box.right <= area.right && box.top >= area.top &&
                    box.bottom <= area.bottom)
            << effect.name << " " << *id;
        for (const auto& [other, otherBox] : placed) {
          EXPECT_FALSE(Overlap(box, otherBox)) << effect.name << " " << *id << " and " << other;
        }
        placed.push_back({*id, box});
      }
    }
  }
}

TEST(EffectPanelMembership, OnlyPanelIdsAreTouched) {
  for (int id : {1, 23, 36, 99, 639, 10011, 10099, 10639}) {
    EXPECT_EQ(EffectPanelVisibility(id, -1), kPanelLeaveAlone) << id;
    EXPECT_EQ(EffectPanelVisibility(id, kEffectSimple), kPanelLeaveAlone) << id;
  }
  for (int id : {100, 102, 638, 10100, 10103, 10638}) EXPECT_EQ(EffectPanelVisibility(id, -1), kPanelHide) << id;
}

TEST(EffectPanelMembership, AnEffectShowsItsListAndHidesTheRest) {
  EXPECT_EQ(EffectPanelVisibility(100, kEffectSimple), kPanelShow);
  EXPECT_EQ(EffectPanelVisibility(102, kEffectSimple), kPanelShow);    // a label
  EXPECT_EQ(EffectPanelVisibility(10103, kEffectSimple), kPanelShow);  // an up-down
  EXPECT_EQ(EffectPanelVisibility(10101, kEffectSimple), kPanelHide);  // no such up-down
  EXPECT_EQ(EffectPanelVisibility(124, kEffectSimple), kPanelHide);
  EXPECT_EQ(EffectPanelVisibility(330, 6), kPanelShow);  // Doppler's empty places
  EXPECT_EQ(EffectPanelVisibility(100, kEffectCount), kPanelHide);
}

class ControlsLoadSave : public ::testing::Test {
 protected:
  void SetUp() override {
    SettingsReset();
    SnapshotInit(&snapshot);
  }
  void TearDown() override {
    SnapshotClear(&snapshot);
    SettingsReset();
  }
  ControlsSnapshot snapshot;
};

TEST_F(ControlsLoadSave, LoadThenSaveGivesBackEverySetting) {
  std::memset(MainText, 'x', kSettingStringSize - 1);  // the longest text the limit lets through
  std::strcpy(MainFontName, "Arial");
  MainEffect = 3;
  MainPalette = 8;
  MainStripesType = 6;
  MainSpiralJustify = 2;
  MainSimpleShadowDirection = 0xFFFFFFFE;  // custom numbers are signed
  MainSimpleOutlineColor = 0xFFFFFFFF;
  MainSimpleShadowEnable = 0;
  MainSimpleFrames = 32760;
  MainOdometerPersistence = 0;
  const auto before = SettingValues();

  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat | kHostFlagTrueColour, 0);
  EXPECT_EQ(Text(&snapshot, 115), "-2");
  EXPECT_EQ(Text(&snapshot, 445), "Reverse Split Chevron");
  ScribbleOverRowSettings();
  ControlsSave(&snapshot.controls);
  auto after = SettingValues();
  for (const auto& [key, value] : before) EXPECT_EQ(after[key], value) << key;
}

TEST_F(ControlsLoadSave, SaveKeepsTheLimitsOfTextAndRange) {
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  SnapshotSetText(&snapshot, 23, std::string(300, 'y'));
  SnapshotSetText(&snapshot, 117, "40000");
  SnapshotSetText(&snapshot, 111, "-3");
  ControlsSave(&snapshot.controls);
  EXPECT_EQ(std::strlen(MainText), 260u);
  EXPECT_EQ(MainSimpleFrames, 32760u);
  EXPECT_EQ(MainSimpleShadowSoftness, 0u);  // unsigned read: no digits
}

TEST_F(ControlsLoadSave, AnEffectOutOfRangeSelectsNothingAndSavesSo) {
  MainEffect = 30;
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  EXPECT_EQ(ControlSelection(&snapshot.controls, 30), -1);
  EXPECT_EQ(Text(&snapshot, 30), "");
  ControlsSave(&snapshot.controls);
  EXPECT_EQ(MainEffect, 0xFFFFFFFFu);
}

TEST_F(ControlsLoadSave, TypedTextStaysWhileTheReaderClamps) {
  SnapshotSetText(&snapshot, 200, "5");
  SnapshotSetText(&snapshot, 200 + kUpDownIdOffset, "10,20,15");
  EXPECT_EQ(ReadControlInt(&snapshot.controls, 200), 10);
  EXPECT_EQ(Text(&snapshot, 200), "5");
}

TEST_F(ControlsLoadSave, ListsSelectByIndexOrByLeadingTextIgnoringCase) {
  const Controls* controls = &snapshot.controls;
  ControlClearList(controls, 7);
  ControlAddItem(controls, 7, "Arial");
  ControlAddItem(controls, 7, "Times New Roman");
  ControlSelectText(controls, 7, "times");
  EXPECT_EQ(ControlSelection(controls, 7), 1);
  EXPECT_EQ(Text(&snapshot, 7), "Times New Roman");
  ControlSelectText(controls, 7, "Courier");
  EXPECT_EQ(ControlSelection(controls, 7), 1);
  ControlSetSelection(controls, 7, 2);
  EXPECT_EQ(ControlSelection(controls, 7), -1);
}

TEST_F(ControlsLoadSave, StartUpFollowsTheHostAndTheGeneralControls) {
  Truecolour = 1;
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat | kHostFlagTrueColour, 0);
  EXPECT_EQ(Text(&snapshot, 10011), "1,25,8");
  EXPECT_TRUE(ControlChecked(&snapshot.controls, 10));
  EXPECT_TRUE(ControlChecked(&snapshot.controls, 14));
  EXPECT_EQ(ReadControlInt(&snapshot.controls, 34), 90);
  EXPECT_EQ(ControlSelection(&snapshot.controls, 30), static_cast<int>(MainEffect));
  EXPECT_EQ(Text(&snapshot, 30), "Simple");
  EXPECT_EQ(Text(&snapshot, 13), "256-color orthogonal");
  EXPECT_EQ(Text(&snapshot, 27), MainFontName);
  EXPECT_EQ(Text(&snapshot, 10247), "1,100,10");

  SnapshotFromSettings(&snapshot, 0, 0);
  EXPECT_EQ(Text(&snapshot, 10011), "1,250,80");
  EXPECT_FALSE(ControlChecked(&snapshot.controls, 10));
  EXPECT_EQ(ReadControlInt(&snapshot.controls, 11), static_cast<int>(MainDelay));
}

TEST_F(ControlsLoadSave, EveryNumberAndSwatchReadsAsTheDialogWould) {
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  for (const ControlRow& row : ControlTable) {
    if (row.kind == kControlNumber && row.value) {
      EXPECT_EQ(ReadControlInt(&snapshot.controls, row.id), static_cast<int>(*static_cast<std::uint32_t*>(row.value)))
          << row.id;
    }
    if (row.kind == kControlCustom && row.subclass == kClassFillSwatch) {
      MaterialRecord* record = MaterialLock(&snapshot.controls, row.id);
      ASSERT_NE(record, nullptr) << row.id;
      EXPECT_EQ(record->kind, kMaterialSimple);
      EXPECT_EQ(record->colour, static_cast<std::uint32_t>(row.param)) << row.id;
      MaterialUnlock(&snapshot.controls, row.id);
    }
  }
  EXPECT_EQ(ReadControlNumber(&snapshot.controls, 115), static_cast<int>(MainSimpleShadowDirection));
}
