// How every command talks to its user. Exit codes 0, 1 and 2; every refusal
// is exactly one line on stderr naming the cause; warnings and status lines
// are silenced by --quiet, and status (with progress) is shown only to a
// person at a terminal; what goes to standard output is checked.
#pragma once

#include <string>

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

void CliSetQuiet(bool quiet);
// Whether status lines and progress are shown: stderr is a terminal and
// --quiet was not given.
bool CliShowsStatus();

// "lwmotio3 COMMAND: message"; returns kExitFailure.
int CliFail(const char* command, const std::string& message);
// "lwmotio3 COMMAND: message (see lwmotio3 COMMAND --help)"; returns kExitUsage.
int CliUsage(const char* command, const std::string& message);
// "lwmotio3 COMMAND: warning: message", unless quiet.
void CliWarn(const char* command, const std::string& message);

// Flushes standard output: kExitSuccess if everything reached it, else one
// line with the system's reason and kExitFailure.
int CliFinishOutput(const char* command);

// What CliNoArguments returns when it printed the usage: the command is done.
constexpr int kCliHelpShown = -1;

// Checks that argv holds nothing after the command's name but --help (which
// prints usage to stdout): kExitSuccess to go on, kCliHelpShown, or the exit
// code of a refusal.
int CliNoArguments(const char* command, int argc, char** argv, const char* usage);
