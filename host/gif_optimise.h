// A smaller file that shows the same pictures: each image is cut to the
// rectangle that changed since the picture before, pixels that did not change
// may become transparent, and each image's disposal is chosen so that the
// next one can be drawn over it. The composited pictures, frame by frame,
// are exactly those of the plain animation.
#pragma once

#include "host/gif_writer.h"

// Fills optimised from plain. 0 when no such rewrite was found (a frame
// that would need every index of the table and a transparent one), and the
// plain animation is then the one to write.
int GifOptimise(const GifAnimation& plain, GifAnimation* optimised);
