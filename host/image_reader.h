// Reading a picture file for our hosts, as a host's image reader gives it to
// the plug-in: PNG (and on Windows whatever GDI+ reads) as a 24-bit bitmap.
#pragma once

#include <string>

#include "raster/dib.h"

// A new 24-bit bitmap of the picture at path, alpha laid on white; null with
// error set when it cannot be read.
DibHandle ImageRead(const char* path, std::string* error);
