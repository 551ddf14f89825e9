// Every built effect on the compiled-in settings: one preview and one whole
// build each, timed in the same run, then a table of the times as ratios to
// Simple's and against the preview budget that keeps the dialog live.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "bench/bench_defaults.h"
#include "effects/effect.h"

namespace {

constexpr double kPreviewBudgetMs = 16.0;
constexpr int kPreviewWidth = 600;  // a preview control's inner size, as the dialog hands it
constexpr int kPreviewHeight = 120;

BenchDefaults& Bench() {
  static BenchDefaults bench;
  return bench;
}

void Preview(benchmark::State& state, int row) {
  EffectContext context{};
  context.dialog = &Bench().snapshot.controls;
  context.previewWidth = kPreviewWidth;
  context.previewHeight = kPreviewHeight;
  for (auto _ : state) {
    context.flags = 0;
    context.previewBitmap = nullptr;
    if (EffectTable[row].preview(&context) == 0 || context.previewBitmap == nullptr) state.SkipWithError("no preview");
    MemFree(context.previewBitmap);
  }
}

void Build(benchmark::State& state, int row) {
  int frames = 0;
  for (auto _ : state) {
    FrameList list{};
    EffectContext context{};
    context.dialog = &Bench().snapshot.controls;
    context.frames = &list;
    if (EffectTable[row].build(&context) == 0) state.SkipWithError("build failed");
    frames = list.count;
    FrameListFree(&list);
  }
  state.counters["frames"] = frames;
}

// Milliseconds of real time per iteration, by benchmark name.
struct Timings : benchmark::ConsoleReporter {
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
      if (!run.error_occurred) times.push_back({run.benchmark_name(), run.GetAdjustedRealTime()});
  }
  double Of(const std::string& name) const {
    for (const auto& [key, ms] : times)
      if (key == name) return ms;
    return -1.0;
  }
  std::vector<std::pair<std::string, double>> times;
};

void PrintTable(const Timings& timings) {
  double simplePreview = timings.Of("Preview/Simple");
  double simpleBuild = timings.Of("Build/Simple");
  std::printf("\n%-20s %12s %10s %8s %12s %10s\n", "effect", "preview ms", "x Simple", "<= 16ms", "build ms",
              "x Simple");
  for (int row = 0; row < kEffectCount; ++row) {
    const EffectEntry& entry = EffectTable[row];
    if (entry.preview == nullptr) continue;
    double preview = timings.Of(std::string("Preview/") + entry.name);
    double build = timings.Of(std::string("Build/") + entry.name);
    if (preview < 0 && build < 0) continue;  // not run: filtered out
    std::printf("%-20s %12.2f %10.2f %8s %12.1f %10.2f\n", entry.name, preview, preview / simplePreview,
                preview >= 0 && preview <= kPreviewBudgetMs ? "yes" : "NO", build, build / simpleBuild);
  }
}

}  // namespace

int main(int argc, char** argv) {
  for (int row = 0; row < kEffectCount; ++row) {
    const EffectEntry& entry = EffectTable[row];
    if (entry.preview == nullptr || entry.build == nullptr) continue;
    benchmark::RegisterBenchmark((std::string("Preview/") + entry.name).c_str(), Preview, row)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((std::string("Build/") + entry.name).c_str(), Build, row)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Timings timings;
  benchmark::RunSpecifiedBenchmarks(&timings);
  PrintTable(timings);
  benchmark::Shutdown();
  return 0;
}
