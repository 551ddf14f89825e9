// Z-Axis Fountain: a still text filled with a looped gradient; the animation
// turns the whole text through the gradient's colours, one flat colour a
// frame, as if the gradient ran out of the screen.
#pragma once

#include "effects/effect.h"

int ZAxisFountainPreview(EffectContext* context);
int ZAxisFountainBuild(EffectContext* context);

struct ZAxisFountainExtra {
  std::int32_t phase;      // columns the fill is turned left by
  std::int32_t rampIndex;  // 0 to 255: where on the gradient the flat colour is read
  std::int32_t flatColour;  // 1: the text is one colour from the gradient
};

DibHandle ZAxisFountainGenerate(EffectContext* context);

// The frame count of an animated build on a frame width wide.
int ZAxisFountainFrameCount(int frames, int width);
