// lwmotio3 fill: shows or sets the fill of one fill control, writing the same
// Material file that the control saves when the dialog closes, so the next
// render (or the next time the dialog opens) uses it.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>

#include "effects/effect.h"
#include "fills/material.h"
#include "fills/matrix_tile.h"
#include "host/cli.h"
#include "host/cli_fill_gradient.h"
#include "host/cli_output.h"
#include "host/cli_textures.h"
#include "host/data_folders.h"
#include "host/group_paths.h"
#include "host/web_colour.h"
#include "plugin/control_table.h"
#include "plugin/settings.h"

namespace {

// One row per fill kind that the command line can set: its word, its kind,
// its arguments for the usage text, the setter (1, or 0 with error set: a
// usage error) and the printer of its own lines.
struct FillKindCommand {
  const char* word;
  std::uint32_t kind;
  const char* arguments;
  int (*set)(MaterialRecord* record, int argc, char** argv, std::string* error);
  void (*print)(const MaterialRecord& record);
};

int SetSolid(MaterialRecord* record, int argc, char** argv, std::string* error) {
  if (argc != 1) return (*error = "solid takes one colour, RRGGBB"), 0;
  if (WebColourParse(argv[0], &record->colour) == 0)
    return (*error = std::string("'") + argv[0] + "' is not a colour; write it RRGGBB, red first"), 0;
  return 1;
}

void PrintColourLine(const char* label, std::uint32_t colour) {
  char text[7];
  WebColourFormat(colour, text);
  std::printf("%-8s %s\n", label, text);
}

void PrintSolid(const MaterialRecord& record) { PrintColourLine("colour", record.colour); }

// Makes group the current tile group in the user's settings file, which was
// read before.
int SettingsMakeGroupCurrent(const char* group, std::string* error) {
  SettingStore(SettingFind("MatrixLibrary"), group);
  if (SettingsSaveFile(SettingsFilePath(), std::time(nullptr)) != 0) return 1;
  *error = std::string("cannot write the settings file '") + SettingsFilePath() + "'";
  return 0;
}

// A tile fill follows the current group, so a group of the data folder
// becomes the current one in the settings file, as the tile dialog leaves it.
int SetTile(MaterialRecord* record, int argc, char** argv, std::string* error) {
  if (argc != 2) return (*error = "tile takes a group and a tile number"), 0;
  if (!GroupIsInDataFolder(argv[0]))
    return (*error = "a tile fill takes a group of the data folder by its file name"), 0;
  char* end = nullptr;
  long index = std::strtol(argv[1], &end, 10);
  if (end == argv[1] || *end != '\0' || index < 0 || index > 0x7FFFFFFF)
    return (*error = std::string("'") + argv[1] + "' is not a tile number"), 0;
  std::string path = GroupPath(argv[0]);
  MatrixTileList list;
  if (GroupReadTiles(path, &list, error) == 0) return 0;
  MatrixTileListFree(&list);
  DibHandle tile = MatrixTileLoad(path.c_str(), static_cast<int>(index));
  if (tile == nullptr) return (*error = "'" + path + "' has no tile " + argv[1]), 0;
  MemFree(record->matrix.tile);
  record->matrix.tile = tile;
  record->matrix.index = static_cast<std::int32_t>(index);
  std::snprintf(record->matrix.path, sizeof record->matrix.path, "%s", path.c_str());
  return SettingsMakeGroupCurrent(argv[0], error);
}

void PrintTile(const MaterialRecord& record) {
  std::printf("%-8s %s\n%-8s %d\n", "group", MatrixLibrary, "tile", record.matrix.index);
}

constexpr FillKindCommand kFillKinds[] = {
    {"solid", kMaterialSimple, "RRGGBB", SetSolid, PrintSolid},
    {"gradient", kMaterialGradient, kFillGradientArguments, FillGradientSet, FillGradientPrint},
    {"texture", kMaterialTexture, "GROUP.fft INDEX", CliSetTextureFill, CliPrintTextureFill},
    {"tile", kMaterialTile, "GROUP.mtx INDEX", SetTile, PrintTile},
};

const FillKindCommand* FillKindByWord(const char* word) {
  for (const FillKindCommand& row : kFillKinds)
    if (std::strcmp(row.word, word) == 0) return &row;
  return nullptr;
}

const FillKindCommand* FillKindByKind(std::uint32_t kind) {
  for (const FillKindCommand& row : kFillKinds)
    if (row.kind == kind) return &row;
  return nullptr;
}

void PrintFillUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 fill                 list the fill controls\n"
               "       lwmotio3 fill ID              show the fill of control ID\n");
  for (const FillKindCommand& row : kFillKinds)
    std::fprintf(out, "       lwmotio3 fill ID %s %s\n", row.word, row.arguments);
  std::fprintf(out,
               "\n"
               "Sets a fill as the fill swatch of the plug-in's dialog would, writing the\n"
               "control's Material file in the data folder; later renders use it. A gradient\n"
               "bar (such as 125 or 281) takes gradient with --from, --to and --marker only,\n"
               "and keeps them in its Fountain file. With no marker a gradient has two\n"
               "colours; with markers it is the multi-colour line.\n"
               "Colours are written RRGGBB, red first: FF0000 is red.\n");
}

