// The fill swatch: a subclass of an owner-drawn button that owns one
// MaterialRecord, shows it, offers its four kinds in a menu and opens the
// editor of the current kind on a click. Set up by message 1424 (lParam the
// default colour); saves its file when destroyed.
#pragma once

#include <windows.h>

LRESULT CALLBACK MaterialButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
