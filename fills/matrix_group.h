// Tile groups: binary files of the data folder that hold a list of tiles,
// each a 24-bit bitmap block stored byte for byte after a head of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <vector>

#include "raster/dib.h"

inline constexpr char kMatrixGroupMagic[8] = {'B', 'R', 'N', 'D', 'M', 'T', 'X', 'f'};
inline constexpr char kMatrixItemMark[4] = {'M', 'T', 'X', 'i'};
constexpr char kPrimaryMatrixGroup[] = "lwmotio3.mtx";
constexpr int kMatrixTileLimit = 513;  // refused when both sides reach it

#pragma pack(push, 1)
struct MatrixGroupHead {
  char magic[8];
  std::uint32_t time;  // seconds since 1970, low 32 bits
  char machineName[262];
  char organisation[262];
  std::uint8_t reserved0[266];
  std::uint32_t versionMajor;   // 16
  std::uint32_t versionMinor;   // 0
  std::uint32_t versionLetter;  // 97, 'a'
  std::uint32_t reserved1;
  std::uint32_t itemCount;
  std::uint32_t writeable;  // 1 in a written file; 0 in a primary group
  std::uint8_t reserved2[256];
};

struct MatrixItemHead {
  char mark[4];
  std::uint32_t size;  // of the body, the tile's block
  std::uint8_t reserved[64];
};
#pragma pack(pop)

static_assert(offsetof(MatrixGroupHead, time) == 8 && offsetof(MatrixGroupHead, machineName) == 12);
static_assert(offsetof(MatrixGroupHead, organisation) == 274 && offsetof(MatrixGroupHead, reserved0) == 536);
static_assert(offsetof(MatrixGroupHead, versionMajor) == 802 && offsetof(MatrixGroupHead, versionMinor) == 806);
static_assert(offsetof(MatrixGroupHead, versionLetter) == 810 && offsetof(MatrixGroupHead, reserved1) == 814);
static_assert(offsetof(MatrixGroupHead, itemCount) == 818 && offsetof(MatrixGroupHead, writeable) == 822);
static_assert(offsetof(MatrixGroupHead, reserved2) == 826 && sizeof(MatrixGroupHead) == 1082);
static_assert(offsetof(MatrixItemHead, size) == 4 && sizeof(MatrixItemHead) == 72);

// The tiles of a group in file order; the list owns the blocks.
struct MatrixTileList {
  std::vector<DibHandle> tiles;
  int writeable = 1;
};
void MatrixTileListFree(MatrixTileList* list);

// Tile number index of the group at path, counting items with a foreign mark
// too; null when the file is not a group with at least one item, or the
// tile is not there.
DibHandle MatrixGroupLoadTile(const char* path, int index);

// Fills the list from the group at path. A file that cannot be opened is no
// group yet: 1 with the list as it was. 0 on a short read or a wrong magic.
// Items with a foreign mark are skipped and not listed.
int MatrixGroupRead(const char* path, MatrixTileList* list);

// Writes the list to path with writeable set to 1 (a user's group) or 0 (a
// primary group), keeping the old file as path.bak. 0 on failure.
int MatrixGroupWrite(const char* path, const MatrixTileList& list, int writeable, std::time_t now);

// Whether a picture of this size may become a tile: refused only when both
// sides are 513 or more.
int MatrixTileSizeAccepted(int width, int height);
// A new 24-bit tile block from a picture of any depth, or null.
DibHandle MatrixTileFromPicture(DibHandle picture);
