// The tile button of Background Mural: a subclass of an owner-drawn button
// that owns one MatrixRecord and shows its tile repeated over its face. Set
// up by message 1424 (lParam the tile number); answers 1425 with the number.
#pragma once

#include <windows.h>

LRESULT CALLBACK MatrixButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
