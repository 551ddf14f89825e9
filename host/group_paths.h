// Where the command line finds a group file: a bare file name is a group of
// the data folder, anything with a folder in it a path of its own.
#pragma once

#include <string>

// True for a bare file name, which names a group of the data folder.
bool GroupIsInDataFolder(const std::string& group);
// The path of the group: in the data folder for a bare name, else as given.
std::string GroupPath(const std::string& group);
