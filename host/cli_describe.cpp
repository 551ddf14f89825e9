// lwmotio3 describe: what PLUGIN16GetPluginParams tells a host.
#include <cstdio>

#include "host/cli.h"
#include "host/cli_output.h"
#include "plugin/plugin_params.h"

int CliDescribe(int argc, char** argv) {
  int status = CliNoArguments("describe", argc, argv,
                              "usage: lwmotio3 describe\n\n"
                              "Prints the plug-in's name, interface version and notice, as a host sees them.\n");
  if (status != kExitSuccess) return status == kCliHelpShown ? kExitSuccess : status;
  PluginParams params{};
  params.size = sizeof params;
  PluginDescribe(&params);
  std::printf("name: %s\ninterface version: %u\nnotice: %s\n", params.displayName, params.version, params.notice);
  return CliFinishOutput("describe");
}
