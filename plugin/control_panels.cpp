// Which panel controls an effect shows, and the fillers of the general lists.
#include "dialogkit/string_texts.h"
#include "plugin/control_table.h"
#include "plugin/settings.h"

namespace {

bool IsPanelId(int id) {
  return (id >= kPanelFirstId && id <= kPanelLastId) ||
         (id >= kPanelFirstId + kUpDownIdOffset && id <= kPanelLastId + kUpDownIdOffset);
}

void FillEffectList(const Controls* dialog, int id) {
  ControlClearList(dialog, id);
  for (const EffectEntry& effect : EffectTable) ControlAddItem(dialog, id, effect.name);
  ControlSetSelection(dialog, id, static_cast<int>(MainEffect));
}

void FillPaletteList(const Controls* dialog, int id) {
  ControlClearList(dialog, id);
  for (int row = 0; row < kStringPaletteCount; ++row)
    ControlAddItem(dialog, id, StringText(kStringPaletteFirst + row));
  ControlSetSelection(dialog, id, static_cast<int>(MainPalette));
}

// Without a font enumeration the list holds the one saved family.
void FillFontList(const Controls* dialog, int id) {
  ControlClearList(dialog, id);
  if (MainFontName[0] == '\0') return;
  ControlAddItem(dialog, id, MainFontName);
  ControlSelectText(dialog, id, MainFontName);
}

}  // namespace

PanelVisibility EffectPanelVisibility(int childId, int effect) {
  if (!IsPanelId(childId)) return kPanelLeaveAlone;
  if (effect < 0 || effect >= kEffectCount) return kPanelHide;
  for (const std::int32_t* id = EffectTable[effect].controls; *id != 0; ++id) {
    if (*id == childId) return kPanelShow;
  }
  return kPanelHide;
}

void ControlFillList(const Controls* dialog, int id, ControlFiller filler) {
  switch (filler) {
    case kFillerEffectList:
      FillEffectList(dialog, id);
      return;
    case kFillerPaletteList:
      FillPaletteList(dialog, id);
      return;
    case kFillerFontList:
      FillFontList(dialog, id);
      return;
    default:
      return;
  }
}
