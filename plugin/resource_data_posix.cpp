#include <cstring>

#include "plugin/resource_data.h"

// Written at build time into the resources' library.
extern const BuiltResource kBuiltResources[];
extern const int kBuiltResourceCount;

const std::uint8_t* ResourceBytes(const char* type, int id, std::size_t* size) {
  *size = 0;
  for (int i = 0; i < kBuiltResourceCount; ++i) {
    const BuiltResource& row = kBuiltResources[i];
    if (row.id != id || std::strcmp(row.type, type) != 0) continue;
    *size = row.size;
    return row.bytes;
  }
  return nullptr;
}
