// Texture groups: named TextureRecords kept as text, one group to a file.
// Only the parameters are stored, since a texture can always be generated
// again from its record. In memory a group is a list sorted by name, as the
// texture dialog's list box keeps it, with the group's writeable flag.
#pragma once

#include <cstdio>

#include "fills/texture_record.h"

constexpr int kTextureNameSize = 260;
constexpr int kTextureLineSize = 8192;
inline constexpr char kTextureFileSignature[] = "BRINDLE FOUNDRIES LIMNERY TEXTURE FILE";
inline constexpr char kTextureUnknownName[] = "UNKNOWN NAME";

struct TextureItem {
  char name[kTextureNameSize];
  TextureRecord texture;
};

struct TextureGroup {
  TextureItem* items;  // sorted by name without regard to case
  int count;
  int capacity;
  // Set only by a file's Writeable line, so a file without one keeps the
  // state of the group read before it.
  int writeable;
};

// Adds an item at its sorted place, after any of the same name. Its index,
// or -1 when the list cannot grow.
int TextureGroupAdd(TextureGroup* group, const char* name, const TextureRecord& texture);
// Frees the items; the writeable flag stays.
void TextureGroupClear(TextureGroup* group);

// Reads a group from an open text stream into the (emptied) list. 0 if the
// first line is not the signature (the list is then left alone) or an
// allocation fails (the items read so far stay); 1 at the end of the stream.
// The end of the stream also ends an item cut short.
int TextureGroupParse(std::FILE* file, TextureGroup* group);

// What a group file's header says of its writing.
struct TextureFileStamp {
  int writeable;           // 1 in a file written by the dialog, 0 in a primary group
  const char* dateText;    // the first 24 characters of ctime
  const char* owner;       // the machine's owner, or empty
  const char* organisation;
};

// Writes the header, every item and the closing comment; an empty group
// writes nothing at all.
void TextureGroupPrint(std::FILE* file, const TextureGroup& group, const TextureFileStamp& stamp);
