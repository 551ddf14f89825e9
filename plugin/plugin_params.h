// The plug-in's self-description, as PLUGIN16GetPluginParams hands it over.
#pragma once

#include "plugin/host_interface.h"

extern const char kPluginDisplayName[16];  // "Lettermotion #3"
extern const char kPluginNotice[64];

// Clears the host's record to its stated size, puts the size back, and
// writes version, name and notice. Always 1.
int PluginDescribe(PluginParams* params);
