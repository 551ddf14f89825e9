// The build of the effects that come in, hold and go out again: half frames
// coming in, one sharp hold frame that pauses, half frames going out, and a
// pause on the last frame as well.
#pragma once

#include <cstdint>

#include "effects/generator_common.h"

// Sets the effect's extra record for one frame. position runs from -half
// up to half: below 0 coming in, 0 the hold frame, above 0 going out; its
// size over half is how far the frame is from the hold.
using InOutPhase = void (*)(void* extra, int position, int half);

// Reads Animated, Delay, Pause and the effect's frame count (control
// framesId). Not animated: one still frame at Delay from the extra record
// as the caller set it. Animated: 2 * (frames / 2) + 1 frames made by
// generate after setPhase, at Delay, the hold frame and the last at
// Delay + Pause, with progress after each. 1, or 0 when a frame cannot be
// made or appended.
int InOutBuild(EffectContext* context, EffectGenerator generate, InOutPhase setPhase, int framesId);
