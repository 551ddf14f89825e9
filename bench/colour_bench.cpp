// The colour stages on the 32 frames of a default Simple build: our adaptive
// palette over all frames plus a dithered remap of each, and as a peer in the
// same run ImageMagick's -colors 256 with Floyd-Steinberg on the same list.
// The ratio of interest is BM_OursQuantiseRemap / BM_PeerMagickQuantise.
//
//   cmake -S . -B build/bench -DLW_BENCH=ON && cmake --build build/bench -j2 --target colour_bench && build/bench/bench/colour_bench
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "bench/magick_quantise.h"
#include "plugin/host_interface.h"
#include "colour/palette.h"
#include "colour/quantise.h"
#include "colour/remap.h"
#include "effects/simple.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

// The frame's rows top-down without the stride's padding, as ImageMagick
// takes them: blue, green, red.
std::vector<std::uint8_t> PackedRows(DibHandle image, int* width, int* height) {
  DibLock lock(image);
  *width = lock.head->biWidth;
  *height = lock.head->biHeight;
  std::vector<std::uint8_t> packed(static_cast<std::size_t>(*width) * *height * 3);
  for (int y = 0; y < *height; ++y)
    std::memcpy(&packed[static_cast<std::size_t>(y) * *width * 3], DibRow(lock.head, y),
                static_cast<std::size_t>(*width) * 3);
  return packed;
}

struct ColourBench {
  ColourBench() {
    GdiOp start{};
    start.op = kGdiStart;
    GdiCommand(&start);
    SettingsReset();
    ControlsSnapshot snapshot;
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
    EffectContext context{};
    context.dialog = &snapshot.controls;
    context.frames = &frames;
    SimpleBuild(&context);
    SnapshotClear(&snapshot);
    magick = MagickFramesNew();
    for (int index = 0; index < frames.count; ++index) {
      FrameRecord record;
      FrameRecordRead(&frames, index, &record);
      int width = 0;
      int height = 0;
      std::vector<std::uint8_t> packed = PackedRows(record.image, &width, &height);
      MagickFramesAppend(magick, packed.data(), width, height);
    }
  }
  ~ColourBench() {
    FrameListFree(&frames);
    MagickFramesFree(magick);
  }
  FrameList frames{};
  MagickFrames* magick = nullptr;
};

ColourBench& Bench() {
  static ColourBench bench;
  return bench;
}

// The Build's custom-palette palette without a reserved slot: up to 256
// entries over all frames, sorted by brightness. Returns the entries made.
int QuantiseSorted(benchmark::State& state, const FrameList& frames, std::uint8_t* palette) {
  int colours = 256;
  if (OctreeQuantise(&colours, palette, &frames) == 0) state.SkipWithError("quantise failed");
  PaletteSortByLuminance(palette, colours);
  return colours;
}

// The palette alone, to show how the whole path divides.
void BM_OursQuantise(benchmark::State& state) {
  const FrameList& frames = Bench().frames;
  int colours = 0;
  for (auto _ : state) {
    std::uint8_t palette[kPaletteBytes];
    colours = QuantiseSorted(state, frames, palette);
  }
  state.counters["colours"] = colours;
}
BENCHMARK(BM_OursQuantise)->Unit(benchmark::kMillisecond);

// The palette, then every frame dithered to it as the Build does.
void BM_OursQuantiseRemap(benchmark::State& state) {
  const FrameList& frames = Bench().frames;
  int colours = 0;
  for (auto _ : state) {
    std::uint8_t palette[kPaletteBytes];
    colours = QuantiseSorted(state, frames, palette);
    int depth = PaletteDepthForEntries(colours);
    for (int index = 0; index < frames.count; ++index) {
      FrameRecord record;
      FrameRecordRead(&frames, index, &record);
      DibOwner reduced(RemapDithered(record.image, palette, depth, colours, RemapOptions{}));
      if (reduced == nullptr) state.SkipWithError("remap failed");
    }
  }
  state.counters["frames"] = frames.count;
  state.counters["colours"] = colours;
}
BENCHMARK(BM_OursQuantiseRemap)->Unit(benchmark::kMillisecond);

// The same frames through ImageMagick; the list is copied outside the timing
// since its quantiser rewrites the images in place.
void BM_PeerMagickQuantise(benchmark::State& state) {
  const MagickFrames* source = Bench().magick;
  for (auto _ : state) {
    state.PauseTiming();
    MagickFrames* copy = MagickFramesClone(source);
    state.ResumeTiming();
    if (copy == nullptr || MagickFramesQuantise(copy, 256) == 0) state.SkipWithError("ImageMagick failed");
    state.PauseTiming();
    MagickFramesFree(copy);
    state.ResumeTiming();
  }
  state.counters["frames"] = MagickFramesCount(source);
}
BENCHMARK(BM_PeerMagickQuantise)->Unit(benchmark::kMillisecond);

}  // namespace
