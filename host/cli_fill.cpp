// lwmotio3 fill: shows or sets the fill of one fill control, writing the same
// Material file that the control saves when the dialog closes, so the next
// render (or the next time the dialog opens) uses it.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "effects/effect.h"
#include "fills/material.h"
#include "host/cli.h"
#include "host/cli_fill_gradient.h"
#include "host/cli_textures.h"
#include "host/data_folders.h"
#include "host/web_colour.h"
#include "plugin/control_table.h"

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

constexpr FillKindCommand kFillKinds[] = {
    {"solid", kMaterialSimple, "RRGGBB", SetSolid, PrintSolid},
    {"gradient", kMaterialGradient, kFillGradientArguments, FillGradientSet, FillGradientPrint},
    {"texture", kMaterialTexture, "GROUP.fft INDEX", CliSetTextureFill, CliPrintTextureFill},
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
  return 0;
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

// Writes beside the file and then moves over it, so a failed write leaves
// the old file as it was.
int SaveReplacing(MemHandle block, const std::string& path, std::string* error) {
  std::string temporary = path + ".new";
  if (MaterialSave(block, temporary.c_str()) == 0 || std::rename(temporary.c_str(), path.c_str()) != 0) {
    std::remove(temporary.c_str());
    return (*error = "cannot write '" + path + "'"), 0;
  }
  return 1;
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
  MemOwner block(MaterialLoad(path.c_str(), static_cast<std::uint32_t>(row->param), 1));
  auto* record = static_cast<MaterialRecord*>(block != nullptr ? MemLock(block.get()) : nullptr);
  if (record == nullptr) return FillFail("Memory error");
  int status = 0;
  if (kind == nullptr) {
    PrintFill(id, *record, path.c_str());
  } else if (kind->set(record, argc - 1, argv + 1, &error) == 0) {
    status = FillUsageError(error);
  } else {
    record->kind = kind->kind;
    status = SaveReplacing(block.get(), path, &error) != 0 ? 0 : FillFail(error);
  }
  MemUnlock(block.get());
  return status;
}

}  // namespace

int CliFill(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    PrintFillUsage(stdout);
    return 0;
  }
  if (argc == 1) return ListFillControls();
  int id = 0;
  if (ParseControlId(argv[1], &id) == 0) return FillUsageError(std::string("'") + argv[1] + "' is not a control id");
  return ShowOrSetFill(id, argc - 2, argv + 2);
}
