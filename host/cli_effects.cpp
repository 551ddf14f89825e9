// lwmotio3 effects: the effect rows, as the effect list shows them.
#include <cstdio>
#include <cstring>

#include "effects/effect.h"
#include "host/cli.h"

int CliEffects(int argc, char** argv) {
  if (argc > 1) {
    bool help = std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0;
    std::fprintf(help ? stdout : stderr,
                 "usage: lwmotio3 effects\n\nLists the effects by row; render takes either with --effect.\n");
    return help ? 0 : 2;
  }
  for (int row = 0; row < kEffectCount; ++row)
    std::printf("%2d  %-20s%s\n", row, EffectTable[row].name, EffectTable[row].build != nullptr ? "" : "  (not built yet)");
  return 0;
}
