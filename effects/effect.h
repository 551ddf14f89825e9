// The contract all 21 effects share: one table row each, with a preview
// callback, a build callback and a background-colour callback, all standing
// on one generator per effect that reads its values from the controls.
#pragma once

#include <cstdint>

#include "plugin/controls.h"
#include "plugin/host_interface.h"
#include "raster/dib.h"

struct EffectContext {
  const Controls* dialog;  // every input is read through it
  FrameList* frames;       // filled by the build callback
  void* reserved0;
  HostRecord* host;           // its callback takes the progress calls
  DibHandle previewBitmap;    // left by the preview callback; the caller draws and frees it
  std::uint32_t reserved[4];
  std::int32_t previewWidth;  // inner size of the preview control
  std::int32_t previewHeight;
  std::uint32_t flags;  // kEffectFlag bits; the caller clears it
  void* extra;          // the callback's per-effect record, on its stack
};

constexpr std::uint32_t kEffectFlagSpiralBuild = 1;
constexpr std::uint32_t kEffectFlagPreview = 2;  // draw the representative still
constexpr std::uint32_t kEffectFlagStill = 4;    // a still build frame, or a sizing call

using EffectCallback = int (*)(EffectContext* context);
// The colour of a solid background fill, or -1 for any other fill.
using EffectBackgroundColour = std::int32_t (*)(const Controls* dialog);

struct EffectEntry {
  const char* name;
  EffectCallback preview;
  EffectCallback build;
  EffectBackgroundColour backgroundColour;
  const std::int32_t* controls;  // zero-terminated ids of the effect's panel
  void* reserved;
  // Kept after the fixed fields: the effect's setting-key prefix and the id of
  // the fill control its background-colour callback reads.
  const char* settingsPrefix;
  std::int32_t backgroundFill;
};

// Panel controls live in these id ranges; only the current effect's are shown.
// A number edit's up-down companion has the edit's id plus kUpDownIdOffset.
constexpr int kPanelFirstId = 100;
constexpr int kPanelLastId = 638;
constexpr int kUpDownIdOffset = 10000;

constexpr int kEffectCount = 21;
constexpr int kEffectSimple = 17;  // the default of MainEffect

extern const EffectEntry EffectTable[kEffectCount];
