// The gradient bars' records: set up from their own Fountain files in a data
// folder of the test's own, and read by the headless dialog through the
// controls seam.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "fills/fountain_button.h"
#include "fills/material.h"
#include "plugin/controls_startup.h"
#include "plugin/host_interface.h"
#include "tests/scoped_variable_posix.h"
#include "tests/test_folder.h"

namespace {

class FountainButtonFile : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(home_ / "Brindle Foundries" / "Lettermotion 3");
    config_ = std::make_unique<ScopedVariable>("XDG_CONFIG_HOME", home_.c_str());
  }
  TestFolder folder_{"lw_fountain"};
  const std::filesystem::path& home_ = folder_.path;
  std::unique_ptr<ScopedVariable> config_;
};

// A bar's record as the headless dialog holds it.
FountainRecord BarRecord(int id, int useFiles) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, useFiles);
  FountainRecord copy{};
  if (const FountainRecord* record = FountainLock(&snapshot.controls, id)) copy = *record;
  FountainUnlock(&snapshot.controls, id);
  SnapshotClear(&snapshot);
  return copy;
}

TEST_F(FountainButtonFile, BarsReadTheirOwnFileUnlessTold) {
  MemOwner saved(FountainButtonLoad("", 1, 0, 0));
  auto* record = static_cast<FountainRecord*>(MemLock(saved.get()));
  record->markerCount = 1;
  record->markers[0] = 0x400000FF;
  record->preview = reinterpret_cast<DibHandle>(0x1234);
  MemUnlock(saved.get());
  ASSERT_EQ(FountainButtonSave(saved.get(), FountainPath(125)), 1);
  EXPECT_EQ(std::filesystem::file_size(FountainPath(125)), kFountainLongSize);

  FountainRecord loaded = BarRecord(125, 1);
  EXPECT_EQ(loaded.markerCount, 1);
  EXPECT_EQ(loaded.markers[0], 0x400000FFu);
  EXPECT_EQ(loaded.preview, nullptr);
  EXPECT_EQ(loaded.flags, kFountainFlagPersist | kFountainFlagLooped);
  EXPECT_EQ(BarRecord(125, 0).markerCount, 7);  // Shift held: the rainbow
  EXPECT_EQ(BarRecord(281, 1).markerCount, 7);  // another bar, no file yet

  // A file one byte short is not read.
  std::filesystem::resize_file(FountainPath(125), kFountainLongSize - 1);
  EXPECT_EQ(BarRecord(125, 1).markerCount, 7);
}

TEST_F(FountainButtonFile, OnlyPersistentBarsKeepAFile) {
  MemOwner passing(FountainButtonLoad("", 0, 1, 1));
  EXPECT_EQ(FountainButtonSave(passing.get(), FountainPath(120)), 0);
  EXPECT_FALSE(std::filesystem::exists(FountainPath(120)));
}

}  // namespace
