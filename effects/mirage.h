// Mirage: the text shimmers into view as if through heat, stands sharp,
// and melts away again; the loop rests on the sharp text and on a blank.
#pragma once

#include <cstdint>

#include "effects/effect.h"
#include "effects/generator_common.h"

int MiragePreview(EffectContext* context);
int MirageBuild(EffectContext* context);

// What the callbacks set for each frame.
struct MirageExtra {
  std::int32_t total;  // the wave's phase is index / total
  std::int32_t index;
  std::int32_t level;  // strength of the text, 0 to 255
  float strength;      // strength of the waves, 0 to 1
  char text[kEffectTextLimit + 2];  // with its blank appended
};

// One frame of Mirage for the record in context->extra.
DibHandle MirageGenerate(EffectContext* context);
