// A folder of frames is written whole or not at all: into a staging folder
// beside it, moved into place once every file is written. It never mixes old
// frames with new ones, so it must be new or empty to begin with.
#pragma once

#include <string>

// 1 if folder does not exist or is an empty folder; 0 with error set.
int FramesFolderUsable(const std::string& folder, std::string* error);

// Makes the staging folder for folder (and any missing folder above it); 1
// with its path in staging, or 0 with error set.
int FramesFolderBegin(const std::string& folder, std::string* staging, std::string* error);

// Moves the finished staging folder to folder; 0 with error set (and the
// staging folder removed) if it cannot.
int FramesFolderCommit(const std::string& staging, const std::string& folder, std::string* error);

// Removes the staging folder and everything in it.
void FramesFolderAbandon(const std::string& staging);
