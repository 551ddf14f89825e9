// lwmotio3 textures: the items of a texture group, one line each, and the
// texture kind of lwmotio3 fill, which takes one of them.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fills/texture_file.h"
#include "fills/texture_types.h"
#include "host/cli.h"
#include "host/cli_output.h"
#include "host/cli_textures.h"
#include "host/data_folders.h"
#include "host/group_paths.h"

namespace {

constexpr char kCommand[] = "textures";

const char* TypeName(int type) {
  return type >= 0 && type < kTextureTypeCount ? TextureTypes[type].name : "(unknown type)";
}

// Reads the group, installing the primary one first if the data folder
// lacks it. 1, or 0 with error set.
int LoadGroup(const char* name, TextureGroup* group, std::string* error) {
  if (GroupIsInDataFolder(name) && HostMakeDataFolders(error) == 0) return 0;
  std::string path = GroupPath(name);
  if (TextureFileRead(path.c_str(), group) != 0) return 1;
  *error = "cannot read the texture group '" + path + "': it is missing or damaged";
  return 0;
}

bool ParseIndex(const char* text, int* index) {
  char* end = nullptr;
  long value = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || value < 0 || value > 1000000) return false;
  *index = static_cast<int>(value);
  return true;
}

}  // namespace

int CliSetTextureFill(MaterialRecord* record, int argc, char** argv, std::string* error) {
  int index = 0;
  if (argc != 2) return (*error = "texture takes a group and an item's index: GROUP.fft INDEX"), 0;
  if (!ParseIndex(argv[1], &index)) return (*error = std::string("'") + argv[1] + "' is not an index"), 0;
  TextureGroup group{};
  if (LoadGroup(argv[0], &group, error) == 0) return 0;
  int found = index < group.count;
  if (found) {
    DibRect target = record->texture.rectangle;
    record->texture = group.items[index].texture;
    record->texture.rectangle = target;
  } else {
    *error = "the group has " + std::to_string(group.count) + " items; index " + argv[1] +
             " is not one of them (lwmotio3 textures lists them)";
  }
  TextureGroupClear(&group);
  return found;
}

void CliPrintTextureFill(const MaterialRecord& record) {
  std::printf("%-8s %d %s\n", "type", record.texture.TextureType, TypeName(record.texture.TextureType));
}

int CliTextures(int argc, char** argv) {
  bool help = argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0);
  if (help) {
    std::printf("usage: lwmotio3 textures [GROUP.fft]\n\n"
                "Lists a texture group's items: index, name and type. GROUP is a file name\n"
                "in the data folder, or the path of a group file anywhere; the primary\n"
                "group %s by default. lwmotio3 fill ID texture GROUP.fft INDEX takes one.\n",
                kPrimaryTextureGroup);
    return kExitSuccess;
  }
  if (argc > 2) return CliUsage(kCommand, std::string("unexpected argument '") + argv[2] + "'");
  if (argc == 2 && argv[1][0] == '-') return CliUsage(kCommand, std::string("unknown option '") + argv[1] + "'");
  TextureGroup group{};
  std::string error;
  if (LoadGroup(argc > 1 ? argv[1] : kPrimaryTextureGroup, &group, &error) == 0) return CliFail(kCommand, error);
  for (int i = 0; i < group.count; ++i)
    std::printf("%3d  %-32s %s\n", i, group.items[i].name, TypeName(group.items[i].texture.TextureType));
  TextureGroupClear(&group);
  return CliFinishOutput(kCommand);
}
