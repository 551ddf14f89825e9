// Checks on the files a run reads and writes, made before the run so that it
// stops at once and says why.
#pragma once

#include <string>

// A settings file that can be read to its end: a regular file that opens for
// reading (no folder, device or pipe, which could be endless). 0 with error
// set to the cause otherwise.
int CheckReadableFile(const std::string& path, std::string* error);

// Whether anything stands at the path, a broken link included.
bool PathExists(const std::string& path);

// Whether both paths name one existing file.
bool SameFile(const std::string& first, const std::string& second);

// Whether the name's extension is that of an image format other than GIF.
bool NamesOtherImageFormat(const std::string& path);
