// Raw data resources of the plug-in, by type name and id: in the DLL from its
// own resources, headless from a table of the same data compiled into the
// program at build time.
#pragma once

#include <cstddef>
#include <cstdint>

// The bytes of the resource, or null if the module has none such.
const std::uint8_t* ResourceBytes(const char* type, int id, std::size_t* size);

// One row of the compiled-in table the headless build carries.
struct BuiltResource {
  const char* type;
  int id;
  const std::uint8_t* bytes;
  std::size_t size;
};
