// Where the command line finds a group file: a bare file name is a group of
// the data folder, anything with a folder in it a path of its own.
#pragma once

#include <string>

#include "fills/matrix_group.h"

// True for a bare file name, which names a group of the data folder.
bool GroupIsInDataFolder(const std::string& group);
// The path of the group: in the data folder for a bare name, else as given.
std::string GroupPath(const std::string& group);

// Whether a file is there to be read.
bool GroupFileExists(const std::string& path);

// Reads the tile group at path into list: 0 with error set when there is no
// file or it is not a group.
int GroupReadTiles(const std::string& path, MatrixTileList* list, std::string* error);
