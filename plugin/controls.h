// The one seam through which generators and the build pipeline read the
// dialog's controls. In the plug-in it is the live dialog; headless it is a
// snapshot of values taken from the settings, with the same clamps.
#pragma once

#include "raster/global_memory.h"

struct ControlsOps {
  // Window text of control id into buffer (always terminated); returns its
  // length, 0 for a missing control.
  int (*text)(void* impl, int id, char* buffer, int size);
  // Check state of a check box: 1 checked, 0 otherwise.
  int (*checked)(void* impl, int id);
  // Selected index of a list, -1 for none.
  int (*selection)(void* impl, int id);
  // Data block owned by a custom control (a fill record), or null.
  MemHandle (*data)(void* impl, int id);
};

struct Controls {
  const ControlsOps* ops;
  void* impl;
  void* window;  // the dialog's window handle, or null headless
};

int ControlText(const Controls* dialog, int id, char* buffer, int size);
int ControlChecked(const Controls* dialog, int id);
int ControlSelection(const Controls* dialog, int id);
MemHandle ControlData(const Controls* dialog, int id);

// Number edit: the edit's text, clamped to the range text "min,max,default"
// of its up-down (id + 10000). A failed parse leaves 0, 100, 0.
int ReadControlInt(const Controls* dialog, int id);
// Custom control: its window text read as a signed number.
int ReadControlNumber(const Controls* dialog, int id);
