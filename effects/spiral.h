// Spiral: the text stamped many times about a centre, each stamp turned by
// a smaller angle than the one before, larger and stronger, until the last
// stands upright at angle 0. An animated build adds one stamp a frame. All
// frames are cropped at the end to what any stamp touched.
#pragma once

#include "effects/effect.h"
#include "effects/generator_common.h"

int SpiralPreview(EffectContext* context);
int SpiralBuild(EffectContext* context);

struct SpiralExtra {
  SharedControls shared;
  char text[kEffectTextLimit + 2];  // the text and one blank
  int fontSize;                     // half the font size: the stamps' size
  bool ready;                       // the stamp and the fills are made
  int textWidth;
  int textHeight;
  int stampWidth;
  int stampHeight;
  int startAngle;       // the start angle rounded down to a whole step
  int endAngle;         // stamps are drawn while the angle is above it
  int step;             // degrees between stamps
  int stepCount;        // the number of the stamp at angle 0
  int scaleStep;        // per cent added to the scale from stamp to stamp
  int minOpacity;
  int maxOpacity;
  int minScale;         // per cent
  int startSetting;     // the start angle as set, the progress total
  int justify;          // 0 left, 1 centre, 2 right of the turning point
  int useFinal;         // the upright stamp takes the final fill
  DibOwner fill;
  DibOwner stamp;
  DibOwner finalFill;
  DibRect bounds;  // all that was stamped, in frame coordinates without the margin
};

// The angles and scales for a start angle, step, minimum scale and
// minimum opacity, as the record holds them.
void SpiralAnglesFor(int startAngle, int step, int minScale, int minOpacity, SpiralExtra* extra);

// One frame: the background and every stamp from the start angle down to
// (not including) endAngle. The first call makes the stamp and the fills.
DibHandle SpiralGenerate(EffectContext* context);
