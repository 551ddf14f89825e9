// Any bytes as a texture group: read as the texture dialog reads a group,
// written back and read again, which must give the same items.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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
  for (int i = 0; i < group.count; ++i)
    if (std::strcmp(again.items[i].name, group.items[i].name) != 0) std::abort();
  std::free(text);
  TextureGroupClear(&again);
  TextureGroupClear(&group);
  return 0;
}
