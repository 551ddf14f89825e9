// lwmotio3 describe: what PLUGIN16GetPluginParams tells a host.
#include <cstdio>
#include <cstring>

#include "host/cli.h"
#include "plugin/plugin_params.h"

int CliDescribe(int argc, char** argv) {
  if (argc > 1) {
    bool help = std::strcmp(argv[1], "--help") == 0;
    std::fprintf(help ? stdout : stderr, "usage: lwmotio3 describe\n");
    return help ? 0 : 2;
  }
  PluginParams params{};
  params.size = sizeof params;
  PluginDescribe(&params);
  std::printf("name: %s\ninterface version: %u\nnotice: %s\n", params.displayName, params.version, params.notice);
  return 0;
}
