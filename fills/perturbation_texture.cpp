// Perturbation: octaves of a gradient noise plus a field of accumulated
// bubbles, mapped through one tone curve for each of red, green and blue.
#include <cmath>
#include <cstdint>
#include <new>

#include "fills/texture_types.h"
#include "raster/crt_random.h"
#include "raster/float_to_int.h"

namespace {

constexpr float kEpsilon = 1.1920929e-7f;
constexpr int kNoiseSize = 16;
constexpr int kNoiseTableSize = 34;  // 16 entries, repeated so a sum of two indexes them directly
constexpr int kOctaveMax = 8;
constexpr int kBubbleCountMax = 1024;

// The noise tables are built once, by the first texture that needs them, and
// kept for the life of the process: later seeds change only the bubbles.
struct NoiseTables {
  bool built;
  float sine[kNoiseTableSize];
  float cosine[kNoiseTableSize];
  int perm[kNoiseTableSize];
};
NoiseTables g_noise;

// amp[k] = 2^(-k/2). A detail between 7 and 8 runs a ninth, partial octave,
// which takes the next value of the same series.
float g_octaveAmp[kOctaveMax + 1];
bool g_octaveAmpReady = false;

void BuildNoiseTables(int seed) {
  CrtSrand(static_cast<unsigned>(seed));
  for (int i = 0; i < kNoiseSize; ++i) {
    float angle = static_cast<float>(CrtRand() * 6.2831854820251465 / 32767.0);
    g_noise.sine[i] = static_cast<float>(std::sin(static_cast<double>(angle)));
    g_noise.cosine[i] = static_cast<float>(std::cos(static_cast<double>(angle)));
  }
  for (int i = 0; i < kNoiseSize; ++i) g_noise.perm[i] = i;
  // Entry 16 is still 0 and takes part in the first swap, so a value can go
  // missing from the permutation: part of the noise's character.
  for (int i = kNoiseSize; i >= 2; i -= 2) {
    int j = CrtRand() & 15;
    int swap = g_noise.perm[i];
    g_noise.perm[i] = g_noise.perm[j];
    g_noise.perm[j] = swap;
  }
  for (int i = 0; i <= 17; ++i) {
    g_noise.sine[i + kNoiseSize] = g_noise.sine[i];
    g_noise.cosine[i + kNoiseSize] = g_noise.cosine[i];
    g_noise.perm[i + kNoiseSize] = g_noise.perm[i];
  }
  g_noise.built = true;
}

// The two right-hand corners take the cosine table in both terms.
float GradientNoise(float x, float y) {
  float bigX = x + 10000;
  float bigY = y + 10000;
  int ix = static_cast<int>(bigX);
  int iy = static_cast<int>(bigY);
  float fx = bigX - ix;
  float fy = bigY - iy;
  int i = ix & 15;
  int j = iy & 15;
  int j1 = (j + 1) & 15;
  int p0 = g_noise.perm[i];
  int p1 = g_noise.perm[(i + 1) & 15];
  float sx = (3 - 2 * fx) * fx * fx;
  float sy = (3 - 2 * fy) * fy * fy;
  const float* sine = g_noise.sine;
  const float* cosine = g_noise.cosine;
  int g = g_noise.perm[j + p0];
  float u0 = fy * cosine[g] + fx * sine[g];
  g = g_noise.perm[j + p1];
  float t0 = cosine[g] * fy + cosine[g] * (fx - 1);
  g = g_noise.perm[j1 + p0];
  float u1 = (fy - 1) * cosine[g] + fx * sine[g];
  g = g_noise.perm[j1 + p1];
  float t1 = cosine[g] * (fy - 1) + cosine[g] * (fx - 1);
  float a = u0 + sx * (t0 - u0);
  float b = u1 + sx * (t1 - u1);
  return (a + sy * (b - a)) * 1.5f;
}

// NaN, which only a hand-edited file can bring, counts as 0.
float Clamp01(float value) { return !(value >= 0.0f) ? 0.0f : value > 1.0f ? 1.0f : value; }

// Four clamped points with one more on each side for the spline to lean on.
void BuildToneCurve(const float points[4], float curve[6]) {
  float q[4];
  for (int k = 0; k < 4; ++k) q[k] = Clamp01(points[k]);
  curve[0] = 2 * q[0] - q[1];
  for (int k = 0; k < 4; ++k) curve[k + 1] = q[k];
  curve[5] = 2 * q[3] - q[2];
}

// Catmull-Rom through the middle four of six points, t in 0 to 1.
float ToneCurveAt(const float curve[6], float t) {
  float u = Clamp01(t) * 3;
  int k = static_cast<int>(u);
  if (k > 2) k = 2;
  float f = u - k;
  double p0 = curve[k], p1 = curve[k + 1], p2 = curve[k + 2], p3 = curve[k + 3];
  float a = static_cast<float>(1.5 * p1 - 0.5 * p0 - 1.5 * p2 + 0.5 * p3);
  float b = static_cast<float>(p0 - 2.5 * p1 + 2 * p2 - 0.5 * p3);
  float c = static_cast<float>(0.5 * p2 - 0.5 * p0);
  float d = static_cast<float>(p1);
  return ((a * f + b) * f + c) * f + d;
}

int ChannelByte(const float curve[6], float t) {
  float value = ToneCurveAt(curve, t) * 255;
  if (!(value > 0.0f)) return 0;
  return value > 255.0f ? 255 : static_cast<int>(value);
}

float BubbleStep(int shape, float old, float d, float r2) {
  switch (shape) {
    case 0:
      return old + 1;
    case 1:
      return old + 1 / (2 * d / r2 + 1);
    case 2:
      return old + 1 / (16 * d / r2 + 0.1f);
    case 3:
      return old + (1 - old) * d / r2;
    default:
      return old;
  }
}

// Bubbles wrap at the edges, so the field tiles.
void FillBubbleMap(float* map, int width, int height, int bubbles, int radius, const TextureRecord& texture) {
  CrtSrand(static_cast<unsigned>(texture.SeedValue[0]));
  float r2 = static_cast<float>(radius * radius);
  for (int b = 0; b < bubbles; ++b) {
    int cx = CrtRand() % width + width;
    int cy = CrtRand() % height + height;
    for (int dy = -radius; dy < radius; ++dy) {
      for (int dx = -radius; dx < radius; ++dx) {
        int d = dx * dx + dy * dy;
        if (d > radius * radius) continue;
        float& cell = map[static_cast<std::size_t>((cy + dy) % height) * width + (cx + dx) % width];
        cell = BubbleStep(texture.BubbleShape, cell, static_cast<float>(d), r2);
      }
    }
  }
}

float NoiseOctaves(float px, float py, float detail) {
  float oct = detail;
  if (oct < 0 || oct > kOctaveMax) oct = kOctaveMax;
  float n = 0;
  int k = 0;
  for (; oct > k; ++k) {
    n += GradientNoise(px, py) * g_octaveAmp[k];
    px *= 2;
    py *= 2;
  }
  float frac = oct - static_cast<int>(oct);
  if (frac > kEpsilon) n += GradientNoise(px, py) * frac * g_octaveAmp[k];
  return n;
}

struct PerturbationPlan {
  int width;
  int height;
  float detail;
  int bubbles;
  const float* bubbleMap;
};

float PixelValue(const TextureRecord& texture, const PerturbationPlan& plan, int x, int y) {
  float n = 0;
  if (texture.PerturbationPower > kEpsilon) {
    if (!g_noise.built) BuildNoiseTables(texture.SeedValue[0]);
    n = NoiseOctaves(static_cast<float>(x) / plan.width * 16, static_cast<float>(y) / plan.height * 16, plan.detail);
    n *= texture.PerturbationPower;
  }
  float b = 0;
  if (texture.BubblePower != 0 && plan.bubbles >= 1)
    b = 2 * texture.BubblePower * plan.bubbleMap[static_cast<std::size_t>(y) * plan.width + x] - 1;
  return Clamp01((n + b + 1.0f) * 0.5f);
}

void BuildColourTable(const TextureRecord& texture, std::uint32_t table[256]) {
  float red[6], green[6], blue[6];
  BuildToneCurve(texture.ColorRed, red);
  BuildToneCurve(texture.ColorGreen, green);
  BuildToneCurve(texture.ColorBlue, blue);
  for (int i = 0; i < 256; ++i) {
    float t = i / 255.0f;
    table[i] = static_cast<std::uint32_t>(ChannelByte(red, t) | ChannelByte(green, t) << 8 | ChannelByte(blue, t) << 16);
  }
}

void PrepareOctaveAmplitudes() {
  if (g_octaveAmpReady) return;
  for (int k = 0; k <= kOctaveMax; ++k) g_octaveAmp[k] = static_cast<float>(std::pow(std::pow(2.0, k), -0.5));
  g_octaveAmpReady = true;
}

}  // namespace

