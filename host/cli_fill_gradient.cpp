#include "host/cli_fill_gradient.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fills/fountain_button.h"
#include "host/cli_output.h"
#include "host/data_folders.h"
#include "host/web_colour.h"
#include "plugin/control_table.h"

const char kFillGradientArguments[] =
    "[--shape linear|conical|ellipses|rectangles]\n"
    "                                 [--angle DEG] [--centre X,Y] [--pad PCT] [--midpoint PCT]\n"
    "                                 [--from RRGGBB] [--to RRGGBB] [--marker POS:RRGGBB]...";

namespace {

constexpr const char* kShapeWords[] = {"linear", "conical", "ellipses", "rectangles"};

// What the options asked for; unset parts keep the file's values.
struct GradientOptions {
  int shape = -1;
  bool hasAngle = false, hasCentre = false, hasPad = false, hasMidpoint = false;
  int angle = 0, centreX = 0, centreY = 0, pad = 0, midpoint = 50;
  bool hasFrom = false, hasTo = false;
  std::uint32_t from = 0, to = 0;
  std::vector<std::uint32_t> markers;  // position in the top byte
  std::string planeOption;             // the first option a bare line cannot keep
};

// A whole number from minimum to maximum, all of text.
bool ParseNumber(const char* text, int minimum, int maximum, int* value) {
  char* end = nullptr;
  long number = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || number < minimum || number > maximum) return false;
  *value = static_cast<int>(number);
  return true;
}

bool ParseColour(const char* text, std::uint32_t* colour, std::string* error) {
  if (WebColourParse(text, colour) != 0) return true;
  *error = std::string("'") + text + "' is not a colour; write it RRGGBB, red first";
  return false;
}

bool ParseShape(const char* text, int* shape) {
  for (int i = 0; i < 4; ++i)
    if (std::strcmp(text, kShapeWords[i]) == 0) return (*shape = i), true;
  return false;
}

bool ParseCentre(const char* text, GradientOptions* options) {
  const char* comma = std::strchr(text, ',');
  if (comma == nullptr) return false;
  std::string x(text, comma);
  return ParseNumber(x.c_str(), -50, 50, &options->centreX) && ParseNumber(comma + 1, -50, 50, &options->centreY);
}

bool ParseMarker(const char* text, GradientOptions* options, std::string* error) {
  const char* colon = std::strchr(text, ':');
  int position = 0;
  std::uint32_t colour = 0;
  if (colon == nullptr || !ParseNumber(std::string(text, colon).c_str(), 1, 255, &position)) {
    *error = std::string("marker '") + text + "' is not POS:RRGGBB with POS from 1 to 255";
    return false;
  }
  if (!ParseColour(colon + 1, &colour, error)) return false;
  if (options->markers.size() == kFountainMaxMarkers) {
    *error = "a gradient holds at most 64 markers";
    return false;
  }
  options->markers.push_back(static_cast<std::uint32_t>(position) << 24 | colour);
  return true;
}

// One option and its value; false with error set.
bool ParseOption(const std::string& name, const char* value, GradientOptions* options, std::string* error) {
  auto range = [&](const char* what) { return (*error = name + " takes " + what + ", not '" + value + "'"), false; };
  if (name != "--from" && name != "--to" && name != "--marker" && options->planeOption.empty())
    options->planeOption = name;
  if (name == "--shape") return ParseShape(value, &options->shape) || range("linear, conical, ellipses or rectangles");
  if (name == "--angle")
    return (options->hasAngle = ParseNumber(value, -360, 360, &options->angle)) || range("degrees from -360 to 360");
  if (name == "--centre")
    return (options->hasCentre = ParseCentre(value, options)) || range("X,Y, each from -50 to 50");
  if (name == "--pad") return (options->hasPad = ParseNumber(value, 0, 45, &options->pad)) || range("0 to 45");
  if (name == "--midpoint")
    return (options->hasMidpoint = ParseNumber(value, 1, 99, &options->midpoint)) || range("1 to 99");
  if (name == "--from") return (options->hasFrom = ParseColour(value, &options->from, error));
  if (name == "--to") return (options->hasTo = ParseColour(value, &options->to, error));
  if (name == "--marker") return ParseMarker(value, options, error);
  *error = "unknown gradient option '" + name + "'";
  return false;
}

bool ParseOptions(int argc, char** argv, GradientOptions* options, std::string* error) {
  for (int i = 0; i < argc; ++i) {
    std::string name = argv[i];
    const char* value = nullptr;
    std::size_t equals = name.find('=');
    if (name.compare(0, 2, "--") == 0 && equals != std::string::npos) {
      value = argv[i] + equals + 1;
      name.resize(equals);
    } else if (i + 1 < argc) {
      value = argv[++i];
    } else {
      *error = name.compare(0, 2, "--") == 0 ? name + " needs a value" : "unknown gradient option '" + name + "'";
      return false;
    }
    if (!ParseOption(name, value, options, error)) return false;
  }
  return true;
}

