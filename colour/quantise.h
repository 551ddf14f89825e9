// The adaptive quantiser: one palette for every frame of an animation, from
// an octree that all 24-bit frames feed, or the exact colours when there are
// few enough of them.
#pragma once

#include <cstdint>

#include "plugin/host_interface.h"

// colourLimit goes in as the most entries wanted (255 or 256; 0 means 256 and
// more is cut to 256) and comes out as the entries made. The 768-byte palette
// is cleared and filled. Returns 1, or 0 on a failed allocation or lock, or on
// a frame that is not 24 bits deep.
int OctreeQuantise(int* colourLimit, std::uint8_t* palette, const FrameList* frames);
