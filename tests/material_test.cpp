#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "fills/material.h"
#include "plugin/controls_snapshot.h"
#include "plugin/platform.h"
#include "tests/test_folder.h"

namespace {

std::vector<std::uint8_t> ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Locks a block for the test's scope.
struct RecordLock {
  explicit RecordLock(MemHandle block) : block(block), record(static_cast<MaterialRecord*>(MemLock(block))) {}
  ~RecordLock() { MemUnlock(block); }
  MemHandle block;
  MaterialRecord* record;
};

class MaterialFile : public ::testing::Test {
 protected:
  // A record with values in the parts a file keeps, and handles a file must
  // not keep.
  MemOwner Filled() {
    MemOwner block(MaterialLoad(path_.c_str(), 0x112233, 0));
    RecordLock lock(block.get());
    MaterialRecord* r = lock.record;
    r->kind = kMaterialTexture;
    r->state = kMaterialStateFace | kMaterialStateArrow;
    std::strcpy(r->gradient.record.name, "Sunset");
    r->gradient.record.markers[1] = 0xF0123456;
    r->gradient.record.selectedMarker = 1;
    r->gradient.record.lastY = 77;
    r->gradient.record.preview = reinterpret_cast<DibHandle>(0x1234);
    r->texture.SeedValue[4] = -9;
    std::strcpy(r->matrix.path, "C:\\tiles\\lwmotio3.mtx");
    r->matrix.index = 12;
    r->matrix.tile = reinterpret_cast<DibHandle>(0x5678);
    r->preview = reinterpret_cast<DibHandle>(0x9ABC);
    r->averageColour = 0xA0B0C0;
    return block;
  }

