// The installer's part that every host of ours plays: the maker's folder in
// the user's application data and the plug-in's data folder below it, which
// the plug-in expects to find and never makes itself.
#pragma once

#include <string>

// Makes both folders (and any missing folder above them) and puts the
// primary groups in the data folder when they are missing. 0 with error set
// if that cannot be done.
int HostMakeDataFolders(std::string* error);

// Makes the folder and any missing folder above it. 0 with error set on
// failure.
int HostMakeFolder(const std::string& path, std::string* error);
