// Byte loops sixteen at a time. Each block is computed into a local array
// and then stored, so the compiler sees that the stores cannot change what
// the block reads and turns the block into vector instructions at the
// default optimisation level; the results are those of the plain loop.
#pragma once

#include <cstdint>
#include <cstring>

constexpr int kByteBlock = 16;

// out[i] = compute(i) for i in [0, count).
template <typename Compute>
inline void StoreBytes(std::uint8_t* out, int count, Compute compute) {
  int i = 0;
  for (; i + kByteBlock <= count; i += kByteBlock) {
    std::uint8_t block[kByteBlock];
    for (int j = 0; j < kByteBlock; ++j) block[j] = compute(i + j);
    std::memcpy(out + i, block, kByteBlock);
  }
  for (; i < count; ++i) out[i] = compute(i);
}
