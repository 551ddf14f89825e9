#include "fills/fractal_texture.h"

#include <cmath>
#include <new>
#include <utility>

#include "fills/texture_types.h"
#include "raster/crt_random.h"
#include "raster/float_to_int.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr int kPaintMapMax = 1024;

// The Gaussian source's constants, fixed by GaussInit.
double g_arand = 32767.0;
double g_gaussAdd = 0.0;
double g_gaussFac = 0.0;

// What the generator sets before each layer and the layer reads.
struct FractalLayerState {
  int mesh;
  int fieldWidth;   // W: even, possibly wider than the bitmap
  int fieldHeight;  // H
  int seed;
  float power;
  float dimension;
  std::uint32_t colour;
  DibHead* bitmap;
};
FractalLayerState g_layer;

double UniformDraw() { return static_cast<double>(CrtRand() & 0x7FFF); }

float& RealAt(float* field, int n, int i, int j) { return field[2 * (n * i + j) + 1]; }
float& ImagAt(float* field, int n, int i, int j) { return field[2 * (n * i + j) + 2]; }

void SetPair(float* field, int n, int i, int j, double real, double imag) {
  RealAt(field, n, i, j) = static_cast<float>(real);
  ImagAt(field, n, i, j) = static_cast<float>(imag);
}

// Bit-reversal reordering of one dimension of the array.
void ReorderDimension(float* data, int ip1, int ip2, int ip3) {
  int i2rev = 1;
  for (int i2 = 1; i2 <= ip2; i2 += ip1) {
    if (i2 < i2rev) {
      for (int i1 = i2; i1 <= i2 + ip1 - 2; i1 += 2) {
        for (int i3 = i1; i3 <= ip3; i3 += ip2) {
          int i3rev = i2rev + i3 - i2;
          std::swap(data[i3], data[i3rev]);
          std::swap(data[i3 + 1], data[i3rev + 1]);
        }
      }
    }
    int ibit = ip2 >> 1;
    while (ibit >= ip1 && i2rev > ibit) {
      i2rev -= ibit;
      ibit >>= 1;
    }
    i2rev += ibit;
  }
}

// Danielson-Lanczos butterflies of one dimension; the twiddle factors run by
// a recurrence in double precision, the products are rounded to single.
void ButterflyDimension(float* data, int ip1, int ip2, int ip3) {
  for (int ifp1 = ip1; ifp1 < ip2;) {
    int ifp2 = ifp1 << 1;
    double theta = -kTwoPi / (ifp2 / ip1);
    double wtemp = std::sin(0.5 * theta);
    double wpr = -2.0 * wtemp * wtemp;
    double wpi = std::sin(theta);
    double wr = 1.0;
    double wi = 0.0;
    for (int i3 = 1; i3 <= ifp1; i3 += ip1) {
      for (int i1 = i3; i1 <= i3 + ip1 - 2; i1 += 2) {
        for (int i2 = i1; i2 <= ip3; i2 += ifp2) {
          int k1 = i2;
          int k2 = k1 + ifp1;
          float tempr = static_cast<float>(wr * data[k2] - wi * data[k2 + 1]);
          float tempi = static_cast<float>(wr * data[k2 + 1] + wi * data[k2]);
          data[k2] = data[k1] - tempr;
          data[k2 + 1] = data[k1 + 1] - tempi;
          data[k1] += tempr;
          data[k1 + 1] += tempi;
        }
      }
      wtemp = wr;
      wr = wtemp * wpr - wi * wpi + wr;
      wi = wi * wpr + wtemp * wpi + wi;
    }
    ifp1 = ifp2;
  }
}

// The amplitude of frequency (i, j): a power of its squared length times a
// Gaussian sample, nothing at the origin (which draws no sample).
double SpectralRadius(int i, int j, double exponent) {
  if (i == 0 && j == 0) return 0.0;
  return std::pow(static_cast<double>(i * i + j * j), exponent) * GaussSample();
}

double PhaseDraw() { return kTwoPi * UniformDraw() / g_arand; }

