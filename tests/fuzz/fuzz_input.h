// The readers under fuzzing take a path, so each input goes to a file first:
// one file per fuzzing process, in a folder of its own below the temporary
// folder, removed when the process ends.
#pragma once

#include <cstddef>
#include <cstdint>

// Writes the bytes to this process's input file and returns its path.
const char* FuzzInputFile(const std::uint8_t* data, std::size_t size);

// A second path in the same folder, for what a target writes back.
const char* FuzzOutputFile();
