#include <gtest/gtest.h>

#include <cstring>

#include "plugin/host_interface.h"
#include "plugin/plugin_params.h"

namespace {

FrameRecord MakeFrame(int fill, std::uint32_t delay, bool withMask) {
  FrameRecord record{};
  record.image = MemAlloc(kMemMoveableZeroed, 64);
  std::memset(MemLock(record.image), fill, 64);
  MemUnlock(record.image);
  record.mask = withMask ? MemAlloc(kMemMoveableZeroed, 8) : nullptr;
  record.delay = delay;
  record.transparentIndex = -1;
  return record;
}

TEST(FrameList, AppendKeepsRecordsByteForByteThroughBothAllocationPaths) {
  FrameList list{};
  FrameRecord first = MakeFrame(1, 10, false);
  FrameRecord second = MakeFrame(2, 20, true);
  ASSERT_EQ(FrameListAppend(&list, &first), 1);
  ASSERT_EQ(FrameListAppend(&list, &second), 1);
  ASSERT_EQ(list.count, 2);
  EXPECT_EQ(MemSize(list.records), 2 * sizeof(FrameRecord));  // no slack
  auto* records = static_cast<FrameRecord*>(MemLock(list.records));
  EXPECT_EQ(std::memcmp(&records[0], &first, sizeof first), 0);
  EXPECT_EQ(std::memcmp(&records[1], &second, sizeof second), 0);
  MemUnlock(list.records);
  EXPECT_EQ(FrameListFree(&list), 1);
  EXPECT_EQ(list.records, nullptr);
  EXPECT_EQ(list.count, 0);
}

TEST(FrameList, PatchDelayTouchesOnlyTheLastFrameAndRefusesAnEmptyList) {
  FrameList list{};
  EXPECT_EQ(FramePatchDelay(&list, 99), 0);
  EXPECT_EQ(list.records, nullptr);

  FrameRecord first = MakeFrame(1, 10, false);
  FrameRecord second = MakeFrame(2, 20, false);
  FrameListAppend(&list, &first);
  FrameListAppend(&list, &second);
  EXPECT_EQ(FramePatchDelay(&list, 1010), 1);
  auto* records = static_cast<FrameRecord*>(MemLock(list.records));
  EXPECT_EQ(records[0].delay, 10u);
  EXPECT_EQ(records[1].delay, 1010u);
  EXPECT_EQ(records[1].image, second.image);
  EXPECT_EQ(records[1].transparentIndex, -1);
  MemUnlock(list.records);
  FrameListFree(&list);
}

TEST(FrameList, FreeOfAnEmptyListLeavesItEmpty) {
  FrameList list{};
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
