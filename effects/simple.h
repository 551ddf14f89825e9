// Simple: the text with fill, soft shadow and outline over a background
// fill, still or scrolling once across the frame.
#pragma once

#include "effects/effect.h"

int SimplePreview(EffectContext* context);
int SimpleBuild(EffectContext* context);

struct LaidTextLevels;

// What the build sets for each frame: the text's scroll offset in pixels,
// and the text laid once for all its frames (null in a preview).
struct SimpleExtra {
  std::int32_t scrollX;
  std::int32_t scrollY;
  LaidTextLevels* laidLevels;
};

// One frame of Simple at the scroll offset in context->extra.
DibHandle SimpleGenerate(EffectContext* context);

// One step of the scroll: the offset of the moving coordinate and whether
// the frame pauses.
struct ScrollStep {
  int offset;
  int pauses;
};

// The n frames of a scroll in direction (0 up, 1 right, 2 left, 3 down)
// across a frame of width by height; steps has room for n entries. Returns
// n = min(frames, span).
int SimpleScrollPlan(int direction, int width, int height, int frames, ScrollStep* steps);
