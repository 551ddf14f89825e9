// The command line's commands: one row each, dispatched by name.
#pragma once

#include <string>

struct CliCommand {
  const char* name;
  const char* summary;  // one line for the command list
  int (*run)(int argc, char** argv);  // argv[0] is the command's name
};

int CliDescribe(int argc, char** argv);
int CliSettings(int argc, char** argv);
int CliRender(int argc, char** argv);
int CliEffects(int argc, char** argv);
int CliFill(int argc, char** argv);
int CliGallery(int argc, char** argv);
int CliTextures(int argc, char** argv);
int CliTiles(int argc, char** argv);

// Loads the settings as a command starts: explicitFile (refused in one line,
// kExitFailure, if it cannot be read whole), or the user's own file, where an
// unreadable file is a warning and the defaults stand. kExitSuccess to go on.
int CliLoadSettings(const char* command, const std::string& explicitFile);
