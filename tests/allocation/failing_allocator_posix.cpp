// The C allocator of this test program, with a switch that fails one chosen
// call. Everything the program allocates goes through here: operator new,
// the bitmaps' blocks, FreeType's and the host's containers.
#include "tests/allocation/failing_allocator.h"

#include <cerrno>
#include <cstdlib>

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);

namespace {

bool gCounting = false;
long gCalls = 0;
long gFailingCall = -1;

// Where a debugger can stop to see who asked for the failed allocation.
[[gnu::noinline]] bool Fail() {
  errno = ENOMEM;
  return true;
}

// True for the call chosen to fail; counts the calls while counting is on.
bool ThisCallFails() {
  if (!gCounting || gCalls++ != gFailingCall) return false;
  return Fail();
}

}  // namespace

extern "C" void* malloc(std::size_t size) noexcept { return ThisCallFails() ? nullptr : __libc_malloc(size); }

extern "C" void* calloc(std::size_t count, std::size_t size) noexcept {
  return ThisCallFails() ? nullptr : __libc_calloc(count, size);
}

extern "C" void* realloc(void* block, std::size_t size) noexcept {
  return ThisCallFails() ? nullptr : __libc_realloc(block, size);
}

void AllocationsStart(long failingCall) {
  gCalls = 0;
  gFailingCall = failingCall;
  gCounting = true;
}

long AllocationsStop() {
  gCounting = false;
  return gCalls;
}
