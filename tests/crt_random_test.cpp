#include <gtest/gtest.h>

#include "raster/crt_random.h"

namespace {

TEST(CrtRandom, SeedOneGivesTheRuntimeStreamAndReseedingRestartsIt) {
  for (int round = 0; round < 2; ++round) {
    CrtSrand(1);
    for (int value : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(CrtRand(), value);
  }
}

TEST(CrtRandom, LargeSeedsWrapInThirtyTwoBitsAndStayInRange) {
  // state = 0xFFFFFFFF * 214013 + 2531011 mod 2^32 = 2316998, and 2316998 >> 16 = 35.
  CrtSrand(0xFFFFFFFFu);
  EXPECT_EQ(CrtRand(), 35);
  for (int i = 0; i < 1000; ++i) ASSERT_LE(static_cast<unsigned>(CrtRand()), static_cast<unsigned>(kCrtRandMax));
}

}  // namespace
