// ImageMagick's blurs behind a small interface, so that the blur benchmark
// need not see ImageMagick's headers (their names clash with ours).
#pragma once

#include <cstdint>

struct MagickMask;

// A one-channel image of the given top-down grey bytes, or null. ImageMagick
// is started on the first call and held to one thread.
MagickMask* MagickMaskNew(const std::uint8_t* grey, int width, int height);
void MagickMaskFree(MagickMask* mask);
// Blur and discard the result; 1 if ImageMagick made one.
// Gaussian is -gaussian-blur (one 2-D kernel), separable is -blur (two passes).
int MagickMaskGaussianBlur(MagickMask* mask, double radius, double sigma);
int MagickMaskSeparableBlur(MagickMask* mask, double radius, double sigma);
