// Runway: the letters come in one a frame from the right, each entering
// large and faint and shrinking one stage a frame as it gains strength. No
// shadow. The frame is sized once for the widest arrangement of stages.
#pragma once

#include <memory>

#include "effects/effect.h"
#include "effects/generator_common.h"
#include "raster/text.h"

int RunwayPreview(EffectContext* context);
int RunwayBuild(EffectContext* context);

// One size a letter passes through: stage 0 is the smallest and strongest.
struct RunwayStage {
  std::int32_t fontSize;
  std::int32_t level;
  TextStyle style;
  std::int32_t advances[kEffectTextLimit + 1];
};

constexpr int kRunwayOffStage = -1;  // a letter not yet on the runway

struct RunwayExtra {
  SharedControls shared;
  char text[kEffectTextLimit + 2];  // the text and one blank
  int length;                       // of text, the blank included
  std::int32_t letterStage[kEffectTextLimit + 1];
  std::unique_ptr<RunwayStage[]> stages;
  int fontSize;
  int count;
  int step;
  int minOpacity;
  bool ready;  // the stages are measured and the fill rendered
  int width;   // of the text at its widest; the frame adds the margins
  int height;
  int textHeight;
  DibOwner fill;
};

// Stage count and step as they are used: both are lowered together while
// the smallest stage would fall below 4 pixels, until both reach 1.
struct RunwayStages {
  int count;
  int step;
};

RunwayStages RunwayStagesFor(int fontSize, int count, int step);

// The level of a stage: the largest is the faintest, at minOpacity.
int RunwayStageLevel(int stage, int count, int minOpacity);

// One frame with each letter in its letterStage. The first call measures
// the stages and renders the fill into the extra record.
DibHandle RunwayGenerate(EffectContext* context);
