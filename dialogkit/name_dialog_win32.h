// The small dialog that asks for a new group's name: one edit, "OK" only
// while it holds some text.
#pragma once

#include <windows.h>

constexpr int kNameDialogTemplate = 9967;
constexpr int kNameEditId = 101;
constexpr int kNameLimit = 260;

// Asks for a name, starting from "Untitled". 1 with the name in name (room
// for kNameLimit + 1 bytes) if confirmed, else 0.
int NameDialogRun(HWND owner, char* name);
