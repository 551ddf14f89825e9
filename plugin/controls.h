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

  // Writes, as the control table's load and save use them. The last four
  // may be null where there is no window behind the control; they are then
  // skipped.
  void (*setText)(void* impl, int id, const char* text);
  void (*setCheck)(void* impl, int id, int checked);
  // Select by index; an index out of range selects nothing.
  void (*setSelection)(void* impl, int id, int index);
  // Select the first item that begins with text, ignoring case; with no such
  // item the selection stays as it was.
  void (*selectText)(void* impl, int id, const char* text);
  void (*clearList)(void* impl, int id);
  void (*addItem)(void* impl, int id, const char* text);
  // Run a list's filler (a ControlFiller).
  void (*fill)(void* impl, int id, int filler);
  // Range and position of an up-down; found is how many of the three numbers
  // its range text gave.
  void (*setUpDown)(void* impl, int id, int found, int minimum, int maximum, int position);
  void (*limitText)(void* impl, int id, long long limit);
  // Ask a custom control to take up its value again and repaint.
  void (*refresh)(void* impl, int id, long long limit, long long param);

  // Services of a long run such as a Build. Show text in the message box,
  // owned by the dialog.
  void (*showMessage)(void* impl, const char* text);
  // With wait set, show the wait cursor and return the cursor it replaced;
  // otherwise put back previous. Returns what was shown before.
  void* (*waitCursor)(void* impl, int wait, void* previous);
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
void ControlSetText(const Controls* dialog, int id, const char* text);
void ControlSetCheck(const Controls* dialog, int id, int checked);
void ControlSetSelection(const Controls* dialog, int id, int index);
void ControlSelectText(const Controls* dialog, int id, const char* text);
void ControlClearList(const Controls* dialog, int id);
void ControlAddItem(const Controls* dialog, int id, const char* text);
void ControlShowMessage(const Controls* dialog, const char* text);
void* ControlWaitCursor(const Controls* dialog, int wait, void* previous);

// Number edit: the edit's text, clamped to the range text "min,max,default"
// of its up-down (id + 10000). A failed parse leaves 0, 100, 0.
int ReadControlInt(const Controls* dialog, int id);
// Custom control: its window text read as a signed number.
int ReadControlNumber(const Controls* dialog, int id);
