// A command interrupted while it writes (Ctrl-C, a terminate or hang-up
// signal) removes what it was writing before it ends: the temporary file
// beside the target, or the staging folder with the frame files in it. Only
// one thing is watched at a time, and only once the program has asked for it.
#pragma once

#include <string>

// Catches the signals; the command line does this once at start.
void InterruptCleanupInstall();

// Watches a temporary file, or a staging folder with whatever files it holds.
void InterruptCleanupWatchFile(const std::string& path);
void InterruptCleanupWatchFolder(const std::string& path);

// Nothing is watched any more: the file or folder was moved into place or
// removed.
void InterruptCleanupRelease();
