#include "effects/fire_still.h"

#include <zlib.h>

#include <cstring>

#include "plugin/resource_data.h"

namespace {

// The inflated block must be a whole bitmap: its head, colour table and rows
// exactly fill it.
bool IsWholeBitmap(const DibHead* head, std::size_t size) {
  if (size < kDibHeadSize || head->biSize != kDibHeadSize || head->biWidth < 1 || head->biHeight < 1) return false;
  if (head->biWidth > 0x7FFFFFFF / 32) return false;  // a row's bits must count in 32 bits
  int depth = head->biBitCount;
  if (depth != 1 && depth != 4 && depth != 8 && depth != 24 && depth != 32) return false;
  std::size_t rows =
      static_cast<std::size_t>(DibStride(depth, head->biWidth)) * static_cast<std::size_t>(head->biHeight);
  return static_cast<std::size_t>(kDibHeadSize + DibColourTableBytes(depth)) + rows == size;
}

}  // namespace

DibHandle FireStillUnpack(const std::uint8_t* bytes, std::size_t size) {
  FireStillHead head;
  if (bytes == nullptr || size < sizeof head) return nullptr;
  std::memcpy(&head, bytes, sizeof head);
  if (std::memcmp(head.magic, kFireStillMagic, sizeof head.magic) != 0) return nullptr;
  if (head.packedSize > size - sizeof head || head.rawSize < kDibHeadSize) return nullptr;
  DibOwner bitmap(MemAlloc(kMemMoveableZeroed, head.rawSize));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;

  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return nullptr;
  stream.next_in = const_cast<Bytef*>(bytes + sizeof head);
  stream.avail_in = head.packedSize;
  stream.next_out = reinterpret_cast<Bytef*>(lock.head);
  stream.avail_out = head.rawSize;
  int status = inflate(&stream, Z_FINISH);
  inflateEnd(&stream);
  if (status != Z_STREAM_END || stream.total_out != head.rawSize) return nullptr;
  if (!IsWholeBitmap(lock.head, head.rawSize)) return nullptr;
  return bitmap.release();
}

DibHandle FireStillLoad() {
  std::size_t size = 0;
  const std::uint8_t* bytes = ResourceBytes(kFireStillType, kFireStillId, &size);
  return FireStillUnpack(bytes, size);
}
