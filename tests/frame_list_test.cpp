#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "plugin/host_interface.h"
#include "plugin/plugin_params.h"

namespace {

FrameRecord MakeFrame(int fill, std::uint32_t delay, bool withMask) {
  FrameRecord record{MemAlloc(kMemMoveableZeroed, 64), withMask ? MemAlloc(kMemMoveableZeroed, 8) : nullptr, delay, -1,
                     {}};
  std::memset(MemLock(record.image), fill, 64);
  MemUnlock(record.image);
  return record;
}

TEST(FrameList, AppendKeepsRecordsByteForByteThroughBothAllocationPathsAndPatchesTheLastDelay) {
  FrameList list{};
  EXPECT_EQ(FramePatchDelay(&list, 99), 0);  // an empty list refuses the patch and stays empty
  EXPECT_EQ(list.records, nullptr);
  FrameRecord frames[2] = {MakeFrame(1, 10, false), MakeFrame(2, 20, true)};
  for (FrameRecord& frame : frames) ASSERT_EQ(FrameListAppend(&list, &frame), 1);  // a first block, then a grown one
  ASSERT_EQ(list.count, 2);
  EXPECT_EQ(MemSize(list.records), sizeof frames);  // no slack
  EXPECT_EQ(std::memcmp(MemLock(list.records), frames, sizeof frames), 0);
  MemUnlock(list.records);

  EXPECT_EQ(FramePatchDelay(&list, 1010), 1);
  frames[1].delay = 1010;  // only the last frame's delay changes
  EXPECT_EQ(std::memcmp(MemLock(list.records), frames, sizeof frames), 0);
  MemUnlock(list.records);
  for (int round = 0; round < 2; ++round) {  // freeing an emptied list leaves it empty
    EXPECT_EQ(FrameListFree(&list), 1);
    EXPECT_EQ(list.records, nullptr);
    EXPECT_EQ(list.count, 0);
  }
}

TEST(PluginParams, SizeOf333IsFilledExactlyAndKeepsTheHostsSize) {
  unsigned char buffer[400];
  std::memset(buffer, 0xAB, sizeof buffer);
  auto* params = reinterpret_cast<PluginParams*>(buffer);
  params->size = 333;
  EXPECT_EQ(PluginDescribe(params), 1);
  EXPECT_EQ(std::make_pair(params->size, params->version), std::make_pair(333u, 4096u));  // the host's size stays
  EXPECT_STREQ(params->displayName, "Lettermotion #3");
  EXPECT_LT(std::strlen(params->notice), 64u);
  for (int offset = 24; offset < 269; ++offset) EXPECT_EQ(buffer[offset], 0) << offset;
  for (std::size_t offset = 333; offset < sizeof buffer; ++offset) EXPECT_EQ(buffer[offset], 0xAB) << offset;
}

}  // namespace