// The colour line: the markers sorted in place of the old ones, and the ends.
void ApplyToLine(const GradientOptions& options, FountainRecord* line) {
  if (options.hasFrom) line->startColour = options.from;
  if (options.hasTo) line->endColour = options.to;
  std::memset(line->markers, 0, sizeof line->markers);
  std::copy(options.markers.begin(), options.markers.end(), line->markers);
  line->markerCount = static_cast<std::int32_t>(options.markers.size());
  std::qsort(line->markers, kFountainMaxMarkers, sizeof line->markers[0], FountainMarkerCompare);
}

void PrintColourLine(const char* label, std::uint32_t colour) {
  char text[7];
  WebColourFormat(colour & 0xFFFFFF, text);
  std::printf("%-8s %s\n", label, text);
}

void PrintMarkers(const FountainRecord& line) {
  for (int i = 0; i < line.markerCount && i < kFountainMaxMarkers; ++i) {
    char text[7];
    WebColourFormat(line.markers[i] & 0xFFFFFF, text);
    std::printf("%-8s %u:%s\n", "marker", line.markers[i] >> 24, text);
  }
}

}  // namespace

int FillSaveReplacing(MemHandle block, const std::string& path, int (*save)(MemHandle block, const char* path),
                      std::string* error) {
  std::string temporary = path + ".new";
  errno = 0;
  if (save(block, temporary.c_str()) != 0 && std::rename(temporary.c_str(), path.c_str()) == 0) return 1;
  *error = "cannot write '" + path + "': " + (errno != 0 ? std::strerror(errno) : "write error");
  std::remove(temporary.c_str());
  return 0;
}

int FillUsageError(const std::string& message) { return CliUsage("fill", message); }

int FillFail(const std::string& message) { return CliFail("fill", message); }

int FillGradientSet(MaterialRecord* record, int argc, char** argv, std::string* error) {
  GradientOptions options;
  if (!ParseOptions(argc, argv, &options, error)) return 0;
  FountainSpec& spec = record->gradient;
  if (options.shape >= 0) spec.shape = options.shape;
  if (options.hasAngle) spec.rotation = options.angle;
  if (options.hasCentre) spec.centreX = options.centreX, spec.centreY = options.centreY;
  if (options.hasPad) spec.edgePad = options.pad;
  if (options.hasMidpoint) spec.midpoint = options.midpoint;
  if (options.hasFrom) spec.startColour = options.from;
  if (options.hasTo) spec.endColour = options.to;
  spec.twoColour = options.markers.empty() ? 1 : 0;
  if (!options.markers.empty()) ApplyToLine(options, &spec.record);
  return 1;
}

void FillGradientPrint(const MaterialRecord& record) {
  const FountainSpec& spec = record.gradient;
  std::printf("%-8s %s\n", "shape", spec.shape >= 0 && spec.shape < 4 ? kShapeWords[spec.shape] : "linear");
  std::printf("%-8s %d\n%-8s %d,%d\n%-8s %d\n", "angle", spec.rotation, "centre", spec.centreX, spec.centreY, "pad",
              spec.edgePad);
  std::printf("%-8s %s\n", "mode", spec.twoColour != 0 ? "two-colour" : "multi-colour");
  PrintColourLine("from", spec.startColour);
  PrintColourLine("to", spec.endColour);
  if (spec.twoColour != 0) {
    std::printf("%-8s %d\n", "midpoint", spec.midpoint);
    return;
  }
  PrintColourLine("start", spec.record.startColour);
  PrintColourLine("end", spec.record.endColour);
  PrintMarkers(spec.record);
}

int FillBarShowOrSet(int id, int argc, char** argv) {
  const ControlRow* row = ControlRowFind(id);
  GradientOptions options;
  std::string error;
  if (argc > 0 && std::strcmp(argv[0], "gradient") != 0)
    return FillUsageError("control " + std::to_string(id) + " is a gradient bar; it takes only gradient");
  if (argc > 0 && !ParseOptions(argc - 1, argv + 1, &options, &error)) return FillUsageError(error);
  if (!options.planeOption.empty())
    return FillUsageError("a gradient bar keeps only colours and markers; " + options.planeOption + " does not apply");

  if (argc > 0 && HostMakeDataFolders(&error) == 0) return FillFail(error);
  std::string path = FountainPath(id);
  if (path.empty()) return FillFail("no application-data folder for the fill files");
  MemOwner block(FountainSetUp(id, row->caption, row->limit, 1));
  auto* line = static_cast<FountainRecord*>(block != nullptr ? MemLock(block.get()) : nullptr);
  if (line == nullptr) return FillFail("Memory error");
  bool looped = (line->flags & kFountainFlagLooped) != 0;
  if (argc == 0) {
    std::printf("%-8s %s\n%-8s %s\n", "kind", "gradient bar", "looped", looped ? "yes" : "no");
    PrintColourLine("start", line->startColour);
    PrintColourLine("end", line->endColour);
    PrintMarkers(*line);
    std::printf("%-8s %s\n", "file", path.c_str());
    MemUnlock(block.get());
    return CliFinishOutput("fill");
  }
  ApplyToLine(options, line);
  MemUnlock(block.get());
  if (FillSaveReplacing(block.get(), path, FountainButtonSave, &error) == 0) return FillFail(error);
  if (looped && options.markers.empty())
    std::printf("the bar is looped: it ends in its start colour, so --to shows only with markers\n");
  return CliFinishOutput("fill");
}
