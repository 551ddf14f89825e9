// The Windows reference host: a window with a status line and a progress bar
// that loads the plug-in, runs its dialog with a host record of its own, and
// answers the host codes: tasks become animated GIF files through the
// portable reference host, status and progress show in its window, code 11
// offers the system's colour box, and codes 6 and 8 its file dialog and a
// picture read through GDI+.
#pragma once

#include <windows.h>

#include <cstdint>

#include "plugin/host_interface.h"

// The window the plug-in's dialog is owned by; its controls show what the
// callback hears.
struct HostWindow {
  HWND frame;
  HWND status;
  HWND progress;
};

// Makes and shows the host window titled with the plug-in's name.
bool HostWindowCreate(HINSTANCE instance, const char* pluginName, HostWindow* window);

// The callback the plug-in calls; it works on the window set here and on the
// portable reference host's state.
void LwHostUseWindow(const HostWindow* window);
std::int64_t LwHostCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument);
