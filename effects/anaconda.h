// Anaconda: a sine wave travels along the text and moves each column of
// the letters up and down; after a whole turn the loop closes.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "effects/generator_common.h"

int AnacondaPreview(EffectContext* context);
int AnacondaBuild(EffectContext* context);

// What the callbacks set for each frame.
struct WaveExtra {
  std::int32_t total;  // steps in one turn of the wave
  std::int32_t index;  // the step of this frame
  char text[kEffectTextLimit + 2];  // with its blank appended
};

// One frame of Anaconda for the record in context->extra.
DibHandle AnacondaGenerate(EffectContext* context);
