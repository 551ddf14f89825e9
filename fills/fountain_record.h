// The gradient records: a FountainRecord is a colour line of up to 64
// markers between a start and an end colour; a FountainSpec lays such a line,
// or a plain pair of colours, on a plane. Both are packed, since they go into
// files as they stand in memory.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr int kFountainMaxMarkers = 64;
constexpr int kFountainNameSize = 261;
constexpr std::uint32_t kFountainVersion = 0x04000001;
constexpr std::uint32_t kFountainLongSize = 585;
constexpr std::uint32_t kFountainShortSize = 581;
constexpr std::uint32_t kFountainFlagPersist = 1;
constexpr std::uint32_t kFountainFlagLooped = 2;
inline constexpr char kFountainMagic[8] = {'B', 'R', 'N', 'D', 'F', 'O', 'U', 'N'};

#pragma pack(push, 1)
// The long form: in memory and in the Fountain file.
struct FountainRecord {
  char magic[8];
  std::uint32_t version;
  std::uint32_t size;
  std::uint32_t flags;
  char name[kFountainNameSize];
  DibHandle preview;  // the bar's strip, owned by the bar
  std::int32_t markerCount;
  std::uint32_t startColour;
  std::uint32_t endColour;
  std::uint32_t markers[kFountainMaxMarkers];  // low 24 bits colour, top byte position (0: empty)
  // State of the gradient bar that shows the record.
  std::int32_t selectedMarker;
  std::int32_t outlineDrawn;
  std::int32_t dragActive;
  std::int32_t dragStartX;
  std::int32_t dragStartY;
  std::int32_t lastX;
  std::int32_t lastY;
};

// The short form, as the Material file holds it: no preview and no bar state.
struct FountainShortRecord {
  char magic[8];
  std::uint32_t version;
  std::uint32_t size;
  std::uint32_t flags;
  char name[kFountainNameSize];
  std::uint32_t previewSlot;  // always zero
  std::int32_t markerCount;
  std::uint32_t startColour;
  std::uint32_t endColour;
  std::uint32_t markers[kFountainMaxMarkers];
  std::uint8_t barState[28];  // always zero
};

struct FountainSpec {
  std::int32_t shape;  // 0 linear, 1 conical, 2 nested ellipses, 3 nested rectangles
  std::uint32_t startColour;
  std::uint32_t endColour;
  std::int32_t edgePad;  // percent held flat at each end
  std::int32_t centreX;
  std::int32_t centreY;
  std::int32_t midpoint;
  std::int32_t reserved;
  std::int32_t rotation;  // degrees
  std::int32_t twoColour;  // 1: startColour to endColour; 0: the record
  FountainRecord record;
};
#pragma pack(pop)

static_assert(sizeof(DibHandle) == 8, "records are laid out for 64-bit handles");
static_assert(offsetof(FountainRecord, version) == 8 && offsetof(FountainRecord, size) == 12);
static_assert(offsetof(FountainRecord, flags) == 16 && offsetof(FountainRecord, name) == 20);
static_assert(offsetof(FountainRecord, preview) == 281 && offsetof(FountainRecord, markerCount) == 289);
static_assert(offsetof(FountainRecord, startColour) == 293 && offsetof(FountainRecord, endColour) == 297);
static_assert(offsetof(FountainRecord, markers) == 301 && offsetof(FountainRecord, selectedMarker) == 557);
static_assert(offsetof(FountainRecord, outlineDrawn) == 561 && offsetof(FountainRecord, dragActive) == 565);
static_assert(offsetof(FountainRecord, dragStartX) == 569 && offsetof(FountainRecord, dragStartY) == 573);
static_assert(offsetof(FountainRecord, lastX) == 577 && offsetof(FountainRecord, lastY) == 581);
static_assert(sizeof(FountainRecord) == kFountainLongSize);
static_assert(offsetof(FountainShortRecord, previewSlot) == 281 && offsetof(FountainShortRecord, markerCount) == 285);
static_assert(offsetof(FountainShortRecord, startColour) == 289 && offsetof(FountainShortRecord, endColour) == 293);
static_assert(offsetof(FountainShortRecord, markers) == 297 && offsetof(FountainShortRecord, barState) == 553);
static_assert(sizeof(FountainShortRecord) == kFountainShortSize);
static_assert(offsetof(FountainSpec, startColour) == 4 && offsetof(FountainSpec, endColour) == 8);
static_assert(offsetof(FountainSpec, edgePad) == 12 && offsetof(FountainSpec, centreX) == 16);
static_assert(offsetof(FountainSpec, centreY) == 20 && offsetof(FountainSpec, midpoint) == 24);
static_assert(offsetof(FountainSpec, reserved) == 28 && offsetof(FountainSpec, rotation) == 32);
static_assert(offsetof(FountainSpec, twoColour) == 36 && offsetof(FountainSpec, record) == 40);
static_assert(sizeof(FountainSpec) == 40 + kFountainLongSize);

// Sets a record up: form 0 no markers, 1 one mid grey marker, 2 the rainbow.
// The flags are left as they are.
void FountainInit(FountainRecord* record, int form);

// The two forms into each other, field by field, into a cleared record with
// its own size; the name is cut to 260 characters and the preview comes out
// null.
void FountainToShort(const FountainRecord* record, FountainShortRecord* image);
void FountainFromShort(const FountainShortRecord* image, FountainRecord* record);
