// The reference host: a portable HostCallback that turns a Build into an
// animated GIF file. It serves tasks (codes 1 to 5), status text (10) and
// progress (13), acknowledges the start of a Build (18), and answers 0 for
// what it has no means to do: file and colour pickers, image loading, help.
//
// The file is optimised unless plainOutput is set: each image cut to what
// changed, shown the same way by every decoder, and never larger than the
// plain file.
//
// Frames reach it at the task's depth, indexed at 8 bits or less. A 24-bit
// frame (a true-colour Build) is reduced to the task's palette, each pixel to
// its nearest entry, since a GIF holds indices only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/gif_writer.h"
#include "plugin/host_interface.h"

struct ReferenceHost {
  std::string outputPath;  // where a completed task is written
  bool plainOutput;        // every image as handed over; else the smaller optimised file
  bool reportToStderr;     // status lines on stderr; progress only on a terminal
  bool testRun;            // the last task was opened by code 5
  bool taskOpen;
  int filesWritten;
  int writeError;  // errno of the last failed write of a task, else 0
  std::vector<std::uint32_t> codes;  // every code received, in order
  std::string lastStatus;
  bool outOfMemory;  // the host itself ran out of memory and dropped the task
  GifAnimation animation;  // the open task's frames so far
};

// The one host state the callback works on.
ReferenceHost& ReferenceHostCurrent();
// Clears the state and sets where the next completed task goes.
void ReferenceHostReset(const std::string& outputPath, bool reportToStderr);

std::int64_t ReferenceHostCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                                   std::int64_t pointerArgument);

// A HostRecord for this host: interface 16, palette-based target format.
HostRecord ReferenceHostRecord();
