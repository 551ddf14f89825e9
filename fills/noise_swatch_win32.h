// The noise swatch of Dragon Skin: a window that owns one NoiseRecord, shows
// its map in the colours of the gradient beside it, and offers the seed, the
// scale and the depth in a pop-up menu on a right click. Set up by message
// 1424 (lParam the colouring); writes its file when destroyed.
#pragma once

#include <windows.h>

LRESULT CALLBACK NoiseSwatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
