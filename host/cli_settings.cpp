// lwmotio3 settings: the settings a render will use, printed in the
// configuration file's own format.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "host/cli.h"
#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

void PrintSettingsUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 settings [--ini FILE]\n"
               "\n"
               "Prints the effective settings as LWMOTIO3.INI holds them: the header and\n"
               "one \"key = value\" line per setting, compiled-in defaults where the file\n"
               "says nothing.\n"
               "\n"
               "options:\n"
               "  --ini FILE  read FILE instead of %s\n"
               "  --help      show this text\n",
               SettingsFilePath()[0] != '\0' ? SettingsFilePath() : "the user's LWMOTIO3.INI");
}

}  // namespace

int CliSettings(int argc, char** argv) {
  const char* explicitFile = nullptr;
  for (int index = 1; index < argc; ++index) {
    if (std::strcmp(argv[index], "--help") == 0 || std::strcmp(argv[index], "-h") == 0) {
      PrintSettingsUsage(stdout);
      return 0;
    }
    if (std::strcmp(argv[index], "--ini") == 0 && index + 1 < argc) {
      explicitFile = argv[++index];
      continue;
    }
    if (std::strcmp(argv[index], "--ini") == 0) {
      std::fprintf(stderr, "lwmotio3 settings: --ini needs a file name\n");
    } else {
      std::fprintf(stderr, "lwmotio3 settings: unknown option '%s'\n", argv[index]);
    }
    PrintSettingsUsage(stderr);
    return 2;
  }
  SettingsUseFile(explicitFile);
  const char* path = SettingsFilePath();
  errno = 0;
  if (path[0] == '\0' || !SettingsLoadFile(path, PlatformShiftHeld())) {
    if (explicitFile != nullptr) {
      std::fprintf(stderr, "lwmotio3 settings: cannot read '%s': %s\n", path,
                   errno != 0 ? std::strerror(errno) : "read error");
      return 1;
    }
    std::fprintf(stderr, "lwmotio3 settings: no readable settings file%s%s; the compiled-in defaults apply\n",
                 path[0] != '\0' ? " at " : "", path);
  }
  SettingsWrite(stdout, std::time(nullptr));
  return 0;
}
