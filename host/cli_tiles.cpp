// lwmotio3 tiles: lists the tiles of a group, and adds a picture to a group
// as the tile dialog's "+" does.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "fills/matrix_group.h"
#include "host/cli.h"
#include "host/cli_output.h"
#include "host/data_folders.h"
#include "host/group_paths.h"
#include "host/image_reader.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

// The tile dialog's refusals, each on one line here.
constexpr char kTooLarge[] = "The selected image is too large to be a matrix tile.";
constexpr char kReadOnly[] =
    "This file cannot be edited or overwritten. The default matix set cannot be modified. To edit this file, save "
    "it to a new name. Hold down the Shift key and click on the + button.";

void PrintTilesUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 tiles [GROUP.mtx]            list the tiles of a group\n"
               "       lwmotio3 tiles add GROUP.mtx IMAGE    add a picture to a group as a tile\n"
               "\n"
               "GROUP is a group's file name in the data folder, or the path of a group file\n"
               "anywhere; without one, the current group (MatrixLibrary, %s by default).\n"
               "A new tile may be of any size up to 512 pixels on at least one side; adding\n"
               "to a group that does not exist makes it, and the old group is kept as\n"
               "GROUP.mtx.bak. The primary group is read-only.\n",
               kPrimaryMatrixGroup);
}

constexpr char kCommand[] = "tiles";

int UsageError(const std::string& message) { return CliUsage(kCommand, message); }
int Fail(const std::string& message) { return CliFail(kCommand, message); }

bool Exists(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file != nullptr) std::fclose(file);
  return file != nullptr;
}

// Reads the group at path into list: 0 and a message when it is missing or
// not a group.
int ReadGroup(const std::string& path, MatrixTileList* list, std::string* error) {
  if (!Exists(path)) return (*error = "no tile group at '" + path + "'"), 0;
  if (MatrixGroupRead(path.c_str(), list) == 0) return (*error = "'" + path + "' is not a tile group"), 0;
  return 1;
}

int ListTiles(const std::string& group) {
  std::string error;
  if (GroupIsInDataFolder(group) && HostMakeDataFolders(&error) == 0) return Fail(error);
  MatrixTileList list;
  if (ReadGroup(GroupPath(group), &list, &error) == 0) return Fail(error);
  int index = 0;
  for (DibHandle tile : list.tiles) {
    int width = 0, height = 0;
    DibSizeOf(tile, &width, &height);
    std::printf("%3d  %d x %d\n", index++, width, height);
  }
  MatrixTileListFree(&list);
  return CliFinishOutput(kCommand);
}

// The picture as a tile, within the size rule; null with error set.
DibHandle TileFromFile(const char* imagePath, std::string* error) {
  GdiOp drawing{};
  drawing.op = kGdiStart;
  GdiCommand(&drawing);
  DibOwner picture(ImageRead(imagePath, error));
  drawing.op = kGdiStop;
  GdiCommand(&drawing);
  if (picture == nullptr) return (*error = "cannot read '" + std::string(imagePath) + "': " + *error), nullptr;
  int width = 0, height = 0;
  DibSizeOf(picture.get(), &width, &height);
  if (MatrixTileSizeAccepted(width, height) == 0) return (*error = kTooLarge), nullptr;
  DibHandle tile = MatrixTileFromPicture(picture.get());
  if (tile == nullptr) *error = "Memory error";
  return tile;
}

// Appends and writes; a failed write puts the last version back.
int AppendTile(const std::string& path, MatrixTileList* list, DibHandle tile) {
  list->tiles.push_back(tile);
  if (MatrixGroupWrite(path.c_str(), *list, 1, std::time(nullptr)) != 0) return 0;
  std::string backup = path + ".bak";
  if (Exists(backup)) std::rename(backup.c_str(), path.c_str()); else std::remove(path.c_str());
  return Fail("Error writing file '" + path + "': " + std::strerror(errno));
}

int AddTile(const std::string& group, const char* imagePath) {
  std::string error;
  if (GroupIsInDataFolder(group) && HostMakeDataFolders(&error) == 0) return Fail(error);
  std::string path = GroupPath(group);
  MatrixTileList list;
  if (Exists(path) && ReadGroup(path, &list, &error) == 0) return Fail(error);
  if (list.writeable == 0) {
    MatrixTileListFree(&list);
    return Fail(kReadOnly);
  }
  DibHandle tile = TileFromFile(imagePath, &error);
  int status = tile != nullptr ? AppendTile(path, &list, tile) : Fail(error);
  if (status == 0) std::printf("%zu  added to %s\n", list.tiles.size() - 1, path.c_str());
  MatrixTileListFree(&list);
  return status == 0 ? CliFinishOutput(kCommand) : status;
}

}  // namespace

int CliTiles(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    PrintTilesUsage(stdout);
    return 0;
  }
  if (argc > 1 && std::strcmp(argv[1], "add") == 0) {
    if (argc != 4) return UsageError("add takes a group and a picture");
    return AddTile(argv[2], argv[3]);
  }
  if (argc > 2) return UsageError(std::string("unexpected argument '") + argv[2] + "'");
  if (argc == 2 && argv[1][0] == '-') return UsageError(std::string("unknown option '") + argv[1] + "'");
  if (argc == 2) return ListTiles(argv[1]);
  if (int status = CliLoadSettings(kCommand, ""); status != kExitSuccess) return status;  // the current group
  return ListTiles(MatrixLibrary);
}
