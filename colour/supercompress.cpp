// Marking the pixels that did not change since the picture before.
#include "colour/supercompress.h"

#include "plugin/host_interface.h"
#include "plugin/host_call.h"

namespace {

constexpr std::uint8_t kMaskPalette[6] = {0, 0, 0, 255, 255, 255};
constexpr char kSupercompressingText[] = "Supercompressing";

// Compares the frame with the running picture pixel by pixel over the
// picture's size, takes over what changed and marks what did not.
void MarkUnchanged(DibHead* previous, const DibHead* frame, DibHead* mask) {
  for (int y = 0; y < previous->biHeight; ++y) {
    for (int x = 0; x < previous->biWidth; ++x) {
      std::int32_t now = DibGetPixel(frame, x, y);
      if (DibGetPixel(previous, x, y) != now) {
        DibPutPixel(previous, x, y, static_cast<std::uint32_t>(now));
        DibPutPixel(mask, x, y, 0);
      } else {
        DibPutPixel(mask, x, y, 1);
      }
    }
  }
}

DibHandle MaskAgainst(DibHandle previousImage, DibHandle image) {
  DibLock previous(previousImage);
  DibLock frame(image);
  if (previous.head == nullptr || frame.head == nullptr) return nullptr;
  DibOwner mask(DibNew(previous.head->biWidth, previous.head->biHeight, kMaskPalette, 1));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return nullptr;
  MarkUnchanged(previous.head, frame.head, maskLock.head);
  return mask.release();
}

int SupercompressFrame(FrameList* frames, int index, DibHandle* previousImage, std::int32_t deltaColour) {
  FrameRecord record;
  if (FrameRecordRead(frames, index, &record) == 0) return 0;
  if (*previousImage == nullptr) {
    *previousImage = DibClone(record.image);
    return *previousImage != nullptr ? 1 : 0;
  }
  DibOwner mask(MaskAgainst(*previousImage, record.image));
  if (mask == nullptr) return 0;
  record.mask = mask.get();
  record.transparentIndex = deltaColour;
  if (FrameRecordWrite(frames, index, &record) == 0) return 0;
  mask.release();
  return 1;
}

}  // namespace

int Supercompress(FrameList* frames, DibHandle* previousImage, std::int32_t deltaColour, const HostRecord* host) {
  HostStatus(host, kSupercompressingText);
  for (int index = 0; index < frames->count; ++index) {
    HostProgress(host, index, frames->count);
    if (SupercompressFrame(frames, index, previousImage, deltaColour) == 0) return 0;
  }
  HostProgress(host, 0, 0);
  return 1;
}

int SupercompressApplyMask(DibHandle image, DibHandle mask, int deltaIndex, std::int32_t deltaColour) {
  DibLock imageLock(image);
  DibLock maskLock(mask);
  if (imageLock.head == nullptr || maskLock.head == nullptr) return 0;
  DibHead* head = imageLock.head;
  for (int y = 0; y < maskLock.head->biHeight; ++y) {
    for (int x = 0; x < maskLock.head->biWidth; ++x) {
      if (DibGetPixel(maskLock.head, x, y) == 1) DibPutPixel(head, x, y, static_cast<std::uint32_t>(deltaIndex));
    }
  }
  int tableEntries = head->biBitCount <= 8 ? 1 << head->biBitCount : 0;
  if (deltaIndex >= -1 && deltaIndex < tableEntries) {
    std::uint8_t* entry = reinterpret_cast<std::uint8_t*>(head) + kDibHeadSize + deltaIndex * 4;
    auto colour = static_cast<std::uint32_t>(deltaColour);
    entry[0] = static_cast<std::uint8_t>(colour >> 16);
    entry[1] = static_cast<std::uint8_t>(colour >> 8);
    entry[2] = static_cast<std::uint8_t>(colour);
    entry[3] = static_cast<std::uint8_t>(colour >> 24);
  }
  return 1;
}
