// Seed corpora for the texture group and noise swatch fuzz targets, written
// by the readers' own writers when LW_FUZZ_SEEDS names a folder:
// <folder>/fft and <folder>/noise_file, one file per seed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "fills/noise_record.h"
#include "fills/texture_file.h"
#include "host/primary_groups.h"

namespace {

namespace fs = std::filesystem;

void WriteGroupSeeds(const fs::path& folder) {
  std::ofstream(folder / "primary.fft", std::ios::binary) << kPrimaryTextureGroupText;
  // Lower-case keys, blanks around "=", a nameless item, an item cut short.
  std::ofstream(folder / "edges.fft", std::ios::binary)
      << kTextureFileSignature << "\r\nwriteable = 0\n:beginitem\ntexturename = A\npower1 = 0.5\n:EndItem\n"
      << ":BEGINITEM\nCreaterCount=12\n:ENDITEM\n:BEGINITEM\nTextureName=" << std::string(300, 'n');
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

TEST(TextureFuzzSeeds, WrittenWhenAFolderIsNamed) {
  const char* target = std::getenv("LW_FUZZ_SEEDS");
  if (target == nullptr || target[0] == '\0') GTEST_SKIP() << "LW_FUZZ_SEEDS names no folder";
  fs::path groups = fs::path(target) / "fft";
  fs::path noise = fs::path(target) / "noise_file";
  fs::create_directories(groups);
  fs::create_directories(noise);
  WriteGroupSeeds(groups);
  WriteNoiseSeeds(noise);
  EXPECT_EQ(fs::file_size(noise / "defaults.flp"), kNoiseRecordSize);
}

}  // namespace
