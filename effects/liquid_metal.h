// Liquid Metal: something strikes the centre of the text's reflection and
// ripples run out, grow to a storm and die away until the text is still.
#pragma once

#include "effects/effect.h"
#include "effects/ripple.h"

int LiquidMetalPreview(EffectContext* context);
int LiquidMetalBuild(EffectContext* context);

// The ripple of the preview, which is also that of a still build frame.
RippleExtra LiquidMetalRestingRipple();

// One frame with the ripple in context->extra (a RippleExtra).
DibHandle LiquidMetalGenerate(EffectContext* context);
