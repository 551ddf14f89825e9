#include "plugin/plugin_params.h"

#include <cstring>

const char kPluginDisplayName[16] = "Lettermotion #3";
const char kPluginNotice[64] = "Lettermotion #3 animated text. (c) Brindle Foundries.";

int PluginDescribe(PluginParams* params) {
  std::uint32_t size = params->size;
  std::memset(params, 0, size);
  params->size = size;
  std::memcpy(params->displayName, kPluginDisplayName, sizeof params->displayName);
  // The notice goes in as four 16-byte moves.
  for (int part = 0; part < 4; ++part) std::memcpy(params->notice + 16 * part, kPluginNotice + 16 * part, 16);
  params->version = kInterfaceVersion;
  return 1;
}
