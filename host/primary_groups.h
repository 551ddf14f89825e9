// What an installer would put in the data folder: the primary tile group,
// written from tiles compiled into our hosts when it is missing.
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

// Writes the primary tile group to the data folder unless a file of that
// name is there already. 0 with error set if it cannot be written.
int HostInstallPrimaryGroups(std::string* error);
