// The Material file: the record with its handles cut to 4-byte slots and the
// gradient's line in its short form, 1270 bytes, little-endian, unaligned.
#include <cstdio>
#include <cstring>

#include "fills/material.h"
#include "fills/matrix_tile.h"
#include "plugin/settings.h"

namespace {

constexpr char kDataFolderName[] = "Lettermotion 3";

#pragma pack(push, 1)
// A MatrixRecord with its tile handle in a 4-byte slot.
struct MatrixImage {
  char path[kMatrixPathSize];
  std::int32_t index;
  std::uint32_t tileSlot;
  DibRect rectangle;
  std::uint32_t flags;
  std::uint8_t reserved[28];
};

struct MaterialFileImage {
  char magic[8];
  std::uint32_t size;
  std::uint32_t version;
  std::uint32_t kind;
  std::uint32_t colour;
  std::uint32_t state;
  std::uint8_t gradientHead[offsetof(FountainSpec, record)];
  FountainShortRecord fountain;
  TextureRecord texture;
  MatrixImage matrix;
  std::uint32_t previewSlot;
  std::uint32_t averageColour;
  std::uint8_t reserved[28];
};
#pragma pack(pop)

static_assert(offsetof(MaterialFileImage, size) == 8 && offsetof(MaterialFileImage, version) == 12);
static_assert(offsetof(MaterialFileImage, kind) == 16 && offsetof(MaterialFileImage, colour) == 20);
static_assert(offsetof(MaterialFileImage, state) == 24 && offsetof(MaterialFileImage, gradientHead) == 28);
static_assert(offsetof(MaterialFileImage, fountain) == 68 && offsetof(MaterialFileImage, texture) == 649);
static_assert(offsetof(MatrixImage, index) == 261 && offsetof(MatrixImage, tileSlot) == 265);
static_assert(offsetof(MatrixImage, rectangle) == 269 && offsetof(MatrixImage, flags) == 285);
static_assert(offsetof(MatrixImage, reserved) == 289 && sizeof(MatrixImage) == 317);
static_assert(offsetof(MaterialFileImage, matrix) == 917);
static_assert(offsetof(MaterialFileImage, previewSlot) == 1234 && offsetof(MaterialFileImage, averageColour) == 1238);
static_assert(offsetof(MaterialFileImage, reserved) == 1242 && sizeof(MaterialFileImage) == kMaterialFileSize);

// Copies a zero-terminated field, cut so that its last byte stays zero.
template <std::size_t N>
void CopyName(char (&to)[N], const char (&from)[N]) {
  std::memcpy(to, from, N - 1);
  to[N - 1] = '\0';
}

// The fields a MaterialRecord and its file image share; the gradient is
// converted apart.
template <typename To, typename From>
void CopyMaterialFields(To* to, const From& from) {
  std::memcpy(to->magic, from.magic, sizeof to->magic);
  to->size = from.size;
  to->version = from.version;
  to->kind = from.kind;
  to->colour = from.colour;
  to->state = from.state;
  to->texture = from.texture;
  CopyName(to->matrix.path, from.matrix.path);
  to->matrix.index = from.matrix.index;
  to->matrix.rectangle = from.matrix.rectangle;
  to->matrix.flags = from.matrix.flags;
  to->averageColour = from.averageColour;
}

// The image must come zeroed: handle slots and bar state stay zero.
void MaterialToImage(MaterialFileImage* image, const MaterialRecord& record) {
  CopyMaterialFields(image, record);
  std::memcpy(image->gradientHead, &record.gradient, sizeof image->gradientHead);
  FountainToShort(&record.gradient.record, &image->fountain);
}

// Tile and preview come out null: handles in a file mean nothing.
void MaterialFromImage(MaterialRecord* record, const MaterialFileImage& image) {
  std::memset(record, 0, sizeof *record);
  CopyMaterialFields(record, image);
  std::memcpy(&record->gradient, image.gradientHead, sizeof image.gradientHead);
  FountainFromShort(&image.fountain, &record->gradient.record);
}

void MaterialInit(MaterialRecord* record, std::uint32_t colour) {
  std::memcpy(record->magic, kMaterialMagic, sizeof record->magic);
  record->size = kMaterialRecordSize;
  record->version = kMaterialVersion;
  record->kind = kMaterialSimple;
  record->colour = colour;
  record->gradient.startColour = kMaterialGradientStart;
  record->gradient.endColour = kMaterialGradientEnd;
  record->gradient.midpoint = kMaterialGradientMidpoint;
  record->gradient.twoColour = 1;
  FountainInit(&record->gradient.record, 2);
  TextureDefaults(&record->texture);
}

// Reads the whole file into image: 1 only if it has exactly the image's size
// and the Material magic.
int ReadMaterialImage(const char* path, MaterialFileImage* image) {
  return FillFileRead(path, image, sizeof *image) != 0 &&
                 std::memcmp(image->magic, kMaterialMagic, sizeof image->magic) == 0
             ? 1
             : 0;
}

// Formats "Lettermotion 3\<kind>NNNNN.mtrl" and places it in the
// application-data folder.
const char* DataFilePath(const char* format, int id) {
  static char path[kAppDataPathSize];
  char name[64];
  std::snprintf(name, sizeof name, format, kDataFolderName, id);
  std::snprintf(path, sizeof path, "%s", AppDataPath(name));
  return path;
}

}  // namespace

