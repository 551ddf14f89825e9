// Whether the process that loads the plug-in is a compatible host, judged
// from the two texts of its file version record.
#pragma once

#include <cstdint>

// company or fileVersion null means the text is missing from the record.
// Accepts only the company "Brindle Foundries", exactly, with a file version
// whose leading number (as atoi reads it) is 16.
int HostVersionAccepted(const char* company, const char* fileVersion);

// Whether the host's interface is new enough: bits 8 to 15 of its version
// word must be 16 or more.
int HostInterfaceSupported(std::uint32_t versionWord);
