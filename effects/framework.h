// Framework: the text flies in and out through a radial zoom smear while
// its opacity rises and falls.
#pragma once

#include "effects/effect.h"
#include "effects/zoom_smear.h"

int FrameworkPreview(EffectContext* context);
int FrameworkBuild(EffectContext* context);

// One frame with the smear in context->extra (a FrameworkExtra).
DibHandle FrameworkGenerate(EffectContext* context);
