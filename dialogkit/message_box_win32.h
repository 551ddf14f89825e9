// String-table text, the one message box of the plug-in, and centring.
#pragma once

#include <windows.h>

// Dialog templates of the message boxes: OK; Yes and No; Yes, No and Cancel.
constexpr const char* kMessageBoxTemplate = "MessageBox";
constexpr const char* kMessageBoxYesNoTemplate = "MessageBoxYesNo";
constexpr const char* kMessageBoxYesNoCancelTemplate = "MessageBoxYesNoCancel";
constexpr int kMessageBoxTextId = 101;

// The string's text in one shared 1024-byte buffer, which the next call
// overwrites; a string that cannot be loaded gives a warning text instead.
const char* StringLookup(int id);

// Shows text in the OK message box, modal to owner, then updates the owner.
void MessageBoxShow(HWND owner, const char* text);
// Shows the help document at an anchor ("LWMOTIO3.HTML#TEXT") through the
// host; says so in the message box when the host cannot.
void HelpShow(HWND owner, const char* document);
// Dialog procedure of all three boxes; the parameter is the text. Ends with
// the id of the button (1, 2, 6 or 7).
INT_PTR CALLBACK MessageBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Moves the window to the middle of the screen.
void CentreWindow(HWND window);
