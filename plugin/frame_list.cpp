// The growing list of rendered frames: one movable block holding a
// contiguous array of FrameRecord, grown by exactly one record per append.
#include <cstring>

#include "plugin/host_interface.h"

int FrameListAppend(FrameList* list, const FrameRecord* record) {
  if (list->count == 0) {
    MemHandle block = MemAlloc(kMemMoveableZeroed, sizeof(FrameRecord));
    if (block == nullptr) return 0;
    list->records = block;
    list->count = 1;
  } else {
    MemHandle block = MemReAlloc(list->records, (list->count + 1) * sizeof(FrameRecord), kMemMoveableZeroed);
    if (block == nullptr) return 0;
    list->records = block;
    list->count += 1;
  }
  auto* records = static_cast<FrameRecord*>(MemLock(list->records));
  if (records == nullptr) {
    if (list->count == 1) {
      MemFree(list->records);
      list->records = nullptr;
    }
    list->count -= 1;
    return 0;
  }
  std::memcpy(&records[list->count - 1], record, sizeof(FrameRecord));
  MemUnlock(list->records);
  return 1;
}

int FrameListFree(FrameList* list) {
  for (int index = 0; index < list->count; ++index) {
    auto* records = static_cast<FrameRecord*>(MemLock(list->records));
    if (records == nullptr) continue;
    DibHandle image = records[index].image;
    DibHandle mask = records[index].mask;
    MemUnlock(list->records);
    if (image != nullptr) MemFree(image);
    if (mask != nullptr) MemFree(mask);
  }
  MemFree(list->records);
  list->records = nullptr;
  list->count = 0;
  return 1;
}

int FramePatchDelay(FrameList* list, std::uint32_t delay) {
  if (list->count == 0 || list->records == nullptr) return 0;
  auto* records = static_cast<FrameRecord*>(MemLock(list->records));
  if (records == nullptr) return 0;
  FrameRecord last;
  std::memcpy(&last, &records[list->count - 1], sizeof last);
  MemUnlock(list->records);
  last.delay = delay;
  records = static_cast<FrameRecord*>(MemLock(list->records));
  if (records == nullptr) return 0;
  std::memcpy(&records[list->count - 1], &last, sizeof last);
  MemUnlock(list->records);
  return 1;
}
