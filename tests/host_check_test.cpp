#include <gtest/gtest.h>

#include "plugin/host_check.h"

TEST(HostCheck, VersionWordIsJudgedByBits8To15Only) {
  EXPECT_EQ(HostInterfaceSupported(0x0FFF), 0);
  EXPECT_EQ(HostInterfaceSupported(0x1000), 1);
  EXPECT_EQ(HostInterfaceSupported(0x10FF), 1);
  EXPECT_EQ(HostInterfaceSupported(0x11000), 1);  // bits 8 to 15 are 0x10
  EXPECT_EQ(HostInterfaceSupported(0x10000), 0);  // bits 8 to 15 are 0
}
