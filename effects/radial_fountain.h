// Radial Fountain: the text filled with concentric rings of a looped
// gradient; the animation shifts the gradient a step a frame, so the rings
// seem to pour out of the middle through the letters.
#pragma once

#include <cstddef>
#include <cstdint>

#include "effects/effect.h"

constexpr int kRadialRampColours = 256;

// The bar's gradient is read once into ramp, then kept for every frame of
// the callback.
struct RadialExtra {
  const Controls* dialog;
  std::int32_t rampReady;
  std::uint8_t ramp[3 * kRadialRampColours];  // red, green, blue triples
  std::int32_t phase;  // ramp steps the rings are shifted by
};
static_assert(offsetof(RadialExtra, rampReady) == 8 && offsetof(RadialExtra, ramp) == 12);
static_assert(offsetof(RadialExtra, phase) == 12 + 3 * kRadialRampColours);

int RadialFountainPreview(EffectContext* context);
int RadialFountainBuild(EffectContext* context);

DibHandle RadialFountainGenerate(EffectContext* context);

// The rings at width by height: drawn at twice the size without smoothing,
// a ring two pixels wide per ramp step from the rim inwards, then halved.
DibHandle RadialRings(const RadialExtra* extra, int width, int height);

// The frame count of an animated build: Frames held to 16 to 256.
int RadialFountainFrameCount(int frames);
