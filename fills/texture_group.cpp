#include "fills/texture_group.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

enum TextureKeyForm { kKeyInteger, kKeyUnsigned, kKeyFloat };

struct TextureKeyRow {
  const char* key;
  std::size_t offset;
  TextureKeyForm form;
};

#define LW_KEY(name, field, index, form) {name, offsetof(TextureRecord, field) + (index) * 4, form}
#define LW_FIVE(prefix, field, form)                                                                        \
  LW_KEY(prefix "1", field, 0, form), LW_KEY(prefix "2", field, 1, form), LW_KEY(prefix "3", field, 2, form), \
      LW_KEY(prefix "4", field, 3, form), LW_KEY(prefix "5", field, 4, form)
#define LW_FOUR(prefix, field) \
  LW_KEY(prefix "0", field, 0, kKeyFloat), LW_KEY(prefix "1", field, 1, kKeyFloat), \
      LW_KEY(prefix "2", field, 2, kKeyFloat), LW_KEY(prefix "3", field, 3, kKeyFloat)

// Every stored field, in the order of writing. The spellings, CreaterCount
// included, are those of the files.
const TextureKeyRow kTextureKeys[] = {
    LW_FIVE("Power", Power, kKeyFloat),
    LW_FIVE("SeedValue", SeedValue, kKeyInteger),
    LW_FIVE("Dimension", Dimension, kKeyFloat),
    LW_KEY("MatrixSize", MatrixSize, 0, kKeyInteger),
    LW_KEY("TextureType", TextureType, 0, kKeyInteger),
    LW_FIVE("ForeColour", ForeColour, kKeyUnsigned),
    LW_KEY("BackColour", BackColour, 0, kKeyUnsigned),
    LW_KEY("CreaterCount", CreaterCount, 0, kKeyInteger),
    LW_KEY("CreaterDepth", CreaterDepth, 0, kKeyFloat),
    LW_FOUR("ColorRed", ColorRed),
    LW_FOUR("ColorGreen", ColorGreen),
    LW_FOUR("ColorBlue", ColorBlue),
    LW_KEY("BubbleCount", BubbleCount, 0, kKeyInteger),
    LW_KEY("BubbleSize", BubbleSize, 0, kKeyInteger),
    LW_KEY("BubblePower", BubblePower, 0, kKeyFloat),
    LW_KEY("BubbleShape", BubbleShape, 0, kKeyInteger),
    LW_KEY("PerturbationPower", PerturbationPower, 0, kKeyFloat),
};

#undef LW_FOUR
#undef LW_FIVE
#undef LW_KEY

int CompareNoCase(const char* a, const char* b) {
  for (;; ++a, ++b) {
    int ca = static_cast<unsigned char>(*a);
    int cb = static_cast<unsigned char>(*b);
    if (ca >= 'A' && ca <= 'Z') ca += 'a' - 'A';
    if (cb >= 'A' && cb <= 'Z') cb += 'a' - 'A';
    if (ca != cb || ca == 0) return ca - cb;
  }
}

// atol with a 32-bit long, as the files' first readers had it: the longest
// leading number, held to the int32 range.
std::int32_t ParseLong(const char* text) {
  long long value = std::strtoll(text, nullptr, 10);
  if (value > INT32_MAX) return INT32_MAX;
  if (value < INT32_MIN) return INT32_MIN;
  return static_cast<std::int32_t>(value);
}

void StoreValue(TextureRecord* texture, const TextureKeyRow& row, const char* value) {
  unsigned char* field = reinterpret_cast<unsigned char*>(texture) + row.offset;
  if (row.form == kKeyFloat) {
    float number = static_cast<float>(std::atof(value));
    std::memcpy(field, &number, 4);
  } else {
    std::int32_t number = ParseLong(value);
    std::memcpy(field, &number, 4);
  }
}

// Reads one line, the end cut back past every blank and control character.
// A line longer than the buffer is cut, and its rest comes as the next line.
bool ReadLine(std::FILE* file, char line[kTextureLineSize]) {
  if (std::fgets(line, kTextureLineSize, file) == nullptr) return false;
  std::size_t length = std::strlen(line);
  while (length > 0 && static_cast<unsigned char>(line[length - 1]) <= ' ') line[--length] = '\0';
  return true;
}

// Splits "key = value" in place. False for a comment or a line without "=".
bool SplitLine(char* line, char** key, char** value) {
  if (line[0] == ';') return false;
  char* equals = std::strchr(line, '=');
  if (equals == nullptr) return false;
  *equals = '\0';
  char* start = equals + 1;
  while (*start != '\0' && (static_cast<unsigned char>(*start) <= ' ' || *start == '=')) ++start;
  for (char* end = equals; end > line && static_cast<unsigned char>(end[-1]) <= ' ';) *--end = '\0';
  *key = line;
  *value = start;
  return true;
}

