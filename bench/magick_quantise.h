// ImageMagick's colour reduction of an image list behind a small interface,
// so that the colour benchmark need not see ImageMagick's headers.
#pragma once

#include <cstdint>

struct MagickFrames;

// An empty list. ImageMagick is started on the first call and held to one
// thread.
MagickFrames* MagickFramesNew();
void MagickFramesFree(MagickFrames* frames);
// Appends a frame of packed top-down blue, green, red bytes; 1 on success.
int MagickFramesAppend(MagickFrames* frames, const std::uint8_t* bgr, int width, int height);
int MagickFramesCount(const MagickFrames* frames);
// A deep copy to quantise, since the quantiser rewrites its list; null on failure.
MagickFrames* MagickFramesClone(const MagickFrames* frames);
// As convert -colors N -dither FloydSteinberg on the whole list: one palette
// shared by every frame, each frame remapped to it with error diffusion.
// 1 on success.
int MagickFramesQuantise(MagickFrames* frames, int colours);
