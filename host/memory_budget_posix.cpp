// The machine's memory from the system, narrowed by the control group's
// limit (version 2, then version 1) and the process's own limits.
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

#include "host/memory_budget.h"

namespace {

void Narrow(std::uint64_t limit, std::uint64_t* budget) {
  if (limit != 0 && (*budget == 0 || limit < *budget)) *budget = limit;
}

// A number on the first line of a file; 0 for "max", a missing file or text.
std::uint64_t NumberInFile(const char* path) {
  std::FILE* file = std::fopen(path, "r");
  if (file == nullptr) return 0;
  unsigned long long value = 0;
  if (std::fscanf(file, "%llu", &value) != 1) value = 0;
  std::fclose(file);
  return value;
}

std::uint64_t ProcessLimit(int resource) {
  rlimit limit{};
  if (getrlimit(resource, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return 0;
  return limit.rlim_cur;
}

}  // namespace

std::uint64_t MachineMemoryBytes() {
  std::uint64_t budget = 0;
  long pages = sysconf(_SC_PHYS_PAGES);
  long pageSize = sysconf(_SC_PAGE_SIZE);
  if (pages > 0 && pageSize > 0) budget = static_cast<std::uint64_t>(pages) * pageSize;
  Narrow(NumberInFile("/sys/fs/cgroup/memory.max"), &budget);
  Narrow(NumberInFile("/sys/fs/cgroup/memory/memory.limit_in_bytes"), &budget);
  Narrow(ProcessLimit(RLIMIT_AS), &budget);
  Narrow(ProcessLimit(RLIMIT_DATA), &budget);
  return budget;
}

std::uint64_t ProcessMemoryBytes() {
  unsigned long long size = 0, resident = 0;
  std::FILE* file = std::fopen("/proc/self/statm", "r");
  if (file == nullptr) return 0;
  if (std::fscanf(file, "%llu %llu", &size, &resident) != 2) resident = 0;
  std::fclose(file);
  long pageSize = sysconf(_SC_PAGE_SIZE);
  return pageSize > 0 ? resident * static_cast<std::uint64_t>(pageSize) : 0;
}
