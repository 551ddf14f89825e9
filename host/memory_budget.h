// How much memory a render may use, and how much its frames will take, so
// that a job too big for the machine stops at once with the numbers.
#pragma once

#include <cstdint>
#include <string>

// The memory this process can have: the machine's, or less where a limit
// of the process or its control group says so. 0 if unknown.
std::uint64_t MachineMemoryBytes();

// What the process holds in memory now; 0 if unknown.
std::uint64_t ProcessMemoryBytes();

// Frames of width by height as the build holds them: each 24-bit frame in
// the frame list, then an indexed copy of it for the colour stages and
// another for the output.
std::uint64_t FramesBytesNeeded(int width, int height, int frames);

// "512 MB", "3.2 GB".
std::string MemoryText(std::uint64_t bytes);