int FillFileRead(const char* path, void* bytes, std::size_t size) {
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return 0;
  char extra;
  bool whole = std::fread(bytes, 1, size, file) == size && std::fread(&extra, 1, 1, file) == 0;
  std::fclose(file);
  return whole ? 1 : 0;
}

int FillFileWrite(const char* path, const void* bytes, std::size_t size) {
  std::FILE* file = std::fopen(path, "wb");
  if (file == nullptr) return 0;
  bool written = std::fwrite(bytes, 1, size, file) == size;
  // A write that only fails when the buffer is flushed is short as well.
  written = std::fclose(file) == 0 && written;
  if (written) return 1;
  std::remove(path);
  return 0;
}

const char* MaterialPath(int id) { return DataFilePath("%s\\Material%05.5d.mtrl", id); }

const char* FountainPath(int id) { return DataFilePath("%s\\Fountain%05.5d.mtrl", id); }

MemHandle MaterialLoad(const char* path, std::uint32_t colour, int useFile) {
  MemOwner block(MemAlloc(kMemMoveableZeroed, kMaterialRecordSize));
  if (block == nullptr) return nullptr;
  auto* record = static_cast<MaterialRecord*>(MemLock(block.get()));
  if (record == nullptr) return nullptr;
  MaterialInit(record, colour);
  MaterialFileImage image;
  if (useFile != 0 && ReadMaterialImage(path, &image) != 0) MaterialFromImage(record, image);
  if (record->matrix.path[0] != '\0') record->matrix.tile = MatrixTileLoad(record->matrix.path, record->matrix.index);
  record->state &= ~(kMaterialStateFace | kMaterialStateArrow);
  MemUnlock(block.get());
  return block.release();
}

int MaterialSave(MemHandle block, const char* path) {
  const auto* record = static_cast<const MaterialRecord*>(MemLock(block));
  if (record == nullptr) return 0;
  MaterialFileImage image{};
  MaterialToImage(&image, *record);
  MemUnlock(block);
  return FillFileWrite(path, &image, sizeof image);
}

MemHandle MaterialSetUp(int id, std::uint32_t colour, int useFile) {
  MemHandle block = MaterialLoad(MaterialPath(id), colour, useFile);
  auto* record = static_cast<MaterialRecord*>(block != nullptr ? MemLock(block) : nullptr);
  if (record == nullptr) return block;
  MatrixRecord& matrix = record->matrix;
  std::snprintf(matrix.path, sizeof matrix.path, "%s", DataFolderPath(MatrixLibrary));
  MemFree(matrix.tile);
  matrix.tile = MatrixTileLoad(matrix.path, matrix.index);
  MemUnlock(block);
  return block;
}

void MaterialRelease(MemHandle block) {
  if (auto* record = static_cast<MaterialRecord*>(block != nullptr ? MemLock(block) : nullptr)) {
    MemFree(record->preview);
    MemFree(record->matrix.tile);
    MemUnlock(block);
  }
  MemFree(block);
}