void StoreItemLine(char* line, TextureRecord* texture, char name[kTextureNameSize]) {
  char* key;
  char* value;
  if (!SplitLine(line, &key, &value)) return;
  if (CompareNoCase(key, "TextureName") == 0) {
    std::strncpy(name, value, kTextureNameSize - 1);
    name[kTextureNameSize - 1] = '\0';
    return;
  }
  for (const TextureKeyRow& row : kTextureKeys) {
    if (CompareNoCase(key, row.key) == 0) {
      StoreValue(texture, row, value);
      return;
    }
  }
}

// Reads an item's lines up to ":ENDITEM" or the end of the stream. The name
// buffer carries over, so an item without a name takes its predecessor's.
void ReadItem(std::FILE* file, char* line, TextureRecord* texture, char name[kTextureNameSize]) {
  while (ReadLine(file, line) && CompareNoCase(line, ":ENDITEM") != 0) StoreItemLine(line, texture, name);
}

bool Grow(TextureGroup* group) {
  int capacity = group->capacity < 8 ? 8 : group->capacity * 2;
  TextureItem* items = new (std::nothrow) TextureItem[capacity];
  if (items == nullptr) return false;
  if (group->count > 0) std::memcpy(items, group->items, sizeof(TextureItem) * group->count);
  delete[] group->items;
  group->items = items;
  group->capacity = capacity;
  return true;
}

void PrintItem(std::FILE* file, const TextureItem& item) {
  std::fprintf(file, ":BEGINITEM\n");
  std::fprintf(file, "%s=%s\n", "TextureName", item.name);
  const unsigned char* base = reinterpret_cast<const unsigned char*>(&item.texture);
  for (const TextureKeyRow& row : kTextureKeys) {
    if (row.form == kKeyFloat) {
      float number;
      std::memcpy(&number, base + row.offset, 4);
      std::fprintf(file, "%s=%f\n", row.key, number);
    } else {
      std::uint32_t number;
      std::memcpy(&number, base + row.offset, 4);
      std::fprintf(file, "%s=%lu\n", row.key, static_cast<unsigned long>(number));
    }
  }
  std::fprintf(file, ":ENDITEM\n");
}

}  // namespace

int TextureGroupAdd(TextureGroup* group, const char* name, const TextureRecord& texture) {
  if (group->count == group->capacity && !Grow(group)) return -1;
  int index = group->count;
  while (index > 0 && CompareNoCase(group->items[index - 1].name, name) > 0) --index;
  std::memmove(group->items + index + 1, group->items + index, sizeof(TextureItem) * (group->count - index));
  TextureItem& item = group->items[index];
  std::strncpy(item.name, name, kTextureNameSize - 1);
  item.name[kTextureNameSize - 1] = '\0';
  item.texture = texture;
  ++group->count;
  return index;
}

void TextureGroupClear(TextureGroup* group) {
  delete[] group->items;
  group->items = nullptr;
  group->count = 0;
  group->capacity = 0;
}

int TextureGroupParse(std::FILE* file, TextureGroup* group) {
  char* line = new (std::nothrow) char[kTextureLineSize];
  if (line == nullptr) return 0;
  if (!ReadLine(file, line) || std::strcmp(line, kTextureFileSignature) != 0) {
    delete[] line;
    return 0;
  }
  TextureGroupClear(group);
  char name[kTextureNameSize] = "";
  int result = 1;
  while (result == 1 && ReadLine(file, line)) {
    if (CompareNoCase(line, ":BEGINITEM") == 0) {
      TextureRecord texture{};
      TextureDefaults(&texture);
      ReadItem(file, line, &texture, name);
      if (TextureGroupAdd(group, name, texture) < 0) result = 0;
      continue;
    }
    char* key;
    char* value;
    if (SplitLine(line, &key, &value) && CompareNoCase(key, "Writeable") == 0) group->writeable = ParseLong(value);
  }
  delete[] line;
  return result;
}

void TextureGroupPrint(std::FILE* file, const TextureGroup& group, const TextureFileStamp& stamp) {
  if (group.count < 1) return;
  std::fprintf(file, "%s\n", kTextureFileSignature);
  std::fprintf(file, ";This is a machine-generated text file. If you edit it by hand, you\n");
  std::fprintf(file, ";run the very real and tangible risk of causing all time and space to\n");
  std::fprintf(file, ";implode upon itself and bring about the extinction of reality as we\n");
  std::fprintf(file, ";know it. Think carefully...\n");
  std::fprintf(file, "Version=%d.%d%c\n", 16, 0, 97);
  std::fprintf(file, "Itemcount=%d\n", group.count);
  std::fprintf(file, "Writeable=%d\n", stamp.writeable);
  std::fprintf(file, "UpdateTimeDate=%24.24s\n", stamp.dateText);
  bool ours = CompareNoCase(stamp.organisation, "Brindle Foundries") == 0;
  std::fprintf(file, "MachineName=%s\n", ours ? "" : stamp.owner);
  std::fprintf(file, "MachineOrganization=%s\n", ours ? "" : stamp.organisation);
  std::fprintf(file, ";Items begin\n");
  for (int i = 0; i < group.count; ++i) PrintItem(file, group.items[i]);
  std::fprintf(file, ";Items end -- beyond this point be dragons.\n");
}
