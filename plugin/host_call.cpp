#include "plugin/host_call.h"

std::int64_t HostCall(const HostRecord* host, std::uint32_t code, std::int64_t argument, std::int64_t pointerArgument,
                      TaskRecord* task) {
  if (host == nullptr || host->callback == nullptr) return 0;
  return host->callback(task, code, argument, pointerArgument);
}

void HostStatus(const HostRecord* host, const char* text) {
  HostCall(host, kHostStatusText, 0, reinterpret_cast<std::int64_t>(text));
}

void HostProgress(const HostRecord* host, int step, int total) { HostCall(host, kHostProgress, step, total); }
