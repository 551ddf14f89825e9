// Simple with the compiled-in settings: one preview, one whole build, and as
// a peer in the same run the frame's soft-shadow blur alone.
#include <benchmark/benchmark.h>

#include "effects/simple.h"
#include "plugin/controls_startup.h"
#include "plugin/settings.h"
#include "raster/blur.h"
#include "raster/gdi_command.h"
#include "raster/text.h"

namespace {

struct SimpleBench {
  SimpleBench() {
    GdiOp start{};
    start.op = kGdiStart;
    GdiCommand(&start);
    SettingsReset();
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
  }
  ControlsSnapshot snapshot;
};

SimpleBench& Bench() {
  static SimpleBench bench;
  return bench;
}

void BM_SimplePreview(benchmark::State& state) {
  EffectContext context{};
  context.dialog = &Bench().snapshot.controls;
  for (auto _ : state) {
    context.flags = 0;
    SimplePreview(&context);
    MemFree(context.previewBitmap);
  }
}
BENCHMARK(BM_SimplePreview)->Unit(benchmark::kMillisecond);

void BM_SimpleBuild(benchmark::State& state) {
  int frames = 0;
  for (auto _ : state) {
    FrameList list{};
    EffectContext context{};
    context.dialog = &Bench().snapshot.controls;
    context.frames = &list;
    SimpleBuild(&context);
    frames = list.count;
    FrameListFree(&list);
  }
  state.counters["frames"] = frames;
}
BENCHMARK(BM_SimpleBuild)->Unit(benchmark::kMillisecond);

// The shadow blur of one default frame (408 by 62, softness 10 + 2).
void BM_PeerShadowBlur(benchmark::State& state) {
  DibOwner mask(MaskNew(408, 62));
  for (auto _ : state) {
    DibOwner blurred(GaussianBlur(mask.get(), 12));
    benchmark::DoNotOptimize(blurred.get());
  }
}
BENCHMARK(BM_PeerShadowBlur)->Unit(benchmark::kMillisecond);

}  // namespace
