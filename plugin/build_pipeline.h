// The Build and Test run: the selected effect renders its 24-bit frames, the
// run settles on one palette, depth and transparency scheme, reduces every
// frame to it and hands the images to the host as one task. Everything lives
// for the one call; the host is reached only through its callback, the
// dialog only through the controls seam.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "plugin/controls.h"
#include "plugin/host_interface.h"

// The dialog's check boxes that shape a run, and the effect list.
constexpr int kMaskBackgroundBox = 29;
constexpr int kTrueColourBox = 10;
constexpr int kCustomPaletteBox = 14;
constexpr int kDitherBox = 15;
constexpr int kSupercompressBox = 19;
constexpr int kTransparentBox = 46;
constexpr int kEffectListControl = 30;

// The six boxes as read from the dialog at the start of a run.
struct BuildBoxes {
  int maskBackground;
  int trueColour;
  int customPalette;
  int dither;
  int supercompress;
  int transparent;
};

// The options in force for a run, and the effect's background colour
// (-1: the effect paints its whole frame).
struct BuildOptionWord {
  int supercompress;
  int transparent;
  int maskBackground;
  std::int32_t backgroundColour;
};

BuildBoxes ReadBuildBoxes(const Controls* dialog);

// Each rule uses the one before: true colour rules out supercompression,
// which rules out transparency and the background mask; an effect that
// paints its whole frame rules out both; transparency needs the mask.
BuildOptionWord BuildOptionWordFor(const BuildBoxes& boxes, const EffectEntry& effect, const Controls* dialog);

// The run for the effect selected in the effect list (clamped to the table).
// testRun is 1 for the Test button, 0 for Build. Returns 1 when the task was
// closed as complete, 0 otherwise; every failure has been shown to the user.
int BuildAnimation(const Controls* dialog, HostRecord* host, int testRun);

// The same run with a given effect row.
int BuildAnimationWithEffect(const Controls* dialog, HostRecord* host, int testRun, const EffectEntry& effect);
