// The command line's texture pieces: the group a name stands for, and the
// texture row of lwmotio3 fill.
#pragma once

#include <string>

#include "fills/material.h"

// A group named by its file name lives in the data folder; anything with a
// folder in it is a path of its own.
std::string CliTextureGroupPath(const char* group);

// fill ID texture GROUP.fft INDEX: the item's record becomes the fill's
// texture, as the texture dialog's OK would make it. 1, or 0 with error set.
int CliSetTextureFill(MaterialRecord* record, int argc, char** argv, std::string* error);
void CliPrintTextureFill(const MaterialRecord& record);
