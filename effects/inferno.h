// Inferno: the letters burn with a looped fire. The build simulates the fire
// and fills the letters with its recorded steps; the preview shows a stored
// still of fire in the user's colours.
#pragma once

#include "effects/effect.h"

int InfernoPreview(EffectContext* context);
int InfernoBuild(EffectContext* context);

// One frame, the letters filled from the InfernoState's fireFrame in
// context->extra; no fire leaves them unpainted.
DibHandle ComposeInfernoFrame(EffectContext* context);
