// Odometer: the letters roll up into place one by one like the digits of a
// mileage counter, and later roll up and out, the following letters dragged
// along with some inertia. No shadow; each letter has its fill and outline.
#pragma once

#include "effects/effect.h"
#include "effects/generator_common.h"

int OdometerPreview(EffectContext* context);
int OdometerBuild(EffectContext* context);

struct OdometerLetter {
  std::int32_t fontSize;
  std::int32_t level;  // always 255
  unsigned char character;
  std::int32_t rising;   // entering from below
  std::int32_t leaving;  // going out at the top
  double position;       // per cent of the frame's height: 0 at rest, 100 or more out of sight
};

// One letter for each byte of the text and its blank.
struct OdometerExtra {
  SharedControls shared;
  int length;  // the typed text's, without the blank
  OdometerLetter letters[kEffectTextLimit + 1];
};

// One frame with the letters where extra->letters puts them.
DibHandle OdometerGenerate(EffectContext* context);

// The motion of the build: a letter's own step per frame and the drag unit
// by which it pulls the letters after it.
struct OdometerMotion {
  double step;
  double drag;
  int persistence;
};

OdometerMotion OdometerMotionFor(int steps, int persistence);
