// The record of a gradient bar: a long-form FountainRecord in a movable
// block, set up from the bar's Fountain file and saved back to it when the
// bar goes, and the bar's geometry. Generators lock it through the controls
// seam like any fill.
#pragma once

#include "fills/fountain.h"
#include "plugin/controls.h"

// The set-up argument of a bar that loads and saves its own file.
constexpr long long kFountainSetUpPersist = 4096;
// A caption holding this marks the bar as looped; it is never shown.
inline constexpr char kFountainLoopedCaption[] = "FountainButtonLooped";

constexpr int kFountainButtonWidth = 197;
constexpr int kFountainButtonHeight = 50;

// The strip's place in the bar's client rectangle.
DibRect FountainBarRect(const DibRect& client);

// A new block: with persist and useFile set, the file at path if it holds a
// whole long-form record with the magic; otherwise the rainbow. Looped and
// persist set their flag bits; the preview starts null. Null if the block
// cannot be made.
MemHandle FountainButtonLoad(const char* path, int persist, int looped, int useFile);
// The block a bar of control id makes on set-up, from its caption and its
// set-up argument; useFile is 0 while Shift is held as the dialog opens.
MemHandle FountainSetUp(int id, const char* caption, long long setUp, int useFile);
// Writes the whole record to path if its persist flag is set: 1 when written,
// 0 on failure (a short write removes the file) or when nothing is kept.
int FountainButtonSave(MemHandle block, const char* path);

// The locked record of gradient bar id, or null. Unlock through the control.
FountainRecord* FountainLock(const Controls* dialog, int id);
void FountainUnlock(const Controls* dialog, int id);
