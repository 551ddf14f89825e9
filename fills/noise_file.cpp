// The noise swatch's record: its defaults, its file beside the Material
// files, and its colouring through the gradient beside it.
#include <cstdio>
#include <cstring>

#include "fills/fountain.h"
#include "fills/fountain_button.h"
#include "fills/noise_record.h"
#include "plugin/settings.h"

namespace {

constexpr int kColouringGradientId = 259;

}  // namespace

void NoiseDefaults(NoiseRecord* record, const char* path) {
  std::memset(record, 0, sizeof *record);
  std::memcpy(record->magic, kNoiseMagic, sizeof record->magic);
  record->version = kNoiseVersion;
  record->size = kNoiseRecordSize;
  std::snprintf(record->path, sizeof record->path, "%s", path);
  record->extentX = 50.0;
  record->extentY = 50.0;
  record->scale = 32.0;
  record->depth = 8.0;
  record->levels = 3;
  record->uniform = 1;
  record->seed = 10356;
  record->dimensions = 3;
}

const char* NoiseSwatchPath(int id) {
  static char path[kAppDataPathSize];
  char name[64];
  std::snprintf(name, sizeof name, "%s\\Fill%05.5d.flp", "Lettermotion 3", id);
  std::snprintf(path, sizeof path, "%s", AppDataPath(name));
  return path;
}

void NoiseRecordLoad(NoiseRecord* record, const char* path, int useFile) {
  if (useFile == 0) return;
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return;
  NoiseRecord read;
  char extra;
  bool whole = std::fread(&read, 1, sizeof read, file) == sizeof read && std::fread(&extra, 1, 1, file) == 0;
  std::fclose(file);
  if (!whole || std::memcmp(read.magic, kNoiseMagic, sizeof read.magic) != 0) return;
  *record = read;
  record->path[kNoisePathSize - 1] = '\0';
  record->colouring = nullptr;
  record->picture = nullptr;
}

int NoiseRecordSave(const NoiseRecord& record) {
  std::FILE* file = std::fopen(record.path, "wb");
  if (file == nullptr) return 0;
  NoiseRecord image = record;
  image.colouring = nullptr;  // no address of this run belongs in a file
  image.picture = nullptr;
  bool whole = std::fwrite(&image, 1, sizeof image, file) == sizeof image;
  if (std::fclose(file) != 0) whole = false;
  if (whole) return 1;
  std::remove(record.path);
  return 0;
}

MemHandle NoiseSetUp(int id, int useFile) {
  MemHandle block = MemAlloc(kMemMoveableZeroed, sizeof(NoiseRecord));
  auto* record = static_cast<NoiseRecord*>(MemLock(block));
  if (record == nullptr) return MemFree(block);
  const char* path = NoiseSwatchPath(id);
  NoiseDefaults(record, path);
  NoiseRecordLoad(record, path, useFile);
  MemUnlock(block);
  return block;
}

int NoisePaletteFromGradient(const Controls* dialog, int id, std::uint8_t palette[768]) {
  FountainRecord* gradient = FountainLock(dialog, id);
  if (gradient == nullptr) return 0;
  DibOwner strip(FountainStrip(gradient, 256, 1));
  FountainUnlock(dialog, id);
  DibLock lock(strip.get());
  if (lock.head == nullptr) return 0;
  for (int x = 0; x < 256; ++x) {
    std::uint32_t colour = static_cast<std::uint32_t>(DibGetPixel(lock.head, x, 0));
    palette[3 * x] = static_cast<std::uint8_t>(colour);
    palette[3 * x + 1] = static_cast<std::uint8_t>(colour >> 8);
    palette[3 * x + 2] = static_cast<std::uint8_t>(colour >> 16);
  }
  return 1;
}

DibHandle NoisePaletteMap(DibHandle grey, const std::uint8_t palette[768], int shift) {
  DibLock source(grey);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  DibOwner coloured(DibNew(width, height, nullptr, 24));
  DibLock target(coloured.get());
  if (target.head == nullptr) return nullptr;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::uint8_t* colour = palette + 3 * (((DibGetPixel(source.head, x, y) & 0xFF) + shift) & 255);
      DibPutPixel(target.head, x, y, colour[0] | colour[1] << 8 | colour[2] << 16);
    }
  }
  return coloured.release();
}

DibHandle NoiseColourFromGradient259(const Controls* dialog, DibHandle grey) {
  std::uint8_t palette[768] = {};
  NoisePaletteFromGradient(dialog, kColouringGradientId, palette);
  return NoisePaletteMap(grey, palette, 0);
}
