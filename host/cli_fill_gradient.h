// The gradient part of lwmotio3 fill: the options that set a gradient fill
// of a fill swatch, and the show and set of a gradient bar, which keeps a
// bare colour line in its own Fountain file.
#pragma once

#include <string>

#include "fills/material.h"

// The usage of the gradient options.
extern const char kFillGradientArguments[];

// Sets the record's gradient from the options after the word "gradient":
// with no marker the two-colour mode, with markers the multi-colour line.
// 1, or 0 with error set.
int FillGradientSet(MaterialRecord* record, int argc, char** argv, std::string* error);
void FillGradientPrint(const MaterialRecord& record);

// Shows gradient bar id (argc 0) or sets it from "gradient" and the colour
// options; the exit status, with the errors of fill's own kind printed.
int FillBarShowOrSet(int id, int argc, char** argv);

// Saves the block with save beside path and moves it over the file, so a
// failed write leaves the old file as it was. 1, or 0 with error set.
int FillSaveReplacing(MemHandle block, const std::string& path, int (*save)(MemHandle block, const char* path),
                      std::string* error);

// The command's two ways to fail: a usage error (exit 2) and a failure of
// the run (exit 1), each one line on stderr.
int FillUsageError(const std::string& message);
int FillFail(const std::string& message);
