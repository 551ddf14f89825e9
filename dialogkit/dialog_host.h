// The host record that the running dialog keeps for its whole life, and the
// host's colour choice, which every colour control of the dialogs goes through.
#pragma once

#include <cstdint>

#include "plugin/host_interface.h"

// The host record of the running dialog, or null outside one.
HostRecord* DialogHost();
// Set by the main dialog when it starts; null when it is gone.
void DialogHostSet(HostRecord* host);

// Offers the host's colour box (code 11) with the 256-colour orthogonal
// palette as swatches and *colour as the current colour, owned by window.
// 1 with the chosen colour in *colour if the host accepted, else 0 with
// *colour unchanged; 0 also without a host or a callback.
int ColourPick(void* window, std::uint32_t* colour);
