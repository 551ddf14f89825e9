// The texture kind of lwmotio3 fill, which takes an item of a texture group.
#pragma once

#include <string>

#include "fills/material.h"

// fill ID texture GROUP.fft INDEX: the item's record becomes the fill's
// texture, as the texture dialog's OK would make it. 1, or 0 with error set.
int CliSetTextureFill(MaterialRecord* record, int argc, char** argv, std::string* error);
void CliPrintTextureFill(const MaterialRecord& record);
