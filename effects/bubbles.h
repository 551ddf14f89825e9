// Bubbles and Background Bubbles: one field of rising bubbles, as the
// letters' fill in the first and as the background in the second.
#pragma once

#include "effects/effect.h"

int BubblesPreview(EffectContext* context);
int BubblesBuild(EffectContext* context);
int BackgroundBubblesPreview(EffectContext* context);
int BackgroundBubblesBuild(EffectContext* context);

// One frame of either effect, with the BubbleField in context->extra.
DibHandle BubblesGenerate(EffectContext* context);
DibHandle BackgroundBubblesGenerate(EffectContext* context);
