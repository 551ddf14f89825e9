// glibc hands large blocks back as soon as they are freed: those above the
// mmap threshold are unmapped, and the heap's top is trimmed past the trim
// threshold. Raised, both keep freed frames for the next ones.
#include <malloc.h>

#include "host/cli_allocator.h"

void CliKeepFreedMemory() {
  constexpr int kKept = 256 << 20;
  mallopt(M_MMAP_THRESHOLD, kKept);
  mallopt(M_TRIM_THRESHOLD, kKept);
}
