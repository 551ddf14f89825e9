// The main dialog: template 1000 holds the general controls; the effect
// panels are made from the control table when it opens. Its controls are the
// live state that the effects and the build pipeline read through the
// controls seam.
#pragma once

#include <windows.h>

#include "plugin/controls.h"
#include "plugin/host_interface.h"

// Private messages of the dialog.
constexpr UINT kMessageSecondStage = 1224;  // posted at the end of WM_INITDIALOG
constexpr UINT kMessageCustomChanged = 1327;  // a custom control changed: new preview
constexpr UINT kMessageMuralChanged = 1329;   // the tile list changed: wParam is the new MainMuralIndex

constexpr int kPreviewControl = 36;
constexpr UINT_PTR kPreviewTimer = 15;

// Runs the modal dialog owned by parent; its result is that of EndDialog.
INT_PTR MainDialogRun(HWND parent, HostRecord* host);
INT_PTR CALLBACK MainDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// The controls seam over the dialog's child windows.
Controls DialogControls(HWND dialog);

// Makes every run-time row's window, hidden, in row order, with its class
// behaviour, font and up-down companion.
void DialogCreatePanels(HWND dialog);
// Hides every panel control (effect -1), or shows the effect's and hides the rest.
void ShowEffectPanel(HWND dialog, int effect);
// The selected effect, a negative selection counting as 0 and the end of
// the table as its last place plus one.
int DialogEffectIndex(HWND dialog);
// Frees the font names kept as item data of the font list.
void FontListFree(HWND dialog);
// Draws one item of the owner-drawn font list.
void FontListDrawItem(const DRAWITEMSTRUCT* item);

// Repaint of the preview control: the current effect's still, centred on
// white, or the plain fallback fill.
void PreviewDraw(HWND dialog, const DRAWITEMSTRUCT* item);
void PreviewInvalidate(HWND dialog);
// Restarts the delayed repaint: one repaint UpdateDelay after the last call.
void PreviewRestartTimer(HWND dialog);
