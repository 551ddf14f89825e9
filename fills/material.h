// A fill: one record that holds the parameters of all four kinds (solid
// colour, gradient, generated texture, matrix tile), owned as a movable block
// by its swatch control, saved to a file of its own when the control goes and
// read back when it is made again. Generators lock the record through the
// controls seam and render it at the size they need.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fills/fountain_record.h"
#include "fills/matrix_record.h"
#include "fills/texture_record.h"
#include "plugin/controls.h"
#include "raster/dib.h"

enum MaterialKind : std::uint32_t {
  kMaterialSimple = 0,
  kMaterialGradient = 1,
  kMaterialTexture = 2,
  kMaterialTile = 3,
};
constexpr int kMaterialKindCount = 4;

constexpr std::uint32_t kMaterialRecordSize = 1282;
constexpr std::uint32_t kMaterialFileSize = 1270;
constexpr std::uint32_t kMaterialVersion = 0x00040000;
constexpr std::uint32_t kMaterialStateFace = 1;   // the swatch face is held down
constexpr std::uint32_t kMaterialStateArrow = 2;  // the menu arrow is held down
inline constexpr char kMaterialMagic[8] = {'B', 'R', 'N', 'D', 'C', 'M', 'A', 'T'};
// Initial values of the gradient part of a new record.
constexpr std::uint32_t kMaterialGradientStart = 0x404040;
constexpr std::uint32_t kMaterialGradientEnd = 0xC0C0C0;
constexpr int kMaterialGradientMidpoint = 50;

#pragma pack(push, 1)
struct MaterialRecord {
  char magic[8];
  std::uint32_t size;  // kMaterialRecordSize, in memory and in the file
  std::uint32_t version;
  std::uint32_t kind;    // MaterialKind
  std::uint32_t colour;  // the solid colour, red low
  std::uint32_t state;   // kMaterialState bits; cleared on load
  FountainSpec gradient;
  TextureRecord texture;
  MatrixRecord matrix;
  DibHandle preview;  // the swatch's picture; never meaningful in a file
  std::uint32_t averageColour;  // mean of the preview; picks the caption's colour
  std::uint8_t reserved[28];
};
#pragma pack(pop)

static_assert(offsetof(MaterialRecord, size) == 8 && offsetof(MaterialRecord, version) == 12);
static_assert(offsetof(MaterialRecord, kind) == 16 && offsetof(MaterialRecord, colour) == 20);
static_assert(offsetof(MaterialRecord, state) == 24 && offsetof(MaterialRecord, gradient) == 28);
static_assert(offsetof(MaterialRecord, texture) == 653 && offsetof(MaterialRecord, matrix) == 921);
static_assert(offsetof(MaterialRecord, preview) == 1242 && offsetof(MaterialRecord, averageColour) == 1250);
static_assert(offsetof(MaterialRecord, reserved) == 1254);
static_assert(sizeof(MaterialRecord) == kMaterialRecordSize);

// One row per kind, by kind number: the text of the kind menu, and the
// painter that covers a locked, zeroed 24-bit bitmap with the fill (1, or 0
// on failure).
struct MaterialKindRow {
  const char* name;
  int (*paint)(MaterialRecord* record, DibHead* target);
};
extern const MaterialKindRow MaterialKinds[kMaterialKindCount];

// The locked record of the block that control id owns, or null when it holds
// none or the lock fails. Unlock through the same control when done.
MaterialRecord* MaterialLock(const Controls* dialog, int id);
void MaterialUnlock(const Controls* dialog, int id);

// A new 24-bit bitmap of exactly width by height showing the fill, owned by
// the caller, or null. Writes the target rectangle of the texture or matrix
// part into the record, nothing else. Not re-entrant.
DibHandle MaterialRender(MaterialRecord* record, int width, int height);

// Each channel is its sum over all pixels divided by the pixel count,
// truncated; 0 for an empty bitmap or one that will not lock.
std::uint32_t MaterialAverageColour(DibHandle dib);

// Paths of control id's Material and Fountain files in the data folder, in a
// static buffer that the next call of either overwrites; empty when the
// application-data folder cannot be found.
const char* MaterialPath(int id);
const char* FountainPath(int id);

// The fill files are read and written whole: a read gives 1 only for a file
// of exactly size bytes; a write gives 1 when all were written, and a short
// write removes the file.
int FillFileRead(const char* path, void* bytes, std::size_t size);
int FillFileWrite(const char* path, const void* bytes, std::size_t size);

// A new record with the initial values and colour; with useFile set, a file
// of exactly the right size and magic replaces every field. Tile and preview
// start null and the state bits cleared. Null if the block cannot be made.
MemHandle MaterialLoad(const char* path, std::uint32_t colour, int useFile);
// Writes the block to path: 1 on success, 0 otherwise. A short write removes
// the file.
int MaterialSave(MemHandle block, const char* path);

// The block a fill control makes for itself when it is created: its row's
// default colour, replaced by its saved file unless useFile is 0 (Shift held
// while the dialog opens); the tile comes from the current tile group, by
// the saved tile number, whatever group the file named.
MemHandle MaterialSetUp(int id, std::uint32_t colour, int useFile);
// Frees a record's preview and tile, then the record's block.
void MaterialRelease(MemHandle block);

// The colour of the solid fill held by control id, or -1 when it holds any
// other kind or cannot be read: the background colour of an effect.
std::int32_t EffectBackgroundColourOf(const Controls* dialog, int id);
