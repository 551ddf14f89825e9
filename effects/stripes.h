// Stripes: the text is filled with bands of two colours that slide sideways
// through the letters; the band width and the frame count are one number,
// so the loop closes by design.
#pragma once

#include "effects/effect.h"

int StripesPreview(EffectContext* context);
int StripesBuild(EffectContext* context);

struct StripesExtra {
  std::int32_t phase;        // the pattern moves 2 pixels a phase
  std::int32_t stripesOnly;  // the frame is the pattern alone, without text
};

DibHandle StripesGenerate(EffectContext* context);

// The frame width: the text's natural width rounded up to a whole number of
// pattern periods (two bands).
int StripesFrameWidth(int naturalWidth, int band);