  TestFolder folder_{"lw_material"};
  std::string path_ = folder_.File("Material00101.mtrl");
};

// The offsets are fixed at compile time; these are the values that differ
// from the record's or must not be written.
TEST_F(MaterialFile, SavedImageHasTheFileLayout) {
  MemOwner block = Filled();
  ASSERT_EQ(MaterialSave(block.get(), path_.c_str()), 1);
  std::vector<std::uint8_t> bytes = ReadBytes(path_);
  ASSERT_EQ(bytes.size(), 1270u);
  auto text = [&](std::size_t offset) { return std::string(reinterpret_cast<const char*>(bytes.data()) + offset); };
  auto word = [&](std::size_t offset) { std::uint32_t w; std::memcpy(&w, bytes.data() + offset, 4); return w; };
  EXPECT_EQ(text(0).substr(0, 8), "BRNDCMAT");
  EXPECT_EQ(word(8), 1282u);
  EXPECT_EQ(word(12), 0x00040000u);
  EXPECT_EQ(word(24), 3u);  // the state is written; only loading clears it
  EXPECT_EQ(word(68 + 12), 581u);
  EXPECT_EQ(text(68 + 20), "Sunset");
  for (int i = 68 + 553; i < 649; ++i) EXPECT_EQ(bytes[i], 0) << "bar state at " << i;
  EXPECT_EQ(text(917), "C:\\tiles\\lwmotio3.mtx");
  // The gradient's preview, the tile and the preview slots.
  for (int offset : {68 + 281, 1182, 1234}) EXPECT_EQ(word(offset), 0u) << offset;
  EXPECT_EQ(word(1238), 0xA0B0C0u);
}

TEST_F(MaterialFile, RoundTripKeepsEveryStoredField) {
  MemOwner saved = Filled();
  ASSERT_EQ(MaterialSave(saved.get(), path_.c_str()), 1);
  MemOwner loaded(MaterialLoad(path_.c_str(), 0xFFFFFF, 1));
  ASSERT_NE(loaded, nullptr);
  RecordLock before(saved.get()), after(loaded.get());
  // What the file cannot or must not carry, mended in the saved copy.
  before.record->state = 0;
  before.record->gradient.record.preview = nullptr;
  before.record->gradient.record.selectedMarker = 0;
  before.record->gradient.record.lastY = 0;
  before.record->matrix.tile = nullptr;
  before.record->preview = nullptr;
  EXPECT_EQ(std::memcmp(before.record, after.record, sizeof(MaterialRecord)), 0);
  EXPECT_EQ(after.record->colour, 0x112233u);
  EXPECT_EQ(after.record->gradient.record.size, 585u);
}

// A damaged file, or one not wanted, is ignored without a word: the caller's
// colour and the initial values stand.
TEST_F(MaterialFile, WrongSizeOrMagicOrNoFileWantedLeavesTheDefaults) {
  MemOwner saved = Filled();
  ASSERT_EQ(MaterialSave(saved.get(), path_.c_str()), 1);
  std::vector<std::uint8_t> good = ReadBytes(path_), longer = good, badMagic = good;
  longer.push_back(0);
  badMagic[7] = 'X';
  const std::pair<std::vector<std::uint8_t>, int> cases[] = {
      {{good.begin(), good.end() - 1}, 1}, {longer, 1}, {badMagic, 1}, {good, 0}};
  for (const auto& [bytes, useFile] : cases) {
    std::ofstream(path_, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    MemOwner block(MaterialLoad(path_.c_str(), 0x7F7F7F, useFile));
    ASSERT_EQ(MemSize(block.get()), kMaterialRecordSize);
    RecordLock lock(block.get());
    EXPECT_EQ(lock.record->kind, kMaterialSimple) << bytes.size();
    EXPECT_EQ(lock.record->colour, 0x7F7F7Fu) << bytes.size();
    EXPECT_EQ(lock.record->matrix.index, 0) << bytes.size();
    EXPECT_EQ(lock.record->gradient.record.markerCount, 7) << bytes.size();
    EXPECT_EQ(lock.record->texture.SeedValue[4], 10004) << bytes.size();
  }
}

TEST_F(MaterialFile, SaveCutsOverlongNamesTo260AndFailsWhereNoFileCanBeMade) {
  MemOwner block(MaterialLoad(path_.c_str(), 0, 0));
  {
    RecordLock lock(block.get());
    std::memset(lock.record->matrix.path, 'p', sizeof lock.record->matrix.path);
    std::memset(lock.record->gradient.record.name, 'n', sizeof lock.record->gradient.record.name);
  }
  ASSERT_EQ(MaterialSave(block.get(), path_.c_str()), 1);
  MemOwner loaded(MaterialLoad(path_.c_str(), 0, 1));
  RecordLock lock(loaded.get());
  EXPECT_EQ(std::strlen(lock.record->matrix.path), 260u);
  EXPECT_EQ(std::strlen(lock.record->gradient.record.name), 260u);
  std::string missing = path_ + ".missing-folder/Material00101.mtrl";
  EXPECT_EQ(MaterialSave(block.get(), missing.c_str()), 0);
  EXPECT_FALSE(std::filesystem::exists(missing));
  EXPECT_EQ(MaterialSave(nullptr, path_.c_str()), 0);
}

TEST(MaterialPath, NamesTheControlsFilesInTheDataFolder) {
  std::string separator(1, kPlatformPathSeparator), material = MaterialPath(101), fountain = FountainPath(7);
  if (material.empty()) GTEST_SKIP() << "no application-data folder";
  std::string tail = separator + "Brindle Foundries" + separator + "Lettermotion 3" + separator;
  EXPECT_EQ(material.substr(material.size() - tail.size() - 18), tail + "Material00101.mtrl");
  EXPECT_EQ(fountain, material.substr(0, material.size() - 18) + "Fountain00007.mtrl");
}

TEST(MaterialRender, SolidFillCoversEveryPixel) {
  MemOwner block(MaterialLoad("", 0x123456, 0));
  RecordLock lock(block.get());
  DibOwner dib(MaterialRender(lock.record, 5, 3));
  ASSERT_NE(dib, nullptr);
  DibLock image(dib.get());
  EXPECT_EQ(image.head->biBitCount, 24);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 5; ++x) EXPECT_EQ(DibGetPixel(image.head, x, y), 0x123456);
  EXPECT_EQ(MaterialAverageColour(dib.get()), 0x123456u);
}

TEST(MaterialRender, GradientFillRunsFromItsStartColourAtTheTop) {
  MemOwner block(MaterialLoad("", 0x123456, 0));
  RecordLock lock(block.get());
  lock.record->kind = kMaterialGradient;
  DibOwner dib(MaterialRender(lock.record, 30, 20));
  ASSERT_NE(dib, nullptr);
  DibLock image(dib.get());
  EXPECT_LT(DibGetPixel(image.head, 15, 0) & 0xFF, 0x50);
  EXPECT_GT(DibGetPixel(image.head, 15, 19) & 0xFF, 0xB0);
}

TEST(MaterialRender, UnknownKindIsBlack) {
  MemOwner block(MaterialLoad("", 0x123456, 0));
  RecordLock lock(block.get());
  lock.record->kind = 9;
  DibOwner black(MaterialRender(lock.record, 4, 4));
  ASSERT_NE(black, nullptr);
  EXPECT_EQ(MaterialAverageColour(black.get()), 0u);
}

TEST(MaterialAverageColour, TruncatesEachChannelsMean) {
  DibOwner dib(DibNew(3, 1, nullptr, 24));
  const int pixels[] = {0x0102FF, 0x0001FF, 0x000001};
  for (int x = 0; x < 3; ++x) DibPutPixel(DibLock(dib.get()).head, x, 0, pixels[x]);
  // Red (255 + 255 + 1) / 3 = 170, green 3 / 3 = 1, blue 1 / 3 = 0.
  EXPECT_EQ(MaterialAverageColour(dib.get()), 0x0001AAu);
  DibOwner empty(DibNew(0, 0, nullptr, 24));
  EXPECT_EQ(MaterialAverageColour(empty.get()), 0u);
  EXPECT_EQ(MaterialAverageColour(nullptr), 0u);
}

TEST(EffectBackgroundColourOf, SolidFillGivesItsColourElseMinusOne) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  SnapshotSetData(&snapshot, 105, MaterialLoad("", 0xE5E5E5, 0));
  EXPECT_EQ(EffectBackgroundColourOf(&snapshot.controls, 105), 0xE5E5E5);
  EXPECT_EQ(EffectBackgroundColourOf(&snapshot.controls, 106), -1);
  MaterialRecord* record = MaterialLock(&snapshot.controls, 105);
  ASSERT_NE(record, nullptr);
  record->kind = kMaterialGradient;
  MaterialUnlock(&snapshot.controls, 105);
  EXPECT_EQ(EffectBackgroundColourOf(&snapshot.controls, 105), -1);
  SnapshotClear(&snapshot);
}

}  // namespace
