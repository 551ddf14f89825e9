// Tile groups on disk and tile fills: the readers' two numberings, the size
// rule, the backup, and a tile repeated from the top left.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "fills/matrix_group.h"
#include "fills/matrix_tile.h"
#include "tests/test_folder.h"

namespace {

namespace fs = std::filesystem;

class MatrixGroupFiles : public ::testing::Test {
 protected:
  std::string Path(const char* name) const { return folder_.File(name); }
  TestFolder folder_{"lw_matrix"};
};

// A tile whose pixel (x, y) is colour + x + 256 * y.
DibHandle Tile(int width, int height, std::uint32_t colour) {
  DibHandle tile = DibNew(width, height, nullptr, 24);
  DibLock lock(tile);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, colour + x + 256 * y);
  return tile;
}

int WidthOf(DibHandle dib) {
  int width = 0, height = 0;
  DibSizeOf(dib, &width, &height);
  return width;
}

TEST_F(MatrixGroupFiles, ForeignItemsCountForTheLoaderButAreNotListed) {
  MatrixTileList list;
  for (int width : {3, 4, 5}) list.tiles.push_back(Tile(width, 2, 0));
  std::string path = Path("group.mtx");
  ASSERT_EQ(MatrixGroupWrite(path.c_str(), list, 1, 0), 1);
  MatrixTileListFree(&list);
  // Give the second item a foreign mark.
  std::FILE* file = std::fopen(path.c_str(), "r+b");
  DibOwner first(MatrixGroupLoadTile(path.c_str(), 0));
  std::fseek(file, sizeof(MatrixGroupHead) + sizeof(MatrixItemHead) + MemSize(first.get()), SEEK_SET);
  std::fputs("XXXX", file);
  std::fclose(file);

  ASSERT_EQ(MatrixGroupRead(path.c_str(), &list), 1);
  ASSERT_EQ(list.tiles.size(), 2u);
  EXPECT_EQ(WidthOf(list.tiles[1]), 5);  // the list drifts: its tile 1 is the file's item 2
  MatrixTileListFree(&list);
  DibOwner second(MatrixGroupLoadTile(path.c_str(), 1));
  EXPECT_EQ(second, nullptr);
  DibOwner third(MatrixGroupLoadTile(path.c_str(), 2));
  EXPECT_EQ(WidthOf(third.get()), 5);
  EXPECT_EQ(MatrixGroupLoadTile(path.c_str(), 3), nullptr);  // past the end
}

TEST_F(MatrixGroupFiles, EmptyGroupsBadFilesAndTheBackup) {
  MatrixTileList list;
  std::string path = Path("empty.mtx");
  ASSERT_EQ(MatrixGroupWrite(path.c_str(), list, 0, 0), 1);
  EXPECT_EQ(MatrixGroupRead(path.c_str(), &list), 1);
  EXPECT_EQ(list.writeable, 0);
  EXPECT_EQ(MatrixGroupLoadTile(path.c_str(), 0), nullptr);  // a group needs an item to load from

  list.tiles.push_back(Tile(2, 2, 0));
  ASSERT_EQ(MatrixGroupWrite(path.c_str(), list, 1, 0), 1);
  EXPECT_EQ(fs::file_size(path + ".bak"), sizeof(MatrixGroupHead));  // the empty version kept
  MatrixTileListFree(&list);

  EXPECT_EQ(MatrixGroupRead(Path("missing.mtx").c_str(), &list), 1);  // no group yet
  std::FILE* file = std::fopen(path.c_str(), "r+b");
  std::fputs("NOTAGROUP", file);
  std::fclose(file);
  EXPECT_EQ(MatrixGroupRead(path.c_str(), &list), 0);
  fs::resize_file(path + ".bak", 100);
  EXPECT_EQ(MatrixGroupRead((path + ".bak").c_str(), &list), 0);
}

TEST(MatrixTiles, SizeRuleRefusesOnlyWhenBothSidesAreTooLarge) {
  EXPECT_EQ(MatrixTileSizeAccepted(600, 100), 1);
  EXPECT_EQ(MatrixTileSizeAccepted(512, 4000), 1);
  EXPECT_EQ(MatrixTileSizeAccepted(513, 513), 0);
}

TEST(MatrixTiles, RenderRepeatsFromTheTopLeftAndFallsBackToTheBuiltInTile) {
  MatrixRecord record{};
  record.tile = Tile(4, 3, 0x100000);
  record.rectangle = {0, 0, 10, 7};
  DibOwner wall(MatrixTileRender(&record));
  DibLock lock(wall.get());
  ASSERT_EQ(lock.head->biWidth, 10);
  EXPECT_EQ(DibGetPixel(lock.head, 9, 6), 0x100000 + 1);      // cut-off copy at (8, 6)
  EXPECT_EQ(DibGetPixel(lock.head, 5, 4), 0x100000 + 1 + 256);
  MemFree(record.tile);

  ASSERT_EQ(MatrixTileDefault(&record), 1);
  EXPECT_EQ(WidthOf(record.tile), kBuiltinTileSize);
  DibOwner builtIn(MatrixTileRender(&record));
  record.tile = MemFree(record.tile);
  DibOwner fallback(MatrixTileRender(&record));
  ASSERT_EQ(MemSize(builtIn.get()), MemSize(fallback.get()));
  EXPECT_EQ(std::memcmp(DibLock(builtIn.get()).head, DibLock(fallback.get()).head, MemSize(builtIn.get())), 0);
}

}  // namespace
