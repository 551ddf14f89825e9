#include "plugin/plugin_state_win32.h"

HINSTANCE g_module = nullptr;
HFONT g_fontArial14 = nullptr;
HFONT g_fontDialog = nullptr;
HFONT g_fontArial12 = nullptr;
char g_programFolder[MAX_PATH] = {};