// Bends the positive half of the field by the power; the rest stays.
void BendField(float* field, int n, float power) {
  if (power == 1.0f) return;
  for (int k = 0; k < n * n; ++k) {
    float& value = field[2 * k + 1];
    if (value > 0.0f) value = static_cast<float>(std::pow(static_cast<double>(value), static_cast<double>(power)));
  }
}

void NormaliseField(float* field, int n) {
  float rmin = field[1];
  float rmax = field[1];
  for (int k = 0; k < n * n; ++k) {
    float value = field[2 * k + 1];
    if (value < rmin) rmin = value;
    if (value > rmax) rmax = value;
  }
  float rmean = (rmax + rmin) / 2.0f;
  float rrange = (rmax - rmin) / 2.0f;
  if (rrange == 0.0f) rrange = 1.0f;  // a flat field stays flat, at 0
  for (int k = 0; k < n * n; ++k) field[2 * k + 1] = (field[2 * k + 1] - rmean) / rrange;
}

// The field's top left corner of s by s as bytes; one row and one cell of
// zero padding below, so that the last column's lookup, weighted 0, stays
// inside the map.
unsigned char* FieldToByteMap(float* field, int n, int s) {
  unsigned char* map = new (std::nothrow) unsigned char[s * s + s + 1]();
  if (map == nullptr) return nullptr;
  for (int i = 0; i < s; ++i)
    for (int j = 0; j < s; ++j)
      map[s * i + j] = static_cast<unsigned char>(FloatToInt((RealAt(field, n, i, j) + 1.0) * 255 * 0.5));
  return map;
}

void BlendPixel(DibHead* bitmap, int x, int y, std::uint32_t colour, int alpha) {
  std::int32_t old = DibGetPixel(bitmap, x, y);
  if (old < 0) return;
  std::uint32_t result = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    int o = old >> shift & 0xFF;
    int c = colour >> shift & 0xFF;
    result |= static_cast<std::uint32_t>((o * (255 - alpha) / 255 + c * alpha / 255) & 0xFF) << shift;
  }
  DibPutPixel(bitmap, x, y, result);
}

// Bilinear enlargement of the byte map over the whole field, both axes
// stretched; the upper half of it becomes the layer's opacity.
int PaintLayer(float* field) {
  const FractalLayerState& layer = g_layer;
  int s = layer.mesh < kPaintMapMax ? layer.mesh : kPaintMapMax;
  if (s < kTextureMeshMin) s = kTextureMeshMin;
  unsigned char* map = FieldToByteMap(field, layer.mesh, s);
  int width = layer.fieldWidth;
  int* i0 = new (std::nothrow) int[width];
  double* fx = new (std::nothrow) double[width];
  if (map == nullptr || i0 == nullptr || fx == nullptr) {
    delete[] map;
    delete[] i0;
    delete[] fx;
    return 0;
  }
  for (int x = 0; x < width; ++x) {
    double t = static_cast<double>(x) / (width - 1) * (s - 1);
    i0[x] = static_cast<int>(std::floor(t));
    fx[x] = t - i0[x];
  }
  int height = layer.fieldHeight;
  for (int y = 0; y < height; ++y) {
    double u = height > 1 ? static_cast<double>(y) / (height - 1) : 0.0;
    int v = static_cast<int>(std::floor(u * (s - 1)));
    double fy = u * (s - 1) - v;
    int r0 = s * v;
    int r1 = r0 + s;
    for (int x = 0; x < width; ++x) {
      double f = fx[x];
      double g = 1.0 - f;
      int left = i0[x];
      double value = map[r0 + left] * (g * (1.0 - fy)) + map[r1 + left] * (g * fy) + map[r1 + left + 1] * (f * fy) +
                     map[r0 + left + 1] * (f * (1.0 - fy));
      int alpha = value > 127.0 ? FloatToInt((value - 127.0) * (1.0 / 128) * 255) : 0;
      BlendPixel(layer.bitmap, x, y, layer.colour, alpha);
    }
  }
  delete[] map;
  delete[] i0;
  delete[] fx;
  return 1;
}

