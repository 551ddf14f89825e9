// Window procedures of the wells: subclasses installed on owner-drawn buttons
// by the control table. Each keeps its number as "%d" in its window text, is
// set up by message 1424 and refreshed from its text by 1326.
#pragma once

#include <windows.h>

// Direction wells, each a grid of icon cells; a click selects the cell under
// it, and the button then reports the click to the parent as usual.
LRESULT CALLBACK DirectionWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);  // eight-way
LRESULT CALLBACK ScrollWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);     // four-way
LRESULT CALLBACK TwoWayWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The colour well: shows its colour, and on a click offers the host's colour
// box; then it refreshes itself and sends its id to the parent as a command.
LRESULT CALLBACK ColourWellProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
