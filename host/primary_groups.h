// What an installer would put in the data folder: the primary tile group,
// written from tiles compiled into our hosts, and the primary texture group,
// written from its text, each when it is missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct PrimaryTile {
  const std::uint8_t* block;  // a 24-bit bitmap block
  std::size_t size;
};
extern const PrimaryTile kPrimaryTiles[];
extern const int kPrimaryTileCount;

// The primary texture group's file, made at build time by
// tools/make_texture_group.cpp.
extern const char kPrimaryTextureGroupText[];

// Writes the primary groups to the data folder unless files of their names
// are there already. 0 with error set if one cannot be written.
int HostInstallPrimaryGroups(std::string* error);
