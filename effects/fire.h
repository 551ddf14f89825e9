// The looped fire behind Inferno: a cellular heat field fed with random
// pairs along its bottom row and rising by averaging, seeded from its phase
// so that it repeats after exactly one period, painted through a ramp of
// three colours. Recording keeps one 24-bit picture of every step of one
// period.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr int kFireRampSize = 256;

// The effect's extra record, zeroed by the callback that owns it.
struct InfernoState {
  DibHandle fireFrame;  // what the letters are filled with on this call; null: no fire
  std::int32_t seedBase;
  std::int32_t seedAmplitude;
  std::int32_t period;  // the fire's height, and the steps of one loop
  std::int32_t phase;
  std::uint8_t* heat;  // width * height cells, row 0 at the top
  std::int32_t cellCount;
  DibHead* canvas;  // the locked 8-bit canvas
  DibHandle canvasHandle;
  std::uint8_t ramp[kFireRampSize][3];  // red, green, blue
  DibHandle* frames;  // one per recorded step; null where memory ran out
  std::int32_t frameCount;
  std::int32_t recording;
  std::uint32_t colours[kFireRampSize];  // the ramp packed, red low
};

// The default colours: smoke, flames, heat.
constexpr std::uint32_t kFireBlack = 0x000000;
constexpr std::uint32_t kFireRed = 0x0000FF;
constexpr std::uint32_t kFireYellow = 0x00FFFF;

// Recorded pictures beyond this many bytes in all are not kept, as if their
// memory could not be had.
constexpr std::size_t kFireRecordingBudget = std::size_t{2} << 30;

// Black to red in the first half, red to yellow in the second, stopping one
// step short of yellow.
void BuildRamp(std::uint8_t ramp[kFireRampSize][3], std::uint32_t black, std::uint32_t red, std::uint32_t yellow);
// Sets up the fire at width by height, runs one period to warm up and
// records the next. 1, or 0 with everything freed when the heat field, the
// canvas or the frame array cannot be had.
int InitFire(InfernoState* state, int width, int height, std::uint32_t black, std::uint32_t red,
             std::uint32_t yellow, std::size_t budget = kFireRecordingBudget);
void StepFire(InfernoState* state);
// Frees what the fire owns; the record may be freed twice.
void FreeFire(InfernoState* state);

// Where the fire of a canvas of width by height is simulated: low canvases
// larger, to be brought down by percent afterwards.
struct FireGeometry {
  int width;
  int height;
  int scaled;   // 1: bring the frames to the canvas by percent
  int percent;
};
FireGeometry FireGeometryFor(int width, int height);

// The recorded step that output frame i of count shows: the steps are spread
// over the period, beginning one step in, so that with count equal to the
// period the last two frames show the same step.
void FireFramePlan(int count, int period, int* indices);
