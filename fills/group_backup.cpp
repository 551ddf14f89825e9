#include "fills/group_backup.h"

#include <cstdio>
#include <string>

void GroupBackup(const char* path) {
  std::string backup = std::string(path) + ".bak";
  std::remove(backup.c_str());
  std::FILE* from = std::fopen(path, "rb");
  if (from == nullptr) return;
  std::FILE* to = std::fopen(backup.c_str(), "wb");
  if (to != nullptr) {
    char buffer[65536];
    std::size_t count;
    while ((count = std::fread(buffer, 1, sizeof buffer, from)) > 0)
      if (std::fwrite(buffer, 1, count, to) != count) break;
    std::fclose(to);
  }
  std::fclose(from);
}
