// Background Mural: a wall of tiles scrolls behind still text. The wall is a
// whole number of tiles wide and high and turns with wrap-around, so the
// loop closes seamlessly.
#pragma once

#include "effects/effect.h"

int MuralPreview(EffectContext* context);
int MuralBuild(EffectContext* context);

struct MuralExtra {
  std::int32_t offsetX;  // the wall's turn in pixels; one of the two is 0
  std::int32_t offsetY;
  std::int32_t wallWidth;  // 0: the frame's size
  std::int32_t wallHeight;
};

DibHandle MuralGenerate(EffectContext* context);

// A new bitmap: the wall turned with wrap-around for a scroll direction
// (0 up: down by offsetY; 1 right and 2 left by offsetX; 3 down: up by
// offsetY; any other: as it is). Null on failure.
DibHandle MuralTurn(DibHandle wall, int direction, int offsetX, int offsetY);

// The frames of a scroll of a wall of wallWidth by wallHeight: the turn of
// each frame, for at most frames frames; steps has room for frames entries.
// Returns the count, cut down to the wall's size in the moving direction.
struct MuralStep {
  int offsetX;
  int offsetY;
};
int MuralScrollPlan(int direction, int wallWidth, int wallHeight, int frames, MuralStep* steps);

// The size rounded up to a whole number of tiles.
int MuralWallSize(int size, int tileSize);
