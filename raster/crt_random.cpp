#include "raster/crt_random.h"

#include <cstdint>

namespace {

std::uint32_t crtRandomState = 1;

}  // namespace

void CrtSrand(unsigned seed) { crtRandomState = static_cast<std::uint32_t>(seed); }

int CrtRand() {
  crtRandomState = crtRandomState * 214013u + 2531011u;
  return static_cast<int>(crtRandomState >> 16 & kCrtRandMax);
}
