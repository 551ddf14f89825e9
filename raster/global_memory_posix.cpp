// Owned, zeroed buffers with a size header, standing in for global memory.
// The handle is the header's address; the data follows it, 16-byte aligned.
#include "raster/global_memory.h"

#include <cstdlib>
#include <cstring>

namespace {

struct alignas(16) BlockHeader {
  std::size_t size;
};

BlockHeader* Header(MemHandle block) { return static_cast<BlockHeader*>(block); }

}  // namespace

MemHandle MemAlloc(unsigned, std::size_t size) {
  auto* header = static_cast<BlockHeader*>(std::calloc(1, sizeof(BlockHeader) + size));
  if (header != nullptr) header->size = size;
  return header;
}

MemHandle MemReAlloc(MemHandle block, std::size_t size, unsigned) {
  if (block == nullptr) return nullptr;
  std::size_t oldSize = Header(block)->size;
  auto* header = static_cast<BlockHeader*>(std::realloc(block, sizeof(BlockHeader) + size));
  if (header == nullptr) return nullptr;
  if (size > oldSize) std::memset(reinterpret_cast<char*>(header + 1) + oldSize, 0, size - oldSize);
  header->size = size;
  return header;
}

void* MemLock(MemHandle block) { return block == nullptr ? nullptr : Header(block) + 1; }

int MemUnlock(MemHandle) { return 1; }

MemHandle MemFree(MemHandle block) {
  std::free(block);
  return nullptr;
}

std::size_t MemSize(MemHandle block) { return block == nullptr ? 0 : Header(block)->size; }
