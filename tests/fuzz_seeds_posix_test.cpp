// Seed corpora for the fuzz targets, written by the readers' own writers
// when LW_FUZZ_SEEDS names a folder: <folder>/settings_file,
// <folder>/material_file, <folder>/mtx, <folder>/fft and <folder>/noise_file,
// one file per seed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "fills/material.h"
#include "fills/matrix_group.h"
#include "fills/noise_record.h"
#include "fills/texture_group.h"
#include "host/primary_groups.h"
#include "plugin/settings.h"

namespace {

namespace fs = std::filesystem;

void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

void WriteSettingsSeeds(const fs::path& folder) {
  SettingsReset();
  ASSERT_EQ(SettingsSaveFile((folder / "defaults.ini").c_str(), 0), 1);
  // Prefix keys, an empty line, wrapped and clamped numbers, long and
  // unterminated text, Windows line ends.
  WriteBytes(folder / "edges.ini",
             ";comment\n[PlugIn]\n\nMainDel=0\nMainPadding = -10\nMainFontSize==500\r\n"
             "MainSimpleScrollDirection = 9\nMainEffect = 99\nMainText = " +
                 std::string(300, 'x') + "\nMainFontName = \xC9\xE8 \nMainPalette=4294967295");
  SettingsReset();
}

void WriteMaterialSeeds(const fs::path& folder) {
  for (std::uint32_t kind = 0; kind < kMaterialKindCount + 1; ++kind) {
    MemOwner block(MaterialLoad("", 0x3366CC, 0));
    auto* record = static_cast<MaterialRecord*>(MemLock(block.get()));
    ASSERT_NE(record, nullptr);
    record->kind = kind;
    MemUnlock(block.get());
    std::string name = "kind" + std::to_string(kind) + ".mtrl";
    ASSERT_EQ(MaterialSave(block.get(), (folder / name).c_str()), 1);
  }
}

// An empty group, and one of a small tile and a wide one.
void WriteMatrixSeeds(const fs::path& folder) {
  MatrixTileList list;
  ASSERT_EQ(MatrixGroupWrite((folder / "empty.mtx").c_str(), list, 1, 0), 1);
  list.tiles = {DibNew(3, 2, nullptr, 24), DibNew(17, 1, nullptr, 24)};
  ASSERT_EQ(MatrixGroupWrite((folder / "two.mtx").c_str(), list, 0, 0), 1);
  MatrixTileListFree(&list);
}

void WriteGroupSeeds(const fs::path& folder) {
  WriteBytes(folder / "primary.fft", kPrimaryTextureGroupText);
  // Lower-case keys, blanks around "=", a nameless item, an item cut short.
  WriteBytes(folder / "edges.fft", std::string(kTextureFileSignature) +
                                       "\r\nwriteable = 0\n:beginitem\ntexturename = A\npower1 = 0.5\n:EndItem\n"
                                       ":BEGINITEM\nCreaterCount=12\n:ENDITEM\n:BEGINITEM\nTextureName=" +
                                       std::string(300, 'n'));
}

void WriteNoiseSeeds(const fs::path& folder) {
  NoiseRecord record;
  NoiseDefaults(&record, (folder / "defaults.flp").c_str());
  ASSERT_EQ(NoiseRecordSave(record), 1);
  NoiseDefaults(&record, (folder / "stretched.flp").c_str());
  record.uniform = 0;
  record.depth = 1.0;
  record.dimensions = 1;
  ASSERT_EQ(NoiseRecordSave(record), 1);
}

TEST(FuzzSeeds, WrittenWhenAFolderIsNamed) {
  const char* target = std::getenv("LW_FUZZ_SEEDS");
  if (target == nullptr || target[0] == '\0') GTEST_SKIP() << "LW_FUZZ_SEEDS names no folder";
  fs::path settings = fs::path(target) / "settings_file";
  fs::path material = fs::path(target) / "material_file";
  fs::path matrix = fs::path(target) / "mtx";
  fs::path groups = fs::path(target) / "fft";
  fs::path noise = fs::path(target) / "noise_file";
  for (const fs::path& folder : {settings, material, matrix, groups, noise}) fs::create_directories(folder);
  WriteSettingsSeeds(settings);
  WriteMaterialSeeds(material);
  WriteMatrixSeeds(matrix);
  WriteGroupSeeds(groups);
  WriteNoiseSeeds(noise);
  EXPECT_EQ(fs::file_size(material / "kind0.mtrl"), kMaterialFileSize);
  EXPECT_EQ(fs::file_size(noise / "defaults.flp"), kNoiseRecordSize);
}

}  // namespace
