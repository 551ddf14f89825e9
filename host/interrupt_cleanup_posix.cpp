// The handler may run at any instruction of the program, so it only uses
// calls that are safe there: the watched path sits in a fixed buffer, and a
// folder is read through a descriptor opened when it was watched.
#include "host/interrupt_cleanup.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

struct Watched {
  char path[4096];
  int folder;  // descriptor of a watched folder, else -1
};
// The handler reads it; the program writes it with the signals blocked.
Watched gWatched{{}, -1};

// Removes the entries of the folder, all files we wrote. A second reading
// from the start finds any entry the first missed while it was removing.
void EmptyFolder(int folder) {
  alignas(8) char buffer[4096];
  for (int pass = 0; pass < 2; ++pass) {
    lseek(folder, 0, SEEK_SET);
    for (long bytes; (bytes = syscall(SYS_getdents64, folder, buffer, sizeof buffer)) > 0;) {
      for (long at = 0; at < bytes;) {
        // A record: inode (8 bytes), offset (8), record length (2), type (1), name.
        unsigned short length;
        std::memcpy(&length, buffer + at + 16, sizeof length);
        const char* name = buffer + at + 19;
        if (std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) unlinkat(folder, name, 0);
        at += length;
      }
    }
  }
}

void RemoveWatchedAndEnd(int signal) {
  if (gWatched.folder >= 0) {
    EmptyFolder(gWatched.folder);
    rmdir(gWatched.path);
  } else if (gWatched.path[0] != '\0') {
    unlink(gWatched.path);
  }
  // Ends the way the signal would have ended the process.
  struct sigaction plain {};
  plain.sa_handler = SIG_DFL;
  sigaction(signal, &plain, nullptr);
  raise(signal);
}

// Runs change with the signals held back, so the handler never sees a
// half-written record.
template <typename Change>
void WithSignalsBlocked(Change change) {
  sigset_t blocked;
  sigset_t previous;
  sigemptyset(&blocked);
  for (int signal : kSignals) sigaddset(&blocked, signal);
  sigprocmask(SIG_BLOCK, &blocked, &previous);
  change();
  sigprocmask(SIG_SETMASK, &previous, nullptr);
}

void Watch(const std::string& path, bool folder) {
  InterruptCleanupRelease();
  if (path.size() >= sizeof gWatched.path) return;
  int descriptor = folder ? open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
  if (folder && descriptor < 0) return;
  WithSignalsBlocked([&] {
    std::memcpy(gWatched.path, path.c_str(), path.size() + 1);
    gWatched.folder = descriptor;
  });
}

}  // namespace

void InterruptCleanupInstall() {
  struct sigaction action {};
  action.sa_handler = RemoveWatchedAndEnd;
  sigemptyset(&action.sa_mask);
  for (int signal : kSignals) sigaddset(&action.sa_mask, signal);
  for (int signal : kSignals) {
    struct sigaction current {};
    // A signal the shell told us to ignore (a background job's SIGINT) stays ignored.
    if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) continue;
    sigaction(signal, &action, nullptr);
  }
}

void InterruptCleanupWatchFile(const std::string& path) { Watch(path, false); }

void InterruptCleanupWatchFolder(const std::string& path) { Watch(path, true); }

void InterruptCleanupRelease() {
  int descriptor = -1;
  WithSignalsBlocked([&] {
    descriptor = gWatched.folder;
    gWatched.path[0] = '\0';
    gWatched.folder = -1;
  });
  if (descriptor >= 0) close(descriptor);
}
