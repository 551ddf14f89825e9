// The engine behind the fractal texture types: fractional Brownian motion by
// spectral synthesis. Complex white noise is shaped to a power law in
// frequency and transformed to the plane; each layer's field is normalised
// and its upper half painted as the opacity of a flat colour.
#pragma once

#include "fills/texture_record.h"

// The mesh is at least this, so that the painter's byte map never reads past
// the field, and at most kTextureMeshMax, so that a hand-edited group cannot
// ask for gigabytes.
constexpr int kTextureMeshMin = 32;
constexpr int kTextureMeshMax = 4096;

// The mesh a MatrixSize gives: the least power of two not below it, within
// the two limits above.
int TextureMeshSize(int matrixSize);

// Seeds the random stream and fixes the constants of the Gaussian source.
void GaussInit(int seed);
// One sample of the Gaussian source: four uniform draws, scaled.
double GaussSample();

// The complex field of the current mesh n, 2 n n + 2 floats addressed from
// one (entry 0 unused), real part of row i and column j at 2 (n i + j) + 1,
// spectrally shaped for the exponent h and transformed. 1, or 0 when it
// cannot be allocated; the caller frees *field with delete[].
int SpectralSynth(float** field, double h, int mesh);

// In-place complex transform of a two-dimensional array of n by n values,
// addressed from one as above, with the negative exponent and no scaling.
void FourierTransform2D(float* data, int n);