void TextureNoiseReset() { g_noise.built = false; }

DibHandle PerturbationTexture(TextureRecord* texture) {
  PerturbationPlan plan{};
  plan.width = texture->rectangle.right - texture->rectangle.left;
  plan.height = texture->rectangle.bottom - texture->rectangle.top;
  plan.detail = static_cast<float>(texture->MatrixSize - 32) / 992 * 8 + kEpsilon;
  plan.bubbles = texture->BubbleCount < 0 ? 0 : texture->BubbleCount > kBubbleCountMax ? kBubbleCountMax
                                                                                        : texture->BubbleCount;
  int radius = texture->BubbleSize < 1 ? 1 : texture->BubbleSize;
  if (radius > plan.width / 2) radius = plan.width / 2;
  if (radius > plan.height / 2) radius = plan.height / 2;
  DibOwner bitmap(DibNew(plan.width, plan.height, nullptr, 24));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  std::uint32_t table[256];
  BuildColourTable(*texture, table);
  float* bubbleMap = nullptr;
  if (plan.bubbles > 0) {
    bubbleMap = new (std::nothrow) float[static_cast<std::size_t>(plan.width) * plan.height]();
    if (bubbleMap == nullptr) return nullptr;
    FillBubbleMap(bubbleMap, plan.width, plan.height, plan.bubbles, radius, *texture);
  }
  plan.bubbleMap = bubbleMap;
  PrepareOctaveAmplitudes();
  for (int y = 0; y < plan.height; ++y)
    for (int x = 0; x < plan.width; ++x)
      DibPutPixel(lock.head, x, y, table[FloatToInt(PixelValue(*texture, plan, x, y) * 255)]);
  delete[] bubbleMap;
  return bitmap.release();
}
