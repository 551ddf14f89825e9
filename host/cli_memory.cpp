#include "host/cli_memory.h"

#include <cstdlib>
#include <string>

#include "host/cli_output.h"
#include "host/memory_budget.h"
#include "host/reference_host.h"
#include "host/settings_report.h"

namespace {

// Beside each 24-bit frame (3 bytes a pixel) the colour stages and the
// output keep an indexed copy of a byte a pixel each.
constexpr std::uint64_t kHeldParts = 5;
constexpr std::uint64_t kFrameParts = 3;

struct MemoryWatch {
  int effect = 0;
  std::uint64_t base = 0;
  std::uint64_t budget = 0;
  bool framesSeen = false;  // the effect has reported a frame
  bool done = false;        // its frames are all made: the colour stages count otherwise
};

MemoryWatch gWatch;

[[noreturn]] void StopRender(std::int64_t total, std::uint64_t needed) {
  const char* frames = FrameCountSetting(gWatch.effect);
  std::string lower = frames != nullptr ? std::string("MainFontSize or ") + frames : "MainFontSize or the text";
  CliFail("render", "the " + std::to_string(total) + " frames need about " + MemoryText(needed) + ", more than the " +
                        MemoryText(gWatch.budget) + " available to this render; lower " + lower);
  std::exit(kExitFailure);
}

// After frame step of total has been made: the growth so far, per frame,
// for every frame and its copies.
void CheckProjection(std::int64_t step, std::int64_t total) {
  if (gWatch.done || gWatch.budget == 0 || step < 0) return;
  if (total <= 0) {
    gWatch.done = gWatch.framesSeen;  // the progress line is cleared after the last frame
    return;
  }
  gWatch.framesSeen = true;
  std::uint64_t held = ProcessMemoryBytes();
  if (held <= gWatch.base) return;
  std::uint64_t perFrame = (held - gWatch.base) / static_cast<std::uint64_t>(step + 1);
  std::uint64_t needed = gWatch.base + perFrame * static_cast<std::uint64_t>(total) / kFrameParts * kHeldParts;
  if (needed > gWatch.budget || held > gWatch.budget) StopRender(total, needed);
}

}  // namespace

void CliMemoryWatchStart(int effect) {
  gWatch = MemoryWatch{};
  gWatch.effect = effect;
  gWatch.base = ProcessMemoryBytes();
  gWatch.budget = MachineMemoryBytes();
}

std::int64_t CliWatchedCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                                std::int64_t pointerArgument) {
  if (code == kHostProgress) CheckProjection(argument, pointerArgument);
  return ReferenceHostCallback(task, code, argument, pointerArgument);
}
