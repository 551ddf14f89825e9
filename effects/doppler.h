// Doppler: the whole text comes toward the viewer and past, growing from a
// small faint picture to its own size at full strength and on, fading out.
// The text is drawn once; each frame resamples that one mask.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "effects/generator_common.h"

int DopplerPreview(EffectContext* context);
int DopplerBuild(EffectContext* context);

// The callbacks' record. fill and mask are made by the first generator call
// and freed by the callback.
struct ZoomExtra {
  char text[kEffectTextLimit + 2];  // with its blank appended
  std::int32_t ready;               // fill and mask exist
  std::int32_t width;               // the text's size
  std::int32_t height;
  std::int32_t frames;
  std::int32_t index;
  std::int32_t low;   // smallest scale, per cent
  std::int32_t high;  // largest scale, per cent
  DibHandle fill;
  DibHandle mask;
};

// One frame of Doppler for the record in context->extra.
DibHandle DopplerGenerate(EffectContext* context);

// The picture's scale in per cent and the level it is drawn at for step
// index of frames.
struct ZoomStep {
  int scale;
  int level;
};
ZoomStep DopplerStep(int index, int frames, int low, int high);
