// The sixteen resampling kernels. The resizer itself uses the Mitchell cubic
// and the Lanczos; the others complete the table for callers to come.
#include <cmath>

#include "raster/resample.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

double Sinc(double x) {
  if (x == 0.0) return 1.0;
  return std::sin(kPi * x) / (kPi * x);
}

double BlackmanWindow(double x) { return 0.42 + 0.5 * std::cos(kPi * x) + 0.08 * std::cos(2.0 * kPi * x); }

double Box(double x, double) { return x >= -0.5 && x < 0.5 ? 1.0 : 0.0; }

double Triangle(double x, double) {
  double t = std::fabs(x);
  return t < 1.0 ? 1.0 - t : 0.0;
}

double Hermite(double x, double) {
  double t = std::fabs(x);
  return t < 1.0 ? (2.0 * t - 3.0) * t * t + 1.0 : 0.0;
}

double Hanning(double x, double) { return 0.5 + 0.5 * std::cos(kPi * x); }
double Hamming(double x, double) { return 0.54 + 0.46 * std::cos(kPi * x); }
double Blackman(double x, double) { return BlackmanWindow(x); }
double Gaussian(double x, double) { return std::sqrt(2.0 / kPi) * std::exp(-2.0 * x * x); }

double Quadratic(double x, double) {
  double t = std::fabs(x);
  if (t < 0.5) return 0.75 - t * t;
  if (t < 1.5) return 0.5 * (t - 1.5) * (t - 1.5);
  return 0.0;
}

double CubicBSpline(double x, double) {
  double t = std::fabs(x);
  if (t < 1.0) return (3.0 * t * t * t - 6.0 * t * t + 4.0) / 6.0;
  if (t < 2.0) return (2.0 - t) * (2.0 - t) * (2.0 - t) / 6.0;
  return 0.0;
}

double CatmullRom(double x, double) {
  double t = std::fabs(x);
  if (t < 1.0) return (3.0 * t * t * t - 5.0 * t * t + 2.0) / 2.0;
  if (t < 2.0) return (((5.0 - t) * t - 8.0) * t + 4.0) / 2.0;
  return 0.0;
}

// Mitchell-Netravali with B = C = 1/3.
double Mitchell(double x, double) {
  double t = std::fabs(x);
  if (t < 1.0) return 7.0 / 6.0 * t * t * t - 2.0 * t * t + 8.0 / 9.0;
  if (t < 2.0) return -7.0 / 18.0 * t * t * t + 2.0 * t * t - 10.0 / 3.0 * t + 16.0 / 9.0;
  return 0.0;
}

double Lanczos(double x, double) {
  if (std::fabs(x) >= 3.0) return 0.0;
  return Sinc(x) * Sinc(x / 3.0);
}

double BlackmanBessel(double x, double support) {
  double window = BlackmanWindow(x / support);
  if (x == 0.0) return kPi / 4.0 * window;
  return window * std::cyl_bessel_j(1.0, kPi * x) / (2.0 * x);
}

double BlackmanSinc(double x, double support) { return BlackmanWindow(x / support) * Sinc(x); }

}  // namespace

const ResampleFilter ResampleFilters[kResampleFilterCount] = {
    {Box, 0.0},           {Box, 0.0},          {Box, 0.5},          {Triangle, 1.0},
    {Hermite, 1.0},       {Hanning, 1.0},      {Hamming, 1.0},      {Blackman, 1.0},
    {Gaussian, 1.25},     {Quadratic, 1.5},    {CubicBSpline, 2.0}, {CatmullRom, 2.0},
    {Mitchell, 2.0},      {Lanczos, 3.0},      {BlackmanBessel, 3.2383}, {BlackmanSinc, 4.0},
};
