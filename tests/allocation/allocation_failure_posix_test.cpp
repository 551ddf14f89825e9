// A short default build through the reference host, run once for every
// allocation it makes with that one allocation failing. Each run must either
// write the very file a run without failure writes, or fail as memory
// running out fails: no file, no crash, no exception out of the build, and
// at most the one "Memory error" message. The failures must fall in every
// stage: the effect's frames, the palette, the remap and the writing.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <set>
#include <string>
#include <vector>

#include "host/reference_host.h"
#include "plugin/build_pipeline.h"
#include "plugin/controls_startup.h"
#include "tests/allocation/failing_allocator.h"
#include "tests/test_folder.h"
#include "tests/text_test_support.h"

namespace {

struct Outcome {
  int complete = 0;
  std::vector<std::string> messages;
  bool outOfMemory = false;
  int writeError = 0;
  std::string stage;  // the last status line's first word
  long allocations = 0;
};

std::vector<char> Bytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class AllocationFailure : public GdiStarted {
 protected:
  void TearDown() override { SettingsReset(); }

  // Two letters in 8 frames, dithered to a palette of their own. The
  // background is not stamped with an index of its own: where that copy
  // cannot be made the plug-in hands over the frame unstamped, by design.
  Outcome Build(const std::string& name, long failingCall) {
    SettingsReset();
    std::strcpy(MainText, "Hi");
    MainSimpleFrames = 8;
    ControlsSnapshot snapshot;
    SnapshotInit(&snapshot);
    SnapshotFromSettings(&snapshot, kHostFlagPaletteFormat, 0);
    SnapshotSetCheck(&snapshot, kMaskBackgroundBox, 0);
    ReferenceHostReset(folder_.File(name), false);
    HostRecord host = ReferenceHostRecord();
    Outcome run;
    AllocationsStart(failingCall);
    try {
      run.complete = BuildAnimation(&snapshot.controls, &host, 0);
    } catch (const std::bad_alloc&) {
      ADD_FAILURE() << "the build let an exception out";
    }
    run.allocations = AllocationsStop();
    run.messages = snapshot.messages;
    SnapshotClear(&snapshot);
    const ReferenceHost& written = ReferenceHostCurrent();
    run.outOfMemory = written.outOfMemory;
    run.writeError = written.writeError;
    // "Could not write" closes the writing stage when the write fails.
    run.stage = written.lastStatus.starts_with("Could") ? "Writing"
                                                        : written.lastStatus.substr(0, written.lastStatus.find(' '));
    if (written.filesWritten != 1) run.complete = 0;
    return run;
  }

  TestFolder folder_{"lw_allocation"};
};

TEST_F(AllocationFailure, EveryFailedAllocationEndsCleanlyOrChangesNothing) {
  Outcome whole = Build("whole.gif", -1);
  ASSERT_EQ(whole.complete, 1);
  std::vector<char> expected = Bytes(folder_.path / "whole.gif");
  std::set<std::string> failedIn;
  for (long call = 0; call < whole.allocations; ++call) {
    SCOPED_TRACE("allocation " + std::to_string(call));
    Outcome run = Build("out.gif", call);
    if (run.complete == 1) {
      ASSERT_EQ(Bytes(folder_.path / "out.gif"), expected);
      std::filesystem::remove(folder_.path / "out.gif");
      continue;
    }
    failedIn.insert(run.stage);
    ASSERT_LE(run.messages.size(), 1u);
    bool saysMemory =
        run.outOfMemory || run.writeError == ENOMEM || (run.messages.size() == 1 && run.messages[0] == "Memory error");
    ASSERT_TRUE(saysMemory) << (run.messages.empty() ? "no message" : run.messages[0]);
    ASSERT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path), {}), 1) << "a file was left";
  }
  EXPECT_EQ(failedIn, (std::set<std::string>{"Building", "Quantizing", "Remapping", "Writing"}));
}

}  // namespace
