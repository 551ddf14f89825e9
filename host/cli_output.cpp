#include "host/cli_output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

bool gQuiet = false;

std::string Prefix(const char* command) {
  return command[0] != '\0' ? std::string("lwmotio3 ") + command + ": " : "lwmotio3: ";
}

}  // namespace

void CliSetQuiet(bool quiet) { gQuiet = quiet; }

bool CliShowsStatus() { return !gQuiet && isatty(fileno(stderr)) != 0; }

int CliFail(const char* command, const std::string& message) {
  std::fprintf(stderr, "%s%s\n", Prefix(command).c_str(), message.c_str());
  return kExitFailure;
}

int CliUsage(const char* command, const std::string& message) {
  std::string help = command[0] != '\0' ? std::string("lwmotio3 ") + command + " --help" : "lwmotio3 --help";
  std::fprintf(stderr, "%s%s (see %s)\n", Prefix(command).c_str(), message.c_str(), help.c_str());
  return kExitUsage;
}

void CliWarn(const char* command, const std::string& message) {
  if (!gQuiet) std::fprintf(stderr, "%swarning: %s\n", Prefix(command).c_str(), message.c_str());
}

int CliFinishOutput(const char* command) {
  errno = 0;
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return kExitSuccess;
  const char* reason = errno != 0 ? std::strerror(errno) : "write error";
  return CliFail(command, std::string("cannot write to standard output: ") + reason);
}

int CliNoArguments(const char* command, int argc, char** argv, const char* usage) {
  if (argc < 2) return kExitSuccess;
  std::string argument = argv[1];
  if (argc == 2 && (argument == "--help" || argument == "-h")) {
    std::fputs(usage, stdout);
    return CliFinishOutput(command) == kExitSuccess ? kCliHelpShown : kExitFailure;
  }
  if (argument.size() > 1 && argument[0] == '-') return CliUsage(command, "unknown option '" + argument + "'");
  return CliUsage(command, "unexpected argument '" + argument + "'");
}
