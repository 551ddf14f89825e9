// Calls into the host's one service function, for code that may run
// without a host (a null record or callback answers 0).
#pragma once

#include <cstdint>

#include "plugin/host_interface.h"

std::int64_t HostCall(const HostRecord* host, std::uint32_t code, std::int64_t argument = 0,
                      std::int64_t pointerArgument = 0, TaskRecord* task = nullptr);

// Code 10: a status text.
void HostStatus(const HostRecord* host, const char* text);
// Code 13: progress of step of total; (0, 0) clears the display.
void HostProgress(const HostRecord* host, int step, int total);
