#include "fills/material.h"

#include <cstring>

#include "fills/fountain.h"
#include "fills/matrix_tile.h"
#include "fills/texture_types.h"

namespace {

int PaintSimple(MaterialRecord* record, DibHead* target) {
  if (target->biWidth < 1 || target->biHeight < 1) return 1;
  // One row is painted pixel by pixel, the others are copies of it.
  for (int x = 0; x < target->biWidth; ++x) DibPutPixel(target, x, 0, record->colour);
  const std::uint8_t* first = DibRow(target, 0);
  std::size_t bytes = static_cast<std::size_t>(DibStride(target->biBitCount, target->biWidth));
  for (int y = 1; y < target->biHeight; ++y) std::memcpy(DibRow(target, y), first, bytes);
  return 1;
}

int PaintGradient(MaterialRecord* record, DibHead* target) {
  DibOwner gradient(FountainRender(target->biWidth, target->biHeight, &record->gradient));
  DibLock lock(gradient.get());
  if (lock.head == nullptr) return 0;
  return DibRegionCopy(target, 0, 0, lock.head, 0, 0, target->biWidth, target->biHeight);
}

// A texture is never stretched: it is generated on the square of the longer
// side and its middle is cut out, so a wide fill shows the same middle band
// as a square one of the same width.
int PaintTexture(MaterialRecord* record, DibHead* target) {
  int width = target->biWidth;
  int height = target->biHeight;
  int side = width > height ? width : height;
  record->texture.rectangle = {0, 0, side, side};
  DibOwner square(TextureGenerate(&record->texture));
  DibLock lock(square.get());
  if (lock.head == nullptr) return 0;
  DibRegionCopy(target, 0, 0, lock.head, (side - width) / 2, (side - height) / 2, width, height);
  return 1;
}

// The tile at its own size, repeated from the top left corner.
int PaintTile(MaterialRecord* record, DibHead* target) {
  record->matrix.rectangle = {0, 0, target->biWidth, target->biHeight};
  DibOwner wall(MatrixTileRender(&record->matrix));
  DibLock wallLock(wall.get());
  if (wallLock.head == nullptr) return 0;
  DibRegionCopy(target, 0, 0, wallLock.head, 0, 0, target->biWidth, target->biHeight);
  return 1;
}

}  // namespace

const MaterialKindRow MaterialKinds[kMaterialKindCount] = {
    {"Simple", PaintSimple},
    {"Gradient", PaintGradient},
    {"Texture", PaintTexture},
    {"Tile", PaintTile},
};

MaterialRecord* MaterialLock(const Controls* dialog, int id) {
  MemHandle block = ControlData(dialog, id);
  return block == nullptr ? nullptr : static_cast<MaterialRecord*>(MemLock(block));
}

void MaterialUnlock(const Controls* dialog, int id) {
  MemHandle block = ControlData(dialog, id);
  if (block != nullptr) MemUnlock(block);
}

DibHandle MaterialRender(MaterialRecord* record, int width, int height) {
  DibOwner bitmap(DibNew(width, height, nullptr, 24));
  if (bitmap == nullptr) return nullptr;
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  // An unknown kind leaves the zeroed pixels: a black fill, not a failure.
  if (record->kind < kMaterialKindCount && MaterialKinds[record->kind].paint(record, lock.head) == 0) return nullptr;
  return bitmap.release();
}

std::uint32_t MaterialAverageColour(DibHandle dib) {
  DibLock lock(dib);
  if (lock.head == nullptr) return 0;
  int width = lock.head->biWidth;
  int height = lock.head->biHeight;
  if (width <= 0 || height <= 0) return 0;
  std::uint64_t count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
  std::uint64_t red = 0, green = 0, blue = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = static_cast<std::uint32_t>(DibGetPixel(lock.head, x, y));
      red += pixel & 0xFF;
      green += pixel >> 8 & 0xFF;
      blue += pixel >> 16 & 0xFF;
    }
  }
  return static_cast<std::uint32_t>(red / count | (green / count) << 8 | (blue / count) << 16);
}

std::int32_t EffectBackgroundColourOf(const Controls* dialog, int id) {
  const MaterialRecord* record = MaterialLock(dialog, id);
  if (record == nullptr) return -1;
  std::int32_t colour = record->kind == kMaterialSimple ? static_cast<std::int32_t>(record->colour) : -1;
  MaterialUnlock(dialog, id);
  return colour;
}
