// The still of fire that Inferno's preview shows instead of simulating: one
// recorded canvas of the fire at 1280 by 120 with the default colours, an
// 8-bit bitmap of the store deflated behind a 52-byte head, kept as the
// plug-in's resource CPX 8001.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr char kFireStillType[] = "CPX";
constexpr int kFireStillId = 8001;
constexpr int kFireStillWidth = 1280;
constexpr int kFireStillHeight = 120;
constexpr char kFireStillMagic[] = "CPX_HEAD";

struct FireStillHead {
  char magic[8];             // "CPX_HEAD", no terminator
  std::uint32_t rawSize;     // the bitmap's bytes
  std::uint32_t packedSize;  // the zlib stream's bytes
  std::uint32_t version;     // 1; not read
  std::uint8_t zeros[32];
};
static_assert(sizeof(FireStillHead) == 52);
static_assert(offsetof(FireStillHead, rawSize) == 8 && offsetof(FireStillHead, packedSize) == 12);
static_assert(offsetof(FireStillHead, version) == 16 && offsetof(FireStillHead, zeros) == 20);

// The bitmap inflated from a still in this layout, or null if the head, the
// stream or the bitmap in it is not sound.
DibHandle FireStillUnpack(const std::uint8_t* bytes, std::size_t size);
// The plug-in's own still, or null.
DibHandle FireStillLoad();
