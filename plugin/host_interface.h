// The records that cross the border between the host and the plug-in, and the
// frame list that effects fill. Offsets are a contract with a separately
// built host: little-endian, 64-bit pointers, fixed by the asserts below.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr std::uint32_t kInterfaceVersion = 4096;

struct PluginParams {
  std::uint32_t size;  // set by the host; at least 333
  std::uint32_t version;
  char displayName[16];
  std::uint8_t reserved[245];
  char notice[64];
};
static_assert(offsetof(PluginParams, version) == 4);
static_assert(offsetof(PluginParams, displayName) == 8);
static_assert(offsetof(PluginParams, notice) == 269);
static_assert(sizeof(PluginParams) == 336);  // 333 bytes of content, padded to alignment

struct TaskRecord;

// The host's one service function: task or null, code, integer argument,
// integer-or-pointer argument. Non-zero means success.
using HostCallback = std::int64_t (*)(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                                      std::int64_t pointerArgument);

struct HostRecord {
  std::uint32_t reserved0;
  std::uint32_t versionWord;  // bits 8 to 15: the interface's major number
  std::uint32_t theme;
  std::uint32_t reserved12;
  HostCallback callback;
  std::uint64_t reserved24;
  std::uint8_t hostFlags;
};
static_assert(offsetof(HostRecord, versionWord) == 4);
static_assert(offsetof(HostRecord, theme) == 8);
static_assert(offsetof(HostRecord, callback) == 16);
static_assert(offsetof(HostRecord, hostFlags) == 32);

constexpr std::uint8_t kHostFlagPaletteFormat = 0x01;  // palette-based, per-frame transparency, short delays
constexpr std::uint8_t kHostFlagTrueColour = 0x02;

// Host codes, in the order of the interface table.
enum HostCode : std::uint32_t {
  kHostOpenTask = 1,
  kHostAddImage = 2,
  kHostAddComment = 3,
  kHostCloseTask = 4,
  kHostOpenTestTask = 5,
  kHostPickImageFile = 6,
  kHostLoadImageFile = 8,
  kHostShowHelp = 9,
  kHostStatusText = 10,
  kHostPickColour = 11,
  kHostProgress = 13,
  kHostBuildStarted = 18,
};

struct TaskRecord {
  std::uint32_t size;  // 1080
  std::uint32_t version;
  void* ownerWindow;
  std::uint32_t reserved16;
  std::uint32_t bitsPerPixel;
  std::uint32_t width;
  std::uint32_t height;
  std::uint8_t palette[768];
  std::uint32_t reserved800;
  std::uint32_t imageCount;
  std::uint8_t reserved808[264];
  std::uint32_t transparentIndex;
  std::uint32_t reserved1076;
};
static_assert(offsetof(TaskRecord, ownerWindow) == 8);
static_assert(offsetof(TaskRecord, bitsPerPixel) == 20);
static_assert(offsetof(TaskRecord, width) == 24 && offsetof(TaskRecord, height) == 28);
static_assert(offsetof(TaskRecord, palette) == 32);
static_assert(offsetof(TaskRecord, imageCount) == 804);
static_assert(offsetof(TaskRecord, transparentIndex) == 1072);
static_assert(sizeof(TaskRecord) == 1080);

struct ImageRecord {
  std::uint32_t size;  // 112
  std::uint32_t version;
  DibHandle image;  // stays the plug-in's; the host copies what it keeps
  std::uint32_t reserved16;
  std::uint32_t transparentFlag;
  std::uint8_t reserved24[8];
  std::uint32_t delay;
  std::uint32_t imageNumber;
  std::int32_t transparentIndex;
  std::uint8_t reserved44[68];
};
static_assert(offsetof(ImageRecord, image) == 8);
static_assert(offsetof(ImageRecord, transparentFlag) == 20);
static_assert(offsetof(ImageRecord, delay) == 32);
static_assert(offsetof(ImageRecord, imageNumber) == 36);
static_assert(offsetof(ImageRecord, transparentIndex) == 40);
static_assert(sizeof(ImageRecord) == 112);

struct ColourPickRecord {
  std::uint32_t size;  // 40
  std::uint32_t version;
  const std::uint8_t* palette;  // 768 bytes of swatches
  std::uint64_t bits;           // 24
  std::uint32_t colour;         // in and out, red in the low byte
  std::uint32_t reserved28;
  void* ownerWindow;
};
static_assert(offsetof(ColourPickRecord, palette) == 8);
static_assert(offsetof(ColourPickRecord, bits) == 16);
static_assert(offsetof(ColourPickRecord, colour) == 24);
static_assert(offsetof(ColourPickRecord, ownerWindow) == 32);
static_assert(sizeof(ColourPickRecord) == 40);

// One rendered frame; private to the plug-in.
struct FrameRecord {
  DibHandle image;
  DibHandle mask;  // 1-bit changed-pixel mask from supercompression, or null
  std::uint32_t delay;
  std::int32_t transparentIndex;
  std::uint8_t reserved[32];
};
static_assert(offsetof(FrameRecord, mask) == 8);
static_assert(offsetof(FrameRecord, delay) == 16);
static_assert(offsetof(FrameRecord, transparentIndex) == 20);
static_assert(sizeof(FrameRecord) == 56);

// A null handle with a count of 0 is the empty list.
struct FrameList {
  MemHandle records;
  std::int32_t count;
};

// Takes over the record's handles only when it returns 1.
int FrameListAppend(FrameList* list, const FrameRecord* record);
int FrameListFree(FrameList* list);
// Rewrites the delay of the last frame; 0 on an empty list.
int FramePatchDelay(FrameList* list, std::uint32_t delay);

// One record copied out of the list or back, the list's block locked only
// for the copy. 1, or 0 when the block will not lock or the index is outside.
int FrameRecordRead(const FrameList* list, int index, FrameRecord* record);
int FrameRecordWrite(FrameList* list, int index, const FrameRecord* record);
