// lwmotio3: the headless renderer. Runs the plug-in's effects and build
// pipeline from the same settings file, without a dialog.
#include <cstdio>
#include <cstring>
#include <new>

#include "host/cli.h"
#include "host/cli_output.h"
#include "host/interrupt_cleanup.h"

namespace {

constexpr CliCommand kCommands[] = {
    {"describe", "print the plug-in's self-description", CliDescribe},
    {"render", "render the current effect to an animated GIF (or PNG frames)", CliRender},
    {"effects", "list the effects by row", CliEffects},
    {"settings", "print the effective settings in LWMOTIO3.INI's format", CliSettings},
    {"fill", "show or set the fill of a fill control", CliFill},
    {"textures", "list the items of a texture group", CliTextures},
    {"tiles", "list the tiles of a group, or add a picture to a group", CliTiles},
    {"gallery", "render every built effect on built-in settings into a folder with index.html", CliGallery},
};

int PrintUsage() {
  std::printf("usage: lwmotio3 COMMAND [OPTIONS]\n"
              "\n"
              "Animated text from the Lettermotion #3 effects, without the dialog.\n"
              "\n"
              "commands:\n");
  for (const CliCommand& command : kCommands) std::printf("  %-10s %s\n", command.name, command.summary);
  std::printf("\n"
              "options:\n"
              "  --help     show this text\n"
              "  --version  show the program's version\n"
              "\n"
              "lwmotio3 COMMAND --help shows a command's options. Exit status: 0 done,\n"
              "1 failed, 2 wrong usage; every refusal is one line on stderr.\n");
  return CliFinishOutput("");
}

}  // namespace

int main(int argc, char** argv) {
  InterruptCleanupInstall();
  if (argc < 2) return CliUsage("", "no command given");
  if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) return PrintUsage();
  if (std::strcmp(argv[1], "--version") == 0) {
    std::printf("lwmotio3 %s\n", LW_VERSION);
    return CliFinishOutput("");
  }
  for (const CliCommand& command : kCommands) {
    if (std::strcmp(argv[1], command.name) != 0) continue;
    // The plug-in's own code reports a failed allocation itself; this is for
    // what the command line keeps in standard containers.
    try {
      return command.run(argc - 1, argv + 1);
    } catch (const std::bad_alloc&) {
      std::fputs("lwmotio3: Memory error\n", stderr);
      return 1;
    }
  }
  if (argv[1][0] == '-') return CliUsage("", std::string("unknown option '") + argv[1] + "'");
  return CliUsage("", std::string("unknown command '") + argv[1] + "'");
}
