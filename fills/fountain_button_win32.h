// The gradient bar: a subclass of an owner-drawn button that owns one
// FountainRecord and shows it as a strip with its markers above. Set up by
// message 1424 (first argument 4096 to load and keep the bar's file); saves
// that file when destroyed.
#pragma once

#include <windows.h>

LRESULT CALLBACK FountainButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
