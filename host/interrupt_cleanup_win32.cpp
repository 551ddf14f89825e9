// Windows runs a console's Ctrl-C handler on a thread of its own while the
// file being written is still open and cannot be deleted, so nothing is
// watched here: the temporary file an interrupted write leaves is replaced
// by the next write to the same target.
#include "host/interrupt_cleanup.h"

void InterruptCleanupInstall() {}

void InterruptCleanupWatchFile(const std::string&) {}

void InterruptCleanupWatchFolder(const std::string&) {}

void InterruptCleanupRelease() {}
