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
    FrameRecord record;
    if (FrameRecordRead(list, index, &record) == 0) continue;  // a record that will not lock is skipped
    if (record.image != nullptr) MemFree(record.image);
    if (record.mask != nullptr) MemFree(record.mask);
  }
  MemFree(list->records);
  list->records = nullptr;
  list->count = 0;
  return 1;
}

int FramePatchDelay(FrameList* list, std::uint32_t delay) {
  if (list->count == 0 || list->records == nullptr) return 0;
  FrameRecord last;
  if (FrameRecordRead(list, list->count - 1, &last) == 0) return 0;
  last.delay = delay;
  return FrameRecordWrite(list, list->count - 1, &last);
}

int FrameRecordRead(const FrameList* list, int index, FrameRecord* record) {
  if (index < 0 || index >= list->count) return 0;
  const auto* records = static_cast<const FrameRecord*>(MemLock(list->records));
  if (records == nullptr) return 0;
  std::memcpy(record, &records[index], sizeof(FrameRecord));
  MemUnlock(list->records);
  return 1;
}

int FrameRecordWrite(FrameList* list, int index, const FrameRecord* record) {
  if (index < 0 || index >= list->count) return 0;
  auto* records = static_cast<FrameRecord*>(MemLock(list->records));
  if (records == nullptr) return 0;
  std::memcpy(&records[index], record, sizeof(FrameRecord));
  MemUnlock(list->records);
  return 1;
}
