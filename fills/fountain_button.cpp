#include "fills/fountain_button.h"

#include <cstring>

#include "fills/material.h"

namespace {

constexpr int kBarSide = 8;
constexpr int kBarTop = 16;
constexpr int kBarBottom = 4;

// The file's record in place of the rainbow: 1 only for exactly the long
// form's size with the magic.
int ReadFountainFile(const char* path, FountainRecord* record) {
  FountainRecord image;
  if (FillFileRead(path, &image, sizeof image) == 0 || std::memcmp(image.magic, kFountainMagic, sizeof image.magic) != 0)
    return 0;
  *record = image;
  record->preview = nullptr;
  return 1;
}

}  // namespace

DibRect FountainBarRect(const DibRect& client) {
  return {client.left + kBarSide, client.top + kBarTop, client.right - kBarSide, client.bottom - kBarBottom};
}

MemHandle FountainButtonLoad(const char* path, int persist, int looped, int useFile) {
  MemOwner block(MemAlloc(kMemMoveableZeroed, sizeof(FountainRecord)));
  auto* record = static_cast<FountainRecord*>(MemLock(block.get()));
  if (record == nullptr) return nullptr;
  if (persist == 0 || useFile == 0 || ReadFountainFile(path, record) == 0) FountainInit(record, 2);
  if (looped != 0) record->flags |= kFountainFlagLooped;
  if (persist != 0) record->flags |= kFountainFlagPersist;
  MemUnlock(block.get());
  return block.release();
}

MemHandle FountainSetUp(int id, const char* caption, long long setUp, int useFile) {
  int looped = caption != nullptr && std::strstr(caption, kFountainLoopedCaption) != nullptr;
  return FountainButtonLoad(FountainPath(id), setUp == kFountainSetUpPersist, looped, useFile);
}

int FountainButtonSave(MemHandle block, const char* path) {
  const auto* record = static_cast<const FountainRecord*>(MemLock(block));
  if (record == nullptr) return 0;
  FountainRecord image = *record;
  MemUnlock(block);
  if ((image.flags & kFountainFlagPersist) == 0) return 0;
  return FillFileWrite(path, &image, sizeof image);
}

FountainRecord* FountainLock(const Controls* dialog, int id) {
  MemHandle block = ControlData(dialog, id);
  return block == nullptr ? nullptr : static_cast<FountainRecord*>(MemLock(block));
}

void FountainUnlock(const Controls* dialog, int id) {
  MemHandle block = ControlData(dialog, id);
  if (block != nullptr) MemUnlock(block);
}
