// lwmotio3 effects: the effect rows, as the effect list shows them.
#include <cstdio>

#include "effects/effect.h"
#include "host/cli.h"
#include "host/cli_output.h"

int CliEffects(int argc, char** argv) {
  int status = CliNoArguments("effects", argc, argv,
                              "usage: lwmotio3 effects\n\n"
                              "Lists the effects by row; render takes either with --effect.\n");
  if (status != kExitSuccess) return status == kCliHelpShown ? kExitSuccess : status;
  for (int row = 0; row < kEffectCount; ++row)
    std::printf("%2d  %-20s%s\n", row, EffectTable[row].name, EffectTable[row].build != nullptr ? "" : "  (not built yet)");
  return CliFinishOutput("effects");
}
