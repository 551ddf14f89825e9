// State of one plug-in load and one run of PLUGIN16DoBuild.
#pragma once

#include <windows.h>

extern HINSTANCE g_module;         // stored at every DllMain call
extern HFONT g_fontArial14;        // owner drawing
extern HFONT g_fontDialog;         // every control the control table makes
extern HFONT g_fontArial12;        // owner drawing
extern char g_programFolder[MAX_PATH];  // the DLL's folder, ending in a backslash
