// Plasma Arc: the letters are filled with a picture in which a jagged arc is
// struck across a fill at every frame, the two arcs before it lingering as
// afterimages, with randomised delays.
#pragma once

#include <cstdint>

#include "effects/arc_tracer.h"
#include "effects/effect.h"

// The polylines of the two previous arcs.
struct ArcHistory {
  ArcPoint* older;
  std::int32_t olderCount;
  ArcPoint* newer;
  std::int32_t newerCount;
};

// The effect's extra record; it lives for one preview or one build.
struct ArcExtra {
  std::int32_t textOffsetX;  // always 0
  std::int32_t textOffsetY;
  std::int32_t ready;   // the stream is seeded and the ground made
  std::int32_t frames;  // MainArcFrames, 1 in a preview
  std::int32_t phase;   // the frame's number; the arc does not depend on it
  std::int32_t width;   // text plus twice the margin, without the shadow
  std::int32_t height;
  ArcHistory history;
  DibHandle ground;  // the arc's fill at twice the width and height
};

int PlasmaArcPreview(EffectContext* context);
int PlasmaArcBuild(EffectContext* context);

// One frame with the ArcExtra in context->extra; every call strikes an arc.
DibHandle PlasmaArcGenerate(EffectContext* context);
// The letters' fill of one frame: the ground with the afterimages and a new
// arc, 2 * energy wider than the field. Rotates the history.
DibHandle RenderArcFrame(const Controls* dialog, ArcExtra* extra);
