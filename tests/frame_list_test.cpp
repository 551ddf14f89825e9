#include <gtest/gtest.h>

#include <cstring>

#include "plugin/host_interface.h"
#include "plugin/plugin_params.h"

namespace {

FrameRecord MakeFrame(int fill, std::uint32_t delay, bool withMask) {
  FrameRecord record{};
  record.image = MemAlloc(kMemMoveableZeroed, 64);
  record.mask = withMask ? MemAlloc(kMemMoveableZeroed, 8) : nullptr;
  record.delay = delay;
  record.transparentIndex = -1;
  std::memset(MemLock(record.image), fill, 64);
  MemUnlock(record.image);
  return record;
}

TEST(FrameList, AppendKeepsRecordsByteForByteThroughBothAllocationPathsAndPatchesTheLastDelay) {
  FrameList list{};
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
  EXPECT_EQ(FrameListFree(&list), 1);
  EXPECT_EQ(list.records, nullptr);
  EXPECT_EQ(list.count, 0);
}

TEST(FrameList, AnEmptyListRefusesAPatchAndFreesToItself) {
  FrameList list{};
  EXPECT_EQ(FramePatchDelay(&list, 99), 0);
  EXPECT_EQ(list.records, nullptr);
  EXPECT_EQ(FrameListFree(&list), 1);
  EXPECT_EQ(list.count, 0);
}

TEST(PluginParams, SizeOf333IsFilledExactlyAndKeepsTheHostsSize) {
  unsigned char buffer[400];
  std::memset(buffer, 0xAB, sizeof buffer);
  auto* params = reinterpret_cast<PluginParams*>(buffer);
  params->size = 333;
  EXPECT_EQ(PluginDescribe(params), 1);
  EXPECT_EQ(params->size, 333u);
  EXPECT_EQ(params->version, 4096u);
  EXPECT_STREQ(params->displayName, "Lettermotion #3");
  EXPECT_LT(std::strlen(params->notice), 64u);
  for (int offset = 24; offset < 269; ++offset) EXPECT_EQ(buffer[offset], 0) << offset;
  for (std::size_t offset = 333; offset < sizeof buffer; ++offset) EXPECT_EQ(buffer[offset], 0xAB) << offset;
}

}  // namespace
