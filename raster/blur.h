// Separable Gaussian blur of 8-bit masks and 24-bit pictures: the soft shadow
// of every effect. Kernels are single-precision floats; each output byte comes
// from a fixed order of float operations, so equal inputs give equal bytes.
#pragma once

#include <cstdint>

#include "raster/dib.h"

// The reach of the kernel never exceeds this many taps: 2 * ceil(10.0) + 1.
constexpr int kBlurMaxTaps = 21;

// A new bitmap of the source's size, depth and palette holding the blurred
// picture, or null. softness is the effect's soft control plus 2; the kernel's
// sigma is softness / 10. The source's pixels are changed (they end up blurred
// along rows only) and the source stays the caller's. Depths 8 and 24 only.
DibHandle GaussianBlur(DibHandle source, int softness);

// Fills kernel[0..K-1] (an array at least 3 long) with the Gaussian of sigma
// sampled at thirds of a pixel and normalised. A K below 1 becomes 3.
// Returns K. The centre is at K / 2; an even K has one more tap before it.
int GaussianKernel(int taps, float sigma, float* kernel);

// One line of 8-bit samples, or of three-byte samples with independent bytes.
// Near the ends the kernel is cut and renormalised. A kernel longer than the
// line leaves destination untouched.
void BlurLine8(const float* kernel, int taps, const std::uint8_t* source, std::uint8_t* destination, int length);
void BlurLine24(const float* kernel, int taps, const std::uint8_t* source, std::uint8_t* destination, int length);
