// Any bytes as a texture group: read as the texture dialog reads a group,
// written back and read again, which must give the same items. A name cut
// to its buffer can end in blanks that the next reading trims, as it trims
// every line; that is the only change allowed.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "fills/texture_group.h"

namespace {

int ParseBytes(const void* data, std::size_t size, TextureGroup* group) {
  if (size == 0) return 0;  // fmemopen will not take an empty buffer
  std::FILE* file = fmemopen(const_cast<void*>(data), size, "r");
  if (file == nullptr) std::abort();
  int result = TextureGroupParse(file, group);
  std::fclose(file);
  return result;
}

// The group's names, trimmed as a reading trims lines, in plain byte order
// (trimming may change the list's own order).
std::vector<std::string> TrimmedNames(const TextureGroup& group) {
  std::vector<std::string> names;
  for (int i = 0; i < group.count; ++i) {
    std::string name = group.items[i].name;
    while (!name.empty() && static_cast<unsigned char>(name.back()) <= ' ') name.pop_back();
    names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextureGroup group{};
  if (ParseBytes(data, size, &group) == 0 || group.count == 0) {
    TextureGroupClear(&group);
    return 0;
  }
  char* text = nullptr;
  std::size_t length = 0;
  std::FILE* out = open_memstream(&text, &length);
  if (out == nullptr) std::abort();
  TextureGroupPrint(out, group, TextureFileStamp{1, "Sun Nov 22 12:00:00 2026", "owner", ""});
  std::fclose(out);
  TextureGroup again{};
  if (ParseBytes(text, length, &again) != 1 || again.count != group.count || again.writeable != 1) std::abort();
  if (TrimmedNames(again) != TrimmedNames(group)) std::abort();
  std::free(text);
  TextureGroupClear(&again);
  TextureGroupClear(&group);
  return 0;
}
