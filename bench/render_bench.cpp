// The default render in-process, whole and stage by stage: the effect's
// frames, the palette over all frames, the dithered remap of every frame,
// and the reference host's encoding and writing of the GIF, optimised (the
// default) and plain. bench/render_vs_tools.sh times the whole command
// against FFmpeg and ImageMagick on the same frames.
//
//   cmake --build build/native -j2 --target render_bench && build/native/bench/render_bench
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/bench_defaults.h"
#include "colour/colour_search.h"
#include "colour/palette.h"
#include "colour/quantise.h"
#include "colour/remap.h"
#include "colour/stamp.h"
#include "effects/simple.h"
#include "host/reference_host.h"
#include "plugin/build_pipeline.h"

namespace {

constexpr int kSimpleRow = 17;

struct RenderBench {
  RenderBench() {
    std::string pattern = (std::filesystem::temp_directory_path() / "lw_render_bench_XXXXXX").string();
    folder = mkdtemp(pattern.data()) != nullptr ? pattern : std::filesystem::temp_directory_path().string();
    output = folder + "/render.gif";
  }
  ~RenderBench() { std::filesystem::remove_all(folder); }
  BenchDefaults defaults;
  ControlsSnapshot& snapshot = defaults.snapshot;
  std::string folder;
  std::string output;
};

RenderBench& Bench() {
  static RenderBench bench;
  return bench;
}

int BuildFrames(FrameList* frames) {
  EffectContext context{};
  context.dialog = &Bench().snapshot.controls;
  context.frames = frames;
  return SimpleBuild(&context);
}

// The custom palette of a default build: Mask background is on, so one
// slot stays free for the background colour; sorted by brightness.
struct Palette {
  std::uint8_t entries[kPaletteBytes];
  int colours = 255;
  int depth = 8;
};

int MakePalette(const FrameList& frames, Palette* palette) {
  palette->colours = 255;
  if (OctreeQuantise(&palette->colours, palette->entries, &frames) == 0) return 0;
  PaletteSortByLuminance(palette->entries, palette->colours);
  palette->depth = PaletteDepthForEntries(palette->colours + 1);
  return 1;
}

// A table kept from an earlier run would hide the cost the first frame of a
// build pays.
void ForgetLookupTable() {
  static ColourSearch search;
  std::uint8_t other[kPaletteBytes] = {1, 2, 3};
  ColourSearchInit(&search, other, 1, 1);
}

// Each frame remapped with dithering and its background stamped to the
// reserved slot, as a default build does.
void RemapAll(const FrameList& frames, const Palette& palette) {
  std::int32_t background = EffectTable[kSimpleRow].backgroundColour(&Bench().snapshot.controls);
  for (int i = 0; i < frames.count; ++i) {
    FrameRecord record;
    FrameRecordRead(&frames, i, &record);
    DibOwner image(RemapDithered(record.image, palette.entries, palette.depth, palette.colours, RemapOptions{}));
    DibOwner stamped(StampColourIndex(image.get(), record.image, background, palette.colours));
  }
}

// What a default build hands to its host: the task and every image.
struct HandedOver {
  TaskRecord task{};
  std::vector<ImageRecord> images;
  std::string comment;
};
HandedOver gHanded;

std::int64_t Keep(TaskRecord*, std::uint32_t code, std::int64_t, std::int64_t pointerArgument) {
  if (code == kHostOpenTask) gHanded.task = *reinterpret_cast<const TaskRecord*>(pointerArgument);
  if (code == kHostAddComment) gHanded.comment = reinterpret_cast<const char*>(pointerArgument);
  if (code == kHostAddImage) {
    ImageRecord image = *reinterpret_cast<const ImageRecord*>(pointerArgument);
    image.image = DibClone(image.image);
    gHanded.images.push_back(image);
  }
  return 1;
}

const HandedOver& Handed() {
  if (gHanded.images.empty()) {
    HostRecord host = ReferenceHostRecord();
    host.callback = Keep;
    BuildAnimation(&Bench().snapshot.controls, &host, 0);
  }
  return gHanded;
}

// The host's side of a build: the task, its images and the comment, and the
// file written when the task closes.
void HandOver(const HandedOver& handed, bool plain) {
  ReferenceHostReset(Bench().output, false);
  ReferenceHostCurrent().plainOutput = plain;
  TaskRecord task = handed.task;
  ReferenceHostCallback(nullptr, kHostOpenTask, 0, reinterpret_cast<std::int64_t>(&task));
  for (const ImageRecord& image : handed.images)
    ReferenceHostCallback(&task, kHostAddImage, 0, reinterpret_cast<std::int64_t>(&image));
  ReferenceHostCallback(&task, kHostAddComment, 0, reinterpret_cast<std::int64_t>(handed.comment.c_str()));
  ReferenceHostCallback(&task, kHostCloseTask, 1, 0);
}

void BM_WholeBuild(benchmark::State& state) {
  HostRecord host = ReferenceHostRecord();
  for (auto _ : state) {
    state.PauseTiming();
    ForgetLookupTable();
    ReferenceHostReset(Bench().output, false);
    state.ResumeTiming();
    if (BuildAnimation(&Bench().snapshot.controls, &host, 0) == 0) state.SkipWithError("build failed");
  }
}
BENCHMARK(BM_WholeBuild)->Unit(benchmark::kMillisecond);

void BM_StageFrames(benchmark::State& state) {
  for (auto _ : state) {
    FrameList frames{};
    if (BuildFrames(&frames) == 0) state.SkipWithError("build failed");
    state.PauseTiming();
    FrameListFree(&frames);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_StageFrames)->Unit(benchmark::kMillisecond);

void BM_StagePalette(benchmark::State& state) {
  FrameList frames{};
  BuildFrames(&frames);
  Palette palette;
  for (auto _ : state)
    if (MakePalette(frames, &palette) == 0) state.SkipWithError("quantise failed");
  FrameListFree(&frames);
}
BENCHMARK(BM_StagePalette)->Unit(benchmark::kMillisecond);

void BM_StageRemap(benchmark::State& state) {
  FrameList frames{};
  BuildFrames(&frames);
  Palette palette;
  MakePalette(frames, &palette);
  for (auto _ : state) {
    state.PauseTiming();
    ForgetLookupTable();
    state.ResumeTiming();
    RemapAll(frames, palette);
  }
  FrameListFree(&frames);
}
BENCHMARK(BM_StageRemap)->Unit(benchmark::kMillisecond);

void EncodeStage(benchmark::State& state, bool plain) {
  const HandedOver& handed = Handed();
  for (auto _ : state) HandOver(handed, plain);
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(Bench().output));
}

void BM_StageEncodeOptimised(benchmark::State& state) { EncodeStage(state, false); }
BENCHMARK(BM_StageEncodeOptimised)->Unit(benchmark::kMillisecond);

void BM_StageEncodePlain(benchmark::State& state) { EncodeStage(state, true); }
BENCHMARK(BM_StageEncodePlain)->Unit(benchmark::kMillisecond);

}  // namespace
