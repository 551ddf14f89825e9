// The installer's part that every host of ours plays: the maker's folder in
// the user's application data, the plug-in's data folder below it and the
// primary groups in it, which the plug-in expects to find and never makes
// itself.
#pragma once

#include <string>

// Makes both folders (and any missing folder above them) and installs the
// primary groups that are missing. 0 with error set if that fails.
int HostMakeDataFolders(std::string* error);

// Writes the primary texture group of our own designs into the data folder
// unless a file of that name is there. 0 with error set if it cannot.
int HostInstallPrimaryGroups(std::string* error);

// Makes the folder and any missing folder above it. 0 with error set on
// failure.
int HostMakeFolder(const std::string& path, std::string* error);
