// Movable, zero-initialised memory blocks: the storage behind every DibHandle
// and frame array. On Windows these are real global-memory blocks, so a host
// built elsewhere can GlobalLock what we hand it; elsewhere an owned buffer
// with a size header stands in, with lock and unlock reduced to an address.
#pragma once

#include <cstddef>
#include <memory>

using MemHandle = void*;

constexpr unsigned kMemMoveable = 0x0002;
constexpr unsigned kMemZeroInit = 0x0040;
constexpr unsigned kMemMoveableZeroed = kMemMoveable | kMemZeroInit;  // 66

// Null on failure. Blocks always start zeroed.
MemHandle MemAlloc(unsigned flags, std::size_t size);
// Grows or shrinks a block; the old block stays valid on failure (null result).
MemHandle MemReAlloc(MemHandle block, std::size_t size, unsigned flags);
void* MemLock(MemHandle block);
int MemUnlock(MemHandle block);
// Returns null on success, as GlobalFree does. A null block is ignored.
MemHandle MemFree(MemHandle block);
std::size_t MemSize(MemHandle block);

struct MemFreeDeleter {
  void operator()(void* block) const { MemFree(block); }
};
// Owns a block until release(); used where early returns would otherwise leak.
using MemOwner = std::unique_ptr<void, MemFreeDeleter>;

// Locks a block that holds a T for the life of a scope; record is null
// without a block or when the lock failed.
template <typename T>
struct MemRecordLock {
  explicit MemRecordLock(MemHandle held) : block(held), record(static_cast<T*>(held != nullptr ? MemLock(held) : nullptr)) {}
  ~MemRecordLock() {
    if (record != nullptr) MemUnlock(block);
  }
  MemRecordLock(const MemRecordLock&) = delete;
  MemRecordLock& operator=(const MemRecordLock&) = delete;
  MemHandle block;
  T* record;
};
