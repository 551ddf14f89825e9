// Record-sized copies in and out of the frame list's block.
#include "colour/frame_records.h"

#include <cstring>

int FrameRecordRead(const FrameList* frames, int index, FrameRecord* record) {
  if (index < 0 || index >= frames->count) return 0;
  const auto* records = static_cast<const FrameRecord*>(MemLock(frames->records));
  if (records == nullptr) return 0;
  std::memcpy(record, &records[index], sizeof(FrameRecord));
  MemUnlock(frames->records);
  return 1;
}

int FrameRecordWrite(FrameList* frames, int index, const FrameRecord* record) {
  if (index < 0 || index >= frames->count) return 0;
  auto* records = static_cast<FrameRecord*>(MemLock(frames->records));
  if (records == nullptr) return 0;
  std::memcpy(&records[index], record, sizeof(FrameRecord));
  MemUnlock(frames->records);
  return 1;
}
