#include "effects/fire.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

#include "raster/crt_random.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kFireWidthLimit = 0x7FFFFFFF / 32;

std::uint32_t Mix(std::uint32_t from, std::uint32_t to, int shift, int t) {
  std::uint32_t a = from >> shift & 0xFF;
  std::uint32_t b = to >> shift & 0xFF;
  return (a * (255 - t) + b * t) / 255;
}

void RampEntry(std::uint8_t entry[3], std::uint32_t from, std::uint32_t to, int t) {
  for (int channel = 0; channel < 3; ++channel)
    entry[channel] = static_cast<std::uint8_t>(Mix(from, to, channel * 8, t));
}

std::uint32_t Pack(const std::uint8_t entry[3]) {
  return static_cast<std::uint32_t>(entry[0]) | static_cast<std::uint32_t>(entry[1]) << 8 |
         static_cast<std::uint32_t>(entry[2]) << 16;
}

// The seed is a function of the phase alone, so the fed rows repeat after
// one period.
unsigned SeedOfPhase(const InfernoState* state) {
  float a = static_cast<float>(state->phase) / static_cast<float>(state->period);
  double s = std::sin(a * 360.0 * kPi / 180.0);
  auto product = static_cast<float>(s * static_cast<double>(static_cast<float>(state->seedAmplitude)));
  return static_cast<unsigned>(static_cast<int>(product) + state->seedBase);
}

// The canvas keeps only the low byte of what it is given, the red of the
// ramp entry; that byte is later looked up in the ramp once more.
void PaintCanvas(InfernoState* state) {
  DibHead* canvas = state->canvas;
  const int w = canvas->biWidth;
  for (int y = 0; y < canvas->biHeight; ++y)
    for (int x = 0; x < w; ++x) DibPutPixel(canvas, x, y, Pack(state->ramp[state->heat[y * w + x]]));
}

DibHandle RecordCanvas(const InfernoState* state) {
  const DibHead* canvas = state->canvas;
  DibHandle picture = DibNew(canvas->biWidth, canvas->biHeight, nullptr, 24);
  DibLock lock(picture);
  if (lock.head == nullptr) return MemFree(picture);
  for (int y = 0; y < canvas->biHeight; ++y)
    for (int x = 0; x < canvas->biWidth; ++x)
      DibPutPixel(lock.head, x, y, state->colours[DibGetPixel(canvas, x, y) & 0xFF]);
  return picture;
}

int MakeCanvas(InfernoState* state, int width, int height) {
  std::uint8_t palette[kPaletteBytes];
  std::memcpy(palette, state->ramp, sizeof palette);
  state->canvasHandle = DibNew(width, height, palette, 8);
  if (state->canvasHandle == nullptr) return 0;
  state->canvas = static_cast<DibHead*>(MemLock(state->canvasHandle));
  return state->canvas != nullptr;
}

}  // namespace

void BuildRamp(std::uint8_t ramp[kFireRampSize][3], std::uint32_t black, std::uint32_t red, std::uint32_t yellow) {
  for (int i = 0; i < 128; ++i) {
    RampEntry(ramp[i], black, red, 2 * i);
    RampEntry(ramp[128 + i], red, yellow, 2 * i);
  }
}

void StepFire(InfernoState* state) {
  const int w = state->canvas->biWidth;
  const int h = state->canvas->biHeight;
  std::uint8_t* heat = state->heat;
  CrtSrand(SeedOfPhase(state));
  if (++state->phase == state->period) state->phase = 0;

  // Fed in pairs, one draw a pair; the last one or two cells stay cold.
  std::uint8_t* bottom = heat + static_cast<std::ptrdiff_t>(h - 1) * w;
  for (int x = 0; x < w - 2; x += 2) {
    auto value = static_cast<std::uint8_t>(255 - std::abs(CrtRand()) % 255);
    bottom[x] = value;
    bottom[x + 1] = value;
  }
  std::memcpy(bottom - w, bottom, static_cast<std::size_t>(w));

  // In place and by raw index: the left and right neighbours of a row's end
  // cells are the next and previous rows' cells.
  const int last = (h - 1) * w - 1;
  for (int i = w; i <= last; ++i) {
    int average = (heat[i + w] + heat[i - 1] + heat[i + 1] + heat[i]) >> 2;
    if (average != 0) --average;
    heat[i - w] = static_cast<std::uint8_t>(average);
  }
  if (state->recording != 0) PaintCanvas(state);
}

int InitFire(InfernoState* state, int width, int height, std::uint32_t black, std::uint32_t red,
             std::uint32_t yellow, std::size_t budget) {
  *state = InfernoState{};
  state->seedBase = 10349;
  state->seedAmplitude = 10000;
  // Rows of 24-bit pixels must stay countable in 32 bits, and so must the cells.
  long long cells = static_cast<long long>(width) * height;
  if (width < 1 || height < 1 || width > kFireWidthLimit || cells > 0x7FFFFFFF) return 0;
  state->cellCount = static_cast<std::int32_t>(cells);
  state->heat = static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(cells), 1));
  BuildRamp(state->ramp, black, red, yellow);
  for (int i = 0; i < kFireRampSize; ++i) state->colours[i] = Pack(state->ramp[i]);
  state->period = height;
  state->frameCount = height;
  state->frames = new (std::nothrow) DibHandle[height]();
  if (state->heat == nullptr || state->frames == nullptr || MakeCanvas(state, width, height) == 0) {
    FreeFire(state);
    return 0;
  }

  for (int i = 0; i < height; ++i) StepFire(state);
  state->recording = 1;
  const std::size_t frameBytes = (std::size_t{24} * width + 31) / 32 * 4 * static_cast<std::size_t>(height);
  std::size_t recorded = 0;
  for (int i = 0; i < state->frameCount; ++i) {
    StepFire(state);
    if (frameBytes > budget - recorded) continue;
    state->frames[i] = RecordCanvas(state);
    if (state->frames[i] != nullptr) recorded += frameBytes;
  }
  return 1;
}

void FreeFire(InfernoState* state) {
  if (state->frames != nullptr)
    for (int i = 0; i < state->frameCount; ++i) MemFree(state->frames[i]);
  delete[] state->frames;
  state->frames = nullptr;
  if (state->canvas != nullptr) MemUnlock(state->canvasHandle);
  state->canvas = nullptr;
  state->canvasHandle = MemFree(state->canvasHandle);
  std::free(state->heat);
  state->heat = nullptr;
}

FireGeometry FireGeometryFor(int width, int height) {
  int p = height > 0 ? 12000 / height : 0;
  if (p <= 100) return {width, height, 0, 100};
  return {static_cast<int>(static_cast<long long>(width) * p / 100), height * p / 100, 1, height * 100 / 120};
}

void FireFramePlan(int count, int period, int* indices) {
  double step = static_cast<double>(period) / count;
  double t = 0;
  for (int i = 0; i < count; ++i) {
    t += step;
    int index = static_cast<int>(t);
    indices[i] = index < period - 1 ? index : period - 1;
  }
}
