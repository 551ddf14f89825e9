// The noise swatch of Dragon Skin: the settings of a Perlin noise map, kept
// in a record that is also the swatch's settings file, and the map itself.
#pragma once

#include <cstddef>
#include <cstdint>

#include "plugin/controls.h"
#include "raster/dib.h"

constexpr int kNoisePathSize = 261;
constexpr std::uint32_t kNoiseVersion = 0x10006101;
constexpr std::uint64_t kNoiseRecordSize = 345;
inline constexpr char kNoiseMagic[8] = {'B', 'R', 'N', 'D', 'P', 'E', 'R', 'L'};

// Colours the swatch's grey picture: a new bitmap, or null.
using NoiseColouring = DibHandle (*)(const Controls* dialog, DibHandle grey);

#pragma pack(push, 1)
struct NoiseRecord {
  char magic[8];
  std::uint32_t version;
  std::uint64_t size;  // kNoiseRecordSize
  char path[kNoisePathSize];  // the file's own path, where the record is written back
  double extentX;  // the field's width in noise units when not uniform
  double extentY;
  double scale;    // noise units across the longer side when uniform
  double depth;    // the plane through the noise is at 1 / depth
  std::int32_t levels;  // stored; the picture does not depend on it
  std::int32_t uniform;
  std::int32_t seed;
  std::int32_t dimensions;   // 1, 2 or 3: how far the stream is run before the tables
  NoiseColouring colouring;  // in memory only: zero after reading a file
  DibHandle picture;         // in memory only: the swatch's picture
};
#pragma pack(pop)

static_assert(offsetof(NoiseRecord, version) == 8 && offsetof(NoiseRecord, size) == 12);
static_assert(offsetof(NoiseRecord, path) == 20 && offsetof(NoiseRecord, extentX) == 281);
static_assert(offsetof(NoiseRecord, extentY) == 289 && offsetof(NoiseRecord, scale) == 297);
static_assert(offsetof(NoiseRecord, depth) == 305 && offsetof(NoiseRecord, levels) == 313);
static_assert(offsetof(NoiseRecord, uniform) == 317 && offsetof(NoiseRecord, seed) == 321);
static_assert(offsetof(NoiseRecord, dimensions) == 325 && offsetof(NoiseRecord, colouring) == 329);
static_assert(offsetof(NoiseRecord, picture) == 337 && sizeof(NoiseRecord) == kNoiseRecordSize);

// The defaults, with path as the record's own (cut to fit).
void NoiseDefaults(NoiseRecord* record, const char* path);

// The path of control id's swatch file, Fill%05d.flp in the data folder, in
// a static buffer; empty when the application-data folder cannot be had.
const char* NoiseSwatchPath(int id);

// With useFile set, a file at path of exactly the record's size with the
// magic replaces the defaults whole, its stored path included, the two
// in-memory fields set to zero. Any other file leaves the defaults.
void NoiseRecordLoad(NoiseRecord* record, const char* path, int useFile);
// Writes the record to the path it holds: 1 on success; a short write
// removes the file and gives 0, as does a file that will not open.
int NoiseRecordSave(const NoiseRecord& record);

// The block control id makes for itself when created: the record loaded
// from the control's file unless useFile is 0 (Shift held). Null if the
// block cannot be made.
MemHandle NoiseSetUp(int id, int useFile);

// A new 24-bit grey bitmap of the noise, or null. Seeds the random stream
// and rebuilds the noise tables every time, so equal records give equal maps.
DibHandle MakeNoise(int width, int height, const NoiseRecord& record);

// The gradient of bar id as 256 colours, its strip 256 wide and 1 high,
// red first in each triple. 0 with the palette untouched if the bar holds no
// gradient or it cannot be drawn.
int NoisePaletteFromGradient(const Controls* dialog, int id, std::uint8_t palette[768]);

// A new 24-bit bitmap in which each pixel of grey takes the palette's colour
// at (its low byte + shift) & 255; null on a failure.
DibHandle NoisePaletteMap(DibHandle grey, const std::uint8_t palette[768], int shift);

// The swatch's colouring: each grey pixel replaced by the colour of gradient
// 259 at its red value.
DibHandle NoiseColourFromGradient259(const Controls* dialog, DibHandle grey);
