// lwmotio3: the headless renderer. Runs the plug-in's effects and build
// pipeline from the same settings file, without a dialog.
#include <cstdio>
#include <cstring>

#include "host/cli.h"

namespace {

constexpr CliCommand kCommands[] = {
    {"describe", "print the plug-in's self-description", CliDescribe},
    {"render", "render the current effect to an animated GIF (or PNG frames)", CliRender},
    {"effects", "list the effects by row", CliEffects},
    {"settings", "print the effective settings in LWMOTIO3.INI's format", CliSettings},
    {"fill", "show or set the fill of a fill control", CliFill},
    {"textures", "list the items of a texture group", CliTextures},
    {"gallery", "render every built effect on built-in settings into a folder with index.html", CliGallery},
};

void PrintUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 COMMAND [OPTIONS]\n"
               "\n"
               "Animated text from the Lettermotion #3 effects, without the dialog.\n"
               "\n"
               "commands:\n");
  for (const CliCommand& command : kCommands) std::fprintf(out, "  %-10s %s\n", command.name, command.summary);
  std::fprintf(out, "\nlwmotio3 COMMAND --help shows a command's options.\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
    PrintUsage(argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  for (const CliCommand& command : kCommands) {
    if (std::strcmp(argv[1], command.name) == 0) return command.run(argc - 1, argv + 1);
  }
  std::fprintf(stderr, "lwmotio3: unknown command '%s' (see lwmotio3 --help)\n", argv[1]);
  return 2;
}
