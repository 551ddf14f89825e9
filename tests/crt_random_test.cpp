#include <gtest/gtest.h>

#include "raster/crt_random.h"

namespace {

TEST(CrtRandom, SeedOneGivesTheRuntimeStreamAndReseedingRestartsIt) {
  const int expected[] = {41, 18467, 6334, 26500, 19169};
  CrtSrand(1);
  for (int value : expected) EXPECT_EQ(CrtRand(), value);
  CrtSrand(1);
  EXPECT_EQ(CrtRand(), 41);
  EXPECT_EQ(CrtRand(), 18467);
}

TEST(CrtRandom, LargeSeedsWrapInThirtyTwoBitsAndStayInRange) {
  // state = 0xFFFFFFFF * 214013 + 2531011 mod 2^32 = 2316998, and 2316998 >> 16 = 35.
  CrtSrand(0xFFFFFFFFu);
  EXPECT_EQ(CrtRand(), 35);
  for (int i = 0; i < 1000; ++i) {
    int value = CrtRand();
    EXPECT_GE(value, 0);
    EXPECT_LE(value, kCrtRandMax);
  }
}

}  // namespace
