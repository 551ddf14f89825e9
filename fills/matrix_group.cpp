#include "fills/matrix_group.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "fills/group_backup.h"
#include "plugin/platform.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Only a regular file is opened: a path from a saved fill may name anything,
// and a pipe or a device would never end.
std::FILE* OpenGroup(const char* path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) ? std::fopen(path, "rb") : nullptr;
}

bool ReadWhole(std::FILE* file, void* into, std::size_t size) { return std::fread(into, 1, size, file) == size; }

int ReadGroupHead(std::FILE* file, MatrixGroupHead* head) {
  return ReadWhole(file, head, sizeof *head) && std::memcmp(head->magic, kMatrixGroupMagic, 8) == 0 ? 1 : 0;
}

// Bytes from the file's position to its end.
long BytesLeft(std::FILE* file) {
  long here = std::ftell(file);
  if (here < 0 || std::fseek(file, 0, SEEK_END) != 0) return -1;
  long end = std::ftell(file);
  std::fseek(file, here, SEEK_SET);
  return end - here;
}

// Whether a block holds a whole 24-bit bitmap: the tile users read its rows
// as its head gives them.
bool TileBlockValid(const void* bytes, std::uint32_t size) {
  if (size < kDibHeadSize) return false;
  DibHead head;
  std::memcpy(&head, bytes, sizeof head);
  if (head.biSize != kDibHeadSize || head.biBitCount != 24 || head.biWidth < 1 || head.biHeight < 1 ||
      head.biWidth > 65535 || head.biHeight > 65535)
    return false;
  auto rows = static_cast<std::uint64_t>(DibStride(24, head.biWidth)) * static_cast<std::uint64_t>(head.biHeight);
  return kDibHeadSize + rows <= size;
}

// A new block holding the size bytes that follow in the file, or null when
// they are not all there or do not hold a tile.
DibHandle ReadBody(std::FILE* file, std::uint32_t size) {
  if (BytesLeft(file) < static_cast<long>(size)) return nullptr;
  DibOwner block(MemAlloc(kMemMoveableZeroed, size));
  void* bytes = block != nullptr ? MemLock(block.get()) : nullptr;
  if (bytes == nullptr) return nullptr;
  bool read = ReadWhole(file, bytes, size) && TileBlockValid(bytes, size);
  MemUnlock(block.get());
  return read ? block.release() : nullptr;
}

bool MarkFits(const MatrixItemHead& item) { return std::memcmp(item.mark, kMatrixItemMark, 4) == 0; }

bool WriteWhole(std::FILE* file, const void* bytes, std::size_t size) {
  return std::fwrite(bytes, 1, size, file) == size;
}

// One item: its head with the block's allocated size, then the block.
// 1 written, 0 skipped (no block or no lock), -1 a short write.
int WriteItem(std::FILE* file, DibHandle tile) {
  std::size_t size = MemSize(tile);
  const void* bytes = tile != nullptr ? MemLock(tile) : nullptr;
  if (bytes == nullptr) return 0;
  MatrixItemHead item{};
  std::memcpy(item.mark, kMatrixItemMark, 4);
  item.size = static_cast<std::uint32_t>(size);
  bool written = WriteWhole(file, &item, sizeof item) && WriteWhole(file, bytes, size);
  MemUnlock(tile);
  return written ? 1 : -1;
}

void FillGroupHead(MatrixGroupHead* head, int writeable, std::time_t now) {
  std::memset(head, 0, sizeof *head);
  std::memcpy(head->magic, kMatrixGroupMagic, 8);
  head->time = static_cast<std::uint32_t>(now);
  PlatformMachineOwner(head->machineName, head->organisation, sizeof head->machineName);
  head->versionMajor = 16;
  head->versionLetter = 97;
  head->writeable = static_cast<std::uint32_t>(writeable);
}

}  // namespace

void MatrixTileListFree(MatrixTileList* list) {
  for (DibHandle tile : list->tiles) MemFree(tile);
  list->tiles.clear();
}

DibHandle MatrixGroupLoadTile(const char* path, int index) {
  File file(OpenGroup(path));
  MatrixGroupHead head;
  if (file == nullptr || ReadGroupHead(file.get(), &head) == 0 || head.itemCount < 1) return nullptr;
  for (std::uint32_t number = 0; number < head.itemCount; ++number) {
    MatrixItemHead item;
    if (!ReadWhole(file.get(), &item, sizeof item)) return nullptr;
    if (MarkFits(item) && number == static_cast<std::uint32_t>(index)) return ReadBody(file.get(), item.size);
    if (std::fseek(file.get(), static_cast<long>(item.size), SEEK_CUR) != 0) return nullptr;
  }
  return nullptr;
}

int MatrixGroupRead(const char* path, MatrixTileList* list) {
  File file(OpenGroup(path));
  if (file == nullptr) return 1;
  MatrixGroupHead head;
  if (ReadGroupHead(file.get(), &head) == 0) return 0;
  list->writeable = static_cast<int>(head.writeable);
  MatrixTileListFree(list);
  for (std::uint32_t number = 0; number < head.itemCount; ++number) {
    MatrixItemHead item;
    if (!ReadWhole(file.get(), &item, sizeof item)) return 0;
    long start = std::ftell(file.get());
    if (MarkFits(item)) {
      DibHandle tile = ReadBody(file.get(), item.size);
      if (tile == nullptr) return 0;
      list->tiles.push_back(tile);
    }
    if (std::fseek(file.get(), start + static_cast<long>(item.size), SEEK_SET) != 0) return 0;
  }
  return 1;
}

int MatrixGroupWrite(const char* path, const MatrixTileList& list, int writeable, std::time_t now) {
  MatrixGroupHead head;
  FillGroupHead(&head, writeable, now);
  GroupBackup(path);
  File file(std::fopen(path, "wb"));
  if (file == nullptr || !WriteWhole(file.get(), &head, sizeof head)) return 0;
  for (DibHandle tile : list.tiles) {
    int written = WriteItem(file.get(), tile);
    if (written < 0) return 0;
    head.itemCount += static_cast<std::uint32_t>(written);
  }
  if (std::fseek(file.get(), 0, SEEK_SET) != 0 || !WriteWhole(file.get(), &head, sizeof head)) return 0;
  return std::fclose(file.release()) == 0 ? 1 : 0;
}

int MatrixTileSizeAccepted(int width, int height) {
  return width >= kMatrixTileLimit && height >= kMatrixTileLimit ? 0 : 1;
}

DibHandle MatrixTileFromPicture(DibHandle picture) {
  DibLock lock(picture);
  if (lock.head == nullptr) return nullptr;
  return lock.head->biBitCount == 24 ? DibClone(picture) : DibToTrueColour(picture);
}
