// The render's watch on memory: a job whose frames will not fit the machine
// stops as soon as that is known, with one line that says how much it needs
// and which setting to lower, instead of running until the system kills it.
#pragma once

#include <cstdint>

#include "plugin/host_interface.h"

// Starts the watch for a render of effect whose frames are width by height
// (0 by 0 if unknown): the memory held now is the base.
void CliMemoryWatchStart(int effect, int width, int height);

// A host callback that passes everything on to the reference host and, at
// each progress report, projects the memory of all frames from those held so
// far; past the machine's memory the render ends there, exit status 1.
std::int64_t CliWatchedCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                                std::int64_t pointerArgument);
