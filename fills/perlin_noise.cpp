// Perlin's classic gradient noise in three dimensions, tables of 256 entries
// repeated past their end, and the grey map Dragon Skin cycles its colours
// through.
#include <cmath>
#include <cstdint>

#include "fills/noise_record.h"
#include "raster/crt_random.h"
#include "raster/float_to_int.h"

namespace {

constexpr int B = 256;
constexpr int BM = 255;
constexpr double N = 4096.0;
constexpr int kTableSize = B + B + 2;

struct NoiseTables {
  int p[kTableSize];
  float g1[kTableSize];
  float g2[kTableSize][2];
  float g3[kTableSize][3];
};
NoiseTables g_tables;
bool g_tablesStale = true;

float GradientDraw() { return static_cast<float>((CrtRand() % (B + B) - B) * 0.00390625); }

void Normalise2(float v[2]) {
  float s = static_cast<float>(std::sqrt(static_cast<double>(v[0] * v[0] + v[1] * v[1])));
  v[0] = v[0] / s;
  v[1] = v[1] / s;
}

void Normalise3(float v[3]) {
  float s = static_cast<float>(std::sqrt(static_cast<double>(v[0] * v[0] + v[1] * v[1] + v[2] * v[2])));
  v[0] = v[0] / s;
  v[1] = v[1] / s;
  v[2] = v[2] / s;
}

// Draws in the stream's order: g1, the two of g2, the three of g3 for each
// entry, then the shuffle.
void BuildTables() {
  NoiseTables& t = g_tables;
  for (int i = 0; i < B; ++i) {
    t.p[i] = i;
    t.g1[i] = GradientDraw();
    for (float& value : t.g2[i]) value = GradientDraw();
    Normalise2(t.g2[i]);
    for (float& value : t.g3[i]) value = GradientDraw();
    Normalise3(t.g3[i]);
  }
  for (int i = B - 1; i > 0; --i) {
    int j = CrtRand() % B;
    int k = t.p[i];
    t.p[i] = t.p[j];
    t.p[j] = k;
  }
  for (int i = 0; i < B + 2; ++i) {
    t.p[B + i] = t.p[i];
    t.g1[B + i] = t.g1[i];
    for (int j = 0; j < 2; ++j) t.g2[B + i][j] = t.g2[i][j];
    for (int j = 0; j < 3; ++j) t.g3[B + i][j] = t.g3[i][j];
  }
  g_tablesStale = false;
}

struct Lattice {
  int b0;
  int b1;
  float r0;
  float r1;
};

Lattice Setup(float a) {
  float t = static_cast<float>(a + N);
  int whole = FloatToInt(t);
  Lattice lattice;
  lattice.b0 = whole & BM;
  lattice.b1 = (lattice.b0 + 1) & BM;
  lattice.r0 = t - static_cast<float>(whole);
  lattice.r1 = static_cast<float>(lattice.r0 - 1.0);
  return lattice;
}

float SCurve(float t) { return static_cast<float>(t * t * (3.0 - 2.0 * t)); }
float Lerp(float t, float a, float b) { return a + t * (b - a); }
float At3(const float q[3], float rx, float ry, float rz) { return rx * q[0] + ry * q[1] + rz * q[2]; }

float Noise3(float x, float y, float z) {
  if (g_tablesStale) BuildTables();
  const NoiseTables& t = g_tables;
  Lattice lx = Setup(x), ly = Setup(y), lz = Setup(z);
  int i = t.p[lx.b0];
  int j = t.p[lx.b1];
  int b00 = t.p[i + ly.b0];
  int b10 = t.p[j + ly.b0];
  int b01 = t.p[i + ly.b1];
  int b11 = t.p[j + ly.b1];
  float sx = SCurve(lx.r0);
  float sy = SCurve(ly.r0);
  float sz = SCurve(lz.r0);
  float u = At3(t.g3[b00 + lz.b0], lx.r0, ly.r0, lz.r0);
  float v = At3(t.g3[b10 + lz.b0], lx.r1, ly.r0, lz.r0);
  float a = Lerp(sx, u, v);
  u = At3(t.g3[b01 + lz.b0], lx.r0, ly.r1, lz.r0);
  v = At3(t.g3[b11 + lz.b0], lx.r1, ly.r1, lz.r0);
  float b = Lerp(sx, u, v);
  float c = Lerp(sy, a, b);
  u = At3(t.g3[b00 + lz.b1], lx.r0, ly.r0, lz.r1);
  v = At3(t.g3[b10 + lz.b1], lx.r1, ly.r0, lz.r1);
  a = Lerp(sx, u, v);
  u = At3(t.g3[b01 + lz.b1], lx.r0, ly.r1, lz.r1);
  v = At3(t.g3[b11 + lz.b1], lx.r1, ly.r1, lz.r1);
  b = Lerp(sx, u, v);
  float d = Lerp(sy, a, b);
  return Lerp(sz, c, d);
}

// The tables depend on the position in the stream, so the draws that
// earlier versions spent on tables of fewer dimensions are still spent.
void SkipDraws(std::int32_t dimensions) {
  long long count = 256LL * dimensions + 256;
  if (count > (1 << 20)) count = 1 << 20;  // only a damaged file asks for more
  for (long long k = 0; k < count; ++k) CrtRand();
}

}  // namespace

DibHandle MakeNoise(int width, int height, const NoiseRecord& record) {
  CrtSrand(static_cast<unsigned>(record.seed));
  g_tablesStale = true;
  SkipDraws(record.dimensions);
  DibOwner bitmap(DibNew(width, height, nullptr, 24));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  float longer = static_cast<float>(width > height ? width : height);
  float z = static_cast<float>(1.0 / record.depth);
  float scale = static_cast<float>(record.scale);
  float extentX = static_cast<float>(record.extentX);
  float extentY = static_cast<float>(record.extentY);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      float u = record.uniform != 0 ? x / longer * scale : x / static_cast<float>(width) * extentX;
      float v = record.uniform != 0 ? y / longer * scale : y / static_cast<float>(height) * extentY;
      int grey = FloatToInt(Noise3(u, v, z) * 255.0);
      if (grey < 0) grey = 0;
      if (grey > 255) grey = 255;
      DibPutPixel(lock.head, x, y, static_cast<std::uint32_t>(grey * 0x010101));
    }
  }
  return bitmap.release();
}
