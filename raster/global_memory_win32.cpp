// Global-memory blocks on Windows: GlobalAlloc and friends, unchanged.
#include "raster/global_memory.h"

#include <windows.h>

MemHandle MemAlloc(unsigned flags, std::size_t size) {
  return GlobalAlloc(flags | GMEM_ZEROINIT, size);
}

MemHandle MemReAlloc(MemHandle block, std::size_t size, unsigned flags) {
  return GlobalReAlloc(static_cast<HGLOBAL>(block), size, flags | GMEM_ZEROINIT);
}

void* MemLock(MemHandle block) { return GlobalLock(static_cast<HGLOBAL>(block)); }

int MemUnlock(MemHandle block) {
  GlobalUnlock(static_cast<HGLOBAL>(block));
  return 1;
}

MemHandle MemFree(MemHandle block) {
  if (block == nullptr) return nullptr;
  return GlobalFree(static_cast<HGLOBAL>(block));
}

std::size_t MemSize(MemHandle block) { return GlobalSize(static_cast<HGLOBAL>(block)); }
