// Private messages that the dialogs send to their custom controls.
#pragma once

// Set the control up: first argument the row's limit, second its param.
constexpr unsigned kMessageControlInit = 1424;
// Take the value again from the window text and repaint.
constexpr unsigned kMessageControlRefresh = 1326;
