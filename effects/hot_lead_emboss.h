// The emboss of Hot Lead: a Gaussian kernel whose lower right quadrant
// pulls up and whose rest pushes down, and the convolution that turns a text
// mask into the relief through which the metal is laid.
#pragma once

#include <vector>

#include "raster/dib.h"

// The kernel's side for an emboss depth: an even depth grows by one so that
// the kernel has a centre.
int HotLeadKernelSize(int embossSize);

// The kernel for a radius (tenths of sigma) and an emboss depth, row by row.
std::vector<double> HotLeadKernel(int radius, int embossSize);

// A new bitmap of the mask's size, depth and colour table: each pixel the
// kernel-weighted sum of its neighbours, divided by the kernel's total
// unless that is 0 or 1, clamped and rounded. Kernel rows run upward from
// the bottom row of storage and reads beyond an edge wrap around to the
// other side. 8- and 24-bit masks are convolved, any other depth comes back
// blank. Null when size is even or larger than the mask, or on failure.
DibHandle HotLeadConvolve(DibHandle mask, int size, const double* kernel);
