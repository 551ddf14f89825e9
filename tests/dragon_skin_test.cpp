#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <vector>

#include "effects/dragon_skin.h"
#include "fills/noise_record.h"
#include "tests/effect_test_support.h"
#include "tests/pixels_test_support.h"
#include "tests/test_folder.h"

namespace {

TEST(DragonSkinPhases, WholeTurnFromTheFirstStepToPhase256) {
  std::int32_t phases[kDragonPhasesMax];
  ASSERT_EQ(DragonSkinPhases(1, phases), 16);
  EXPECT_EQ(phases[0], 16);
  EXPECT_EQ(phases[15], 256);
  ASSERT_EQ(DragonSkinPhases(300, phases), 256);
  EXPECT_EQ(phases[0], 1);
  EXPECT_EQ(phases[255], 256);
  ASSERT_EQ(DragonSkinPhases(100, phases), 100);
  EXPECT_EQ(std::vector<std::int32_t>(phases, phases + 4), (std::vector<std::int32_t>{2, 5, 7, 10}));
  EXPECT_EQ(phases[99], 256);
}

// The map follows the seed and the stream's position when the tables are
// built; only the upper half of the noise shows.
TEST(MakeNoise, SameSeedSameMapAndTheDiscardedDrawsCount) {
  NoiseRecord record;
  NoiseDefaults(&record, "");
  DibOwner map(MakeNoise(64, 40, record));
  std::vector<std::int32_t> first = PixelsOf(map.get());
  ASSERT_EQ(first.size(), 64u * 40u);
  DibOwner again(MakeNoise(64, 40, record));
  EXPECT_EQ(PixelsOf(again.get()), first);
  long black = 0;
  for (std::int32_t pixel : first) {
    ASSERT_EQ(pixel, (pixel & 0xFF) * 0x010101);
    black += pixel == 0;
  }
  EXPECT_GT(black, 64 * 40 / 5);
  EXPECT_LT(black, 64 * 40 * 4 / 5);
  record.dimensions = 2;
  DibOwner fewer(MakeNoise(64, 40, record));
  EXPECT_NE(PixelsOf(fewer.get()), first);
  record.dimensions = 3;
  record.seed = 1000;
  DibOwner other(MakeNoise(64, 40, record));
  EXPECT_NE(PixelsOf(other.get()), first);
}

TEST(NoiseRecordFile, WholeFilesReplaceTheDefaultsOthersAreIgnored) {
  TestFolder folder("lw_noise_record_file");
  std::string path = folder.File("Fill00261.flp");
  NoiseRecord saved;
  NoiseDefaults(&saved, path.c_str());
  saved.seed = 2024;
  saved.scale = 7.0;
  saved.colouring = NoiseColourFromGradient259;
  ASSERT_EQ(NoiseRecordSave(saved), 1);
  ASSERT_EQ(std::filesystem::file_size(path), 345u);

  NoiseRecord loaded;
  NoiseDefaults(&loaded, "elsewhere");
  NoiseRecordLoad(&loaded, path.c_str(), 1);
  EXPECT_EQ(loaded.seed, 2024);
  EXPECT_EQ(loaded.scale, 7.0);
  EXPECT_STREQ(loaded.path, path.c_str());  // the stored path comes along
  EXPECT_EQ(loaded.colouring, nullptr);

  NoiseRecord kept;
  NoiseDefaults(&kept, "elsewhere");
  NoiseRecordLoad(&kept, path.c_str(), 0);  // Shift held
  EXPECT_EQ(kept.seed, 10356);
  std::filesystem::resize_file(path, 344);
  NoiseRecordLoad(&kept, path.c_str(), 1);
  EXPECT_EQ(kept.seed, 10356);
  saved.magic[0] = 'X';
  ASSERT_EQ(NoiseRecordSave(saved), 1);
  NoiseRecordLoad(&kept, path.c_str(), 1);
  EXPECT_EQ(kept.seed, 10356);
}

class DragonSkinEffect : public EffectOnDefaults {
 protected:
  std::vector<std::int32_t> FramePixels(int index) {
    FrameRecord record;
    return FrameRecordRead(&frames_, index, &record) ? PixelsOf(record.image) : std::vector<std::int32_t>{};
  }
  std::vector<std::int32_t> Preview() {
    EffectContext preview = context_;
    DragonSkinPreview(&preview);
    DibOwner picture(preview.previewBitmap);
    return PixelsOf(picture.get());
  }
};

// The colours turn a whole way round: the last frame is the preview's phase
// 0 again, and the frames between differ.
TEST_F(DragonSkinEffect, RollingBuildClosesTheLoopAndAStillIsPhaseZero) {
  SnapshotSetText(&snapshot_, 23, "Dg");
  SnapshotSetNumber(&snapshot_, 275, 1);
  SnapshotSetCheck(&snapshot_, 32, 1);
  std::vector<std::int32_t> still = Preview();
  ASSERT_FALSE(still.empty());
  ASSERT_EQ(DragonSkinBuild(&context_), 1);
  ASSERT_EQ(frames_.count, 16);
  EXPECT_EQ(FramePixels(15), still);
  EXPECT_NE(FramePixels(7), still);

  FrameListFree(&frames_);
  frames_ = FrameList{};
  SnapshotSetCheck(&snapshot_, 32, 0);
  ASSERT_EQ(DragonSkinBuild(&context_), 1);
  ASSERT_EQ(frames_.count, 1);
  EXPECT_EQ(FramePixels(0), still);
}

TEST_F(DragonSkinEffect, EmptyTextMakesNoMapNoPreviewAndFailsTheBuild) {
  SnapshotSetText(&snapshot_, 23, "");
  EXPECT_TRUE(Preview().empty());
  EXPECT_EQ(DragonSkinBuild(&context_), 0);
  EXPECT_EQ(frames_.count, 0);
}

}  // namespace