// The name of the effect whose panel holds control id, or "".
const char* EffectHolding(int id) {
  for (const EffectEntry& entry : EffectTable)
    for (const std::int32_t* control = entry.controls; *control != 0; ++control)
      if (*control == id) return entry.name;
  return "";
}

// The text of the label that stands after a control, or "".
const char* LabelOf(int id) {
  const ControlRow* label = ControlRowFind(id + 1);
  return label != nullptr && label->kind == kControlLabel && label->caption != nullptr ? label->caption : "";
}

bool IsFillRow(const ControlRow& row) {
  return row.subclass == kClassFillSwatch || row.subclass == kClassGradientBar;
}

int ParseControlId(const char* text, int* id) {
  char* end = nullptr;
  long value = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || value < 1 || value > 100000) return 0;
  *id = static_cast<int>(value);
  return 1;
}

int ListFillControls() {
  for (const ControlRow& row : ControlTable) {
    if (!IsFillRow(row)) continue;
    std::printf("%4u  %-20s %s\n", row.id, EffectHolding(static_cast<int>(row.id)),
                LabelOf(static_cast<int>(row.id)));
  }
  return CliFinishOutput("fill");
}

void PrintControl(int id) {
  std::printf("%-8s %d\n%-8s %s\n%-8s %s\n", "control", id, "effect", EffectHolding(id), "label", LabelOf(id));
}

void PrintFill(int id, const MaterialRecord& record, const char* path) {
  PrintControl(id);
  const FillKindCommand* kind = FillKindByKind(record.kind);
  std::printf("%-8s %s\n", "kind", kind != nullptr ? kind->word : MaterialKinds[record.kind % kMaterialKindCount].name);
  if (kind != nullptr) kind->print(record);
  std::printf("%-8s %s\n", "file", path);
}

int ShowOrSetFill(int id, int argc, char** argv) {
  const ControlRow* row = ControlRowFind(id);
  if (row == nullptr || !IsFillRow(*row))
    return FillUsageError("control " + std::to_string(id) + " is not a fill (lwmotio3 fill lists them)");
  if (row->subclass == kClassGradientBar) {
    if (argc == 0) PrintControl(id);
    return FillBarShowOrSet(id, argc, argv);
  }
  const FillKindCommand* kind = argc > 0 ? FillKindByWord(argv[0]) : nullptr;
  if (argc > 0 && kind == nullptr) return FillUsageError(std::string("unknown fill kind '") + argv[0] + "'");

  std::string error;
  if (kind != nullptr && HostMakeDataFolders(&error) == 0) return FillFail(error);
  std::string path = MaterialPath(id);
  if (path.empty()) return FillFail("no application-data folder for the fill files");
  if (int loaded = CliLoadSettings("fill", ""); loaded != kExitSuccess) return loaded;  // the current tile group
  std::unique_ptr<void, void (*)(MemHandle)> block(MaterialLoad(path.c_str(), static_cast<std::uint32_t>(row->param), 1),
                                                   MaterialRelease);
  auto* record = static_cast<MaterialRecord*>(block != nullptr ? MemLock(block.get()) : nullptr);
  if (record == nullptr) return FillFail("Memory error");
  int status = 0;
  if (kind == nullptr) {
    PrintFill(id, *record, path.c_str());
    status = CliFinishOutput("fill");
  } else if (kind->set(record, argc - 1, argv + 1, &error) == 0) {
    status = FillUsageError(error);
  } else {
    record->kind = kind->kind;
    status = FillSaveReplacing(block.get(), path, MaterialSave, &error) != 0 ? 0 : FillFail(error);
  }
  MemUnlock(block.get());
  return status;
}

}  // namespace

int CliFill(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    PrintFillUsage(stdout);
    return CliFinishOutput("fill");
  }
  if (argc == 1) return ListFillControls();
  int id = 0;
  if (ParseControlId(argv[1], &id) == 0) return FillUsageError(std::string("'") + argv[1] + "' is not a control id");
  return ShowOrSetFill(id, argc - 2, argv + 2);
}
