// Chaos: a cloud of scattered pixels pulls together into the sharp text,
// holds, and scatters again.
#pragma once

#include "effects/effect.h"
#include "effects/pixel_scatter.h"

int ChaosPreview(EffectContext* context);
int ChaosBuild(EffectContext* context);

// One frame with the scatter in context->extra (a ChaosExtra).
DibHandle ChaosGenerate(EffectContext* context);
