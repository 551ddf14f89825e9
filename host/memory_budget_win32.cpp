// The machine's physical memory, and the process's working set.
#include <windows.h>
#include <psapi.h>

#include "host/memory_budget.h"

std::uint64_t MachineMemoryBytes() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  return GlobalMemoryStatusEx(&status) ? status.ullTotalPhys : 0;
}

std::uint64_t ProcessMemoryBytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  return GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) ? counters.WorkingSetSize : 0;
}
