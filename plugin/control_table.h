// The rows that describe every control of the main dialog: the general
// controls that stand in the dialog template, and the 21 effect panels that
// are made at run time. The same rows load the controls from the settings and
// save them back, through the controls seam, so the live dialog and the
// headless snapshot share one load and one save.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "plugin/controls.h"

// Row kinds.
enum ControlKind : std::uint32_t {
  kControlDropList = 1,
  kControlCheckBox = 2,
  kControlNumber = 3,  // edit with an up-down companion at id + kUpDownIdOffset
  kControlTextEdit = 4,
  kControlCustom = 5,  // keeps its number as its window text
  kControlLabel = 6,
  kControlListBox = 7,
};

// Row flags.
constexpr std::uint32_t kRowRunTime = 0x1;        // made at run time; without it the row stands in the template
constexpr std::uint32_t kRowRunTimeMark = 0x2;    // carried by all run-time rows; read by nothing
constexpr std::uint32_t kRowText = 0x4;           // the value is text
constexpr std::uint32_t kRowSubclass = 0x80;      // install the class behaviour and initialise it
constexpr std::uint32_t kRowRefresh = 0x100;      // refresh the control from its value after load
constexpr std::uint32_t kRowSave = 0x10000;       // list: save the index; number: has a range; custom: save
constexpr std::uint32_t kRowLoad = 0x20000;       // list: run the filler; custom: load the number
constexpr std::uint32_t kRowSaveText = 0x40000;   // with kRowText: save the selected text
constexpr std::uint32_t kRowItemList = 0x80000;   // paramText is a list of items separated by ";"
constexpr std::uint32_t kRowLoadIndex = 0x100000;
constexpr std::uint32_t kRowLoadText = 0x200000;
constexpr std::uint32_t kRowOwnerDraw = 0x8000000;  // carried by no row

// Behaviour a run-time custom control gets when it is made.
enum ControlClass : std::uint32_t {
  kClassPlain = 0,
  kClassFillSwatch,     // a fill of four kinds; its data block is a MaterialRecord
  kClassGradientBar,    // a looped gradient with draggable markers
  kClassColourWell,     // a colour number, picked through the host
  kClassDirectionWell,  // eight cells around a centre: a shadow direction
  kClassScrollWell,     // four cells: up, right, left, down
  kClassTwoWayWell,     // two cells: left, right
  kClassMuralList,      // the tile of Background Mural
  kClassNoiseSwatch,    // the noise map of Dragon Skin
};

// Fillers of lists, run at load.
enum ControlFiller : std::uint32_t {
  kFillerNone = 0,
  kFillerEffectList,    // the effect names in table order; selects MainEffect
  kFillerPaletteList,   // the fixed palettes; selects MainPalette
  kFillerFontList,      // the font families; selects MainFontName by text
  // Row 28 names it, but fillers run only for lists, so the size range stays
  // as the template has it and nothing ever runs this one.
  kFillerFontSizeRange,
};

// Handlers of a row's commands.
enum ControlCommand : std::uint32_t {
  kCommandNone = 0,
  kCommandInvalidatePreview,
  kCommandGradientRefresh,  // refresh the noise swatch 261 from gradient 259, then the preview
  kCommandRestartTimer,     // restart the delayed-repaint timer 15
};

// What the initialising message of a noise swatch carries: the function
// that colours its grey map.
constexpr std::int64_t kColouringFromGradient259 = 1;

struct ControlRow {
  std::uint32_t id;
  std::uint32_t kind;  // ControlKind
  std::uint32_t flags;
  std::uint32_t reserved0;
  ControlClass subclass;
  ControlFiller init;
  std::uint32_t reserved1;
  ControlCommand command;
  std::uint32_t draw;  // owner-draw handler; no row has one
  void* value;         // std::uint32_t* or char[kSettingStringSize], or null
  std::int64_t limit;  // text length limit, or the first argument of set-up and refresh
  // param of a number edit or a list: "min,max,default", or items split by ";".
  const char* paramText;
  // param as a number: default colour of a fill, tile index, colouring function.
  std::int64_t param;
  std::int32_t x, y, w, h;  // pixels; the control is made at (x + 4, y + 12)
  std::uint32_t style;      // the visible bit is cleared at creation
  std::uint32_t exstyle;
  const char* className;
  const char* caption;
};

constexpr int kControlRowCount = 452;
constexpr int kTemplateRowCount = 20;

// The template rows first, then the panels' rows in order of id. Mutable:
// the dialog stores MainMuralIndex in the param of row 357 before creating
// the panels.
extern ControlRow ControlTable[kControlRowCount];

// The row with this id, or null.
ControlRow* ControlRowFind(int id);

// Window styles of the run-time rows, by kind of control.
constexpr std::uint32_t kStyleChild = 0x40000000;
constexpr std::uint32_t kStyleVisible = 0x10000000;
constexpr std::uint32_t kStyleTabStop = 0x00010000;
constexpr std::uint32_t kStyleCheckBox = kStyleChild | kStyleVisible | kStyleTabStop | 0x3;   // auto check box
constexpr std::uint32_t kStyleNumberEdit = kStyleChild | kStyleVisible | kStyleTabStop | 0x00800000 | 0x2000 | 0x80;
constexpr std::uint32_t kStyleDropList = kStyleChild | kStyleVisible | kStyleTabStop | 0x00200000 | 0x3;
constexpr std::uint32_t kStyleLabel = kStyleChild | kStyleVisible;
constexpr std::uint32_t kStyleCustom = kStyleChild | kStyleVisible | kStyleTabStop | 0xB;  // owner-drawn button

// Loads every row's control from its setting, row by row, by kind and flags.
void ControlsLoad(const Controls* dialog);
// Saves every row's control back to its setting, by kind and flags.
void ControlsSave(const Controls* dialog);

// Whether ShowEffectPanel shows, hides or leaves alone the child with this
// id, for an effect index or -1 (hide every panel). Only panel ids and their
// up-downs are touched; an index outside the effect table shows nothing.
enum PanelVisibility { kPanelLeaveAlone, kPanelHide, kPanelShow };
PanelVisibility EffectPanelVisibility(int childId, int effect);

// The lists' fillers through the seam's write operations: the effect names,
// the palette names and, where the platform does not enumerate fonts, a font
// list that holds the saved name only.
void ControlFillList(const Controls* dialog, int id, ControlFiller filler);
