#include "plugin/host_check.h"

#include <cstdlib>
#include <cstring>

int HostVersionAccepted(const char* company, const char* fileVersion) {
  int major = fileVersion != nullptr ? std::atoi(fileVersion) : 0;
  if (company == nullptr || std::strcmp(company, "Brindle Foundries") != 0) return 0;
  return major == 16 ? 1 : 0;
}

int HostInterfaceSupported(std::uint32_t versionWord) { return ((versionWord >> 8) & 0xFF) >= 16 ? 1 : 0; }
