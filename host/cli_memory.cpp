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
  int width = 0;  // of a frame, if known
  int height = 0;
  std::uint64_t base = 0;
  std::uint64_t budget = 0;
  std::int64_t firstStep = -1;  // the effect's first report of a frame
  std::uint64_t firstHeld = 0;
  bool done = false;  // its frames are all made: the colour stages count otherwise
};

MemoryWatch gWatch;

[[noreturn]] void StopRender(std::int64_t total, std::uint64_t needed) {
  const char* frames = FrameCountSetting(gWatch.effect);
  std::string lower = frames != nullptr ? std::string("MainFontSize or ") + frames : "MainFontSize or the text";
  CliFail("render", "the " + std::to_string(total) + " frames need about " + MemoryText(needed) + ", more than the " +
                        MemoryText(gWatch.budget) + " available to this render; lower " + lower);
  std::exit(kExitFailure);
}

// After frame step of total has been made. The first frame also pays for
// what is made once (faces, tables), so the cost of a frame is the growth
// from the first report on.
void CheckProjection(std::int64_t step, std::int64_t total) {
  if (gWatch.done || gWatch.budget == 0 || step < 0) return;
  if (total <= 0) {
    gWatch.done = gWatch.firstStep >= 0;  // the progress line is cleared after the last frame
    return;
  }
  std::uint64_t held = ProcessMemoryBytes();
  if (held > gWatch.budget) StopRender(total, held);
  if (gWatch.firstStep < 0) {
    gWatch.firstStep = step;
    gWatch.firstHeld = held;
    std::uint64_t needed = gWatch.base + FramesBytesNeeded(gWatch.width, gWatch.height, static_cast<int>(total));
    if (needed > gWatch.budget) StopRender(total, needed);
    return;
  }
  if (step <= gWatch.firstStep || held <= gWatch.firstHeld) return;
  std::uint64_t perFrame = (held - gWatch.firstHeld) / static_cast<std::uint64_t>(step - gWatch.firstStep);
  std::uint64_t needed = gWatch.base + perFrame * static_cast<std::uint64_t>(total) / kFrameParts * kHeldParts;
  if (needed > gWatch.budget) StopRender(total, needed);
}

}  // namespace

void CliMemoryWatchStart(int effect, int width, int height) {
  gWatch = MemoryWatch{};
  gWatch.effect = effect;
  gWatch.width = width;
  gWatch.height = height;
  gWatch.base = ProcessMemoryBytes();
  gWatch.budget = MachineMemoryBytes();
}

std::int64_t CliWatchedCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                                std::int64_t pointerArgument) {
  if (code == kHostProgress) CheckProjection(argument, pointerArgument);
  return ReferenceHostCallback(task, code, argument, pointerArgument);
}