int FractalLayer() {
  GaussInit(g_layer.seed);
  float* field = nullptr;
  if (SpectralSynth(&field, 3.0 - g_layer.dimension, g_layer.mesh) == 0) return 0;
  BendField(field, g_layer.mesh, g_layer.power);
  NormaliseField(field, g_layer.mesh);
  int painted = PaintLayer(field);
  delete[] field;
  return painted;
}

}  // namespace

int TextureMeshSize(int matrixSize) {
  int n = kTextureMeshMin;
  while (n < matrixSize && n < kTextureMeshMax) n <<= 1;
  return n;
}

void GaussInit(int seed) {
  g_arand = 32767.0;
  g_gaussAdd = std::sqrt(12.0);
  g_gaussFac = 2 * g_gaussAdd / (4 * g_arand);
  CrtSrand(static_cast<unsigned>(seed));
}

double GaussSample() {
  double sum = 0.0;
  for (int k = 0; k < 4; ++k) sum += UniformDraw();
  return sum * g_gaussFac - g_gaussAdd;
}

int SpectralSynth(float** out, double h, int n) {
  float* field = new (std::nothrow) float[2 * static_cast<std::size_t>(n) * n + 2]();
  if (field == nullptr) return 0;
  double exponent = -(h + 1) / 2;
  int n2 = n / 2;
  for (int i = 0; i <= n2; ++i) {
    for (int j = 0; j <= n2; ++j) {
      double phase = PhaseDraw();
      double rad = SpectralRadius(i, j, exponent);
      SetPair(field, n, i, j, rad * std::cos(phase), rad * std::sin(phase));
      int i0 = i == 0 ? 0 : n - i;
      int j0 = j == 0 ? 0 : n - j;
      SetPair(field, n, i0, j0, rad * std::cos(phase), -rad * std::sin(phase));
    }
  }
  ImagAt(field, n, n2, 0) = 0.0f;
  ImagAt(field, n, 0, n2) = 0.0f;
  ImagAt(field, n, n2, n2) = 0.0f;
  for (int i = 1; i <= n2 - 1; ++i) {
    for (int j = 1; j <= n2 - 1; ++j) {
      double phase = PhaseDraw();
      double rad = SpectralRadius(i, j, exponent);
      SetPair(field, n, i, n - j, rad * std::cos(phase), rad * std::sin(phase));
      SetPair(field, n, n - i, j, rad * std::cos(phase), -rad * std::sin(phase));
    }
  }
  FourierTransform2D(field, n);
  *out = field;
  return 1;
}

void FourierTransform2D(float* data, int n) {
  int total = n * n;
  int nprev = 1;
  // The last dimension first: the columns, which lie next to each other.
  for (int dimension = 0; dimension < 2; ++dimension) {
    int nrem = total / (n * nprev);
    int ip1 = nprev << 1;
    int ip2 = ip1 * n;
    int ip3 = ip2 * nrem;
    ReorderDimension(data, ip1, ip2, ip3);
    ButterflyDimension(data, ip1, ip2, ip3);
    nprev *= n;
  }
}

DibHandle FractalTexture(TextureRecord* texture, int layers) {
  DibOwner bitmap(TextureBackground(*texture));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  int width = lock.head->biWidth;
  int height = lock.head->biHeight;
  g_layer.mesh = TextureMeshSize(texture->MatrixSize);
  g_layer.fieldHeight = height;
  g_layer.fieldWidth = ((width > height ? width : height) + 1) & ~1;
  g_layer.bitmap = lock.head;
  for (int k = 0; k < layers && k < kTextureLayers; ++k) {
    g_layer.colour = texture->ForeColour[k];
    g_layer.seed = texture->SeedValue[k];
    g_layer.power = texture->Power[k];
    g_layer.dimension = texture->Dimension[k];
    if (FractalLayer() == 0) return nullptr;
  }
  return bitmap.release();
}
