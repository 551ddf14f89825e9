// Dragon Skin: the letters filled with a living marble. A grey Perlin noise
// map is made once; each frame shows it through the 256 colours of a looped
// gradient whose start is turned a little further, and after a whole turn
// the loop closes exactly.
#pragma once

#include <cstdint>

#include "effects/effect.h"

int DragonSkinPreview(EffectContext* context);
int DragonSkinBuild(EffectContext* context);

// The effect's record between generator calls: the noise map and the
// gradient's colours, made by the first call, and the colour shift of the
// frame in 256ths of a turn.
struct DragonExtra {
  DibHandle map;
  std::int32_t ready;
  std::uint8_t palette[768];
  std::int32_t phase;
};

// One frame at the phase in context->extra, making the map and palette
// first if they are not ready.
DibHandle DragonSkinGenerate(EffectContext* context);

constexpr int kDragonPhasesMax = 256;
// The phases of a rolling build for the Frames control's value: n of them,
// n the value held to 16..256, the first trunc(256 / n), the last 256.
int DragonSkinPhases(int frames, std::int32_t phases[kDragonPhasesMax]);
