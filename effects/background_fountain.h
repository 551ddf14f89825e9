// Background Fountain: still text in a fill of its own over a looped
// gradient that runs sideways behind it, one full turn per animation.
#pragma once

#include "effects/effect.h"

int BackgroundFountainPreview(EffectContext* context);
int BackgroundFountainBuild(EffectContext* context);

struct BackgroundFountainExtra {
  std::int32_t phase;  // columns the gradient is turned by
};

DibHandle BackgroundFountainGenerate(EffectContext* context);
