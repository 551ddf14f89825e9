// Texture groups on disk: the files of the data folder, the .bak copy kept
// of the last version, and the current group of the settings.
#pragma once

#include "fills/texture_group.h"

constexpr char kPrimaryTextureGroup[] = "lwmotio3.fft";

// The path of the current group, DefaultTextureFileName in the data folder,
// in the static buffer of DataFolderPath.
const char* TextureCurrentGroupPath();

// Empties the list and fills it from the group at path, setting the
// writeable flag from the file. 1 on success; 0 if the file cannot be opened
// or read or has the wrong first line (the list then stays as it was), or an
// allocation fails (the items read so far stay).
int TextureFileRead(const char* path, TextureGroup* group);

// Writes the list to path with writeable 1, after copying the present file
// to path plus ".bak" (failures there are ignored). An empty list gives an
// empty file. 1 on success, 0 if the file cannot be opened.
int TextureFileWrite(const char* path, const TextureGroup& group);
