// The command line's commands: one row each, dispatched by name.
#pragma once

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
