// lwmotio3 render: runs the selected effect as a Build would, from the same
// settings file, and writes an animated GIF through the reference host, or
// the effect's 24-bit frames as PNG files.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "effects/effect.h"
#include "host/cli.h"
#include "host/data_folders.h"
#include "host/png_writer.h"
#include "host/reference_host.h"
#include "host/render_setup.h"
#include "plugin/build_pipeline.h"
#include "plugin/host_call.h"
#include "plugin/platform.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

struct RenderOptions {
  std::string output = "lwmotio3.gif";
  std::string ini;
  std::string effect;
  std::string text;
  bool textGiven = false;
  std::vector<std::string> assignments;
  int customPalette = 1;
  int characterSpace = 90;
  bool testRun = false;
  std::string framesDir;
};

void PrintRenderUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 render [OPTIONS]\n"
               "\n"
               "Renders the current effect as the plug-in's Build does: from the settings\n"
               "file, through the colour stages, to an animated GIF.\n"
               "\n"
               "options:\n"
               "  -o FILE.gif            write the animation here (default lwmotio3.gif)\n"
               "  --ini FILE             read the settings from FILE instead of the user's\n"
               "                         LWMOTIO3.INI (lwmotio3 settings shows what is in force)\n"
               "  --effect NAME|ROW      the effect, by name or row (lwmotio3 effects lists them)\n"
               "  --text TEXT            the text, in UTF-8; it must fit Windows-1252\n"
               "  --set KEY=VALUE        set any setting, as a line of the settings file would;\n"
               "                         may be given many times\n"
               "  --custom-palette on|off  compute one palette from all frames (default on)\n"
               "  --character-space N    letter spacing in per cent, 50 to 150 (default 90)\n"
               "  --test                 run as the Test button does (host code 5)\n"
               "  --frames-dir DIR       write the effect's 24-bit frames as PNG files to DIR,\n"
               "                         with index.txt listing each file and its delay, and\n"
               "                         no GIF\n"
               "  --help                 show this text\n"
               "\n"
               "Delays are in hundredths of a second. Fills come from the Material files of\n"
               "the data folder, as in the plug-in.\n");
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "lwmotio3 render: %s\n", message.c_str());
  return 1;
}

int UsageError(const std::string& message) {
  std::fprintf(stderr, "lwmotio3 render: %s (see lwmotio3 render --help)\n", message.c_str());
  return 2;
}

bool ParseOnOff(const char* text, int* value) {
  if (std::strcmp(text, "on") == 0) return (*value = 1), true;
  if (std::strcmp(text, "off") == 0) return (*value = 0), true;
  return false;
}

bool ParseCharacterSpace(const char* text, int* value) {
  char* end = nullptr;
  long number = std::strtol(text, &end, 10);
  if (*text == '\0' || *end != '\0' || number < 50 || number > 150) return false;
  *value = static_cast<int>(number);
  return true;
}

bool TakesValue(const std::string& option) {
  for (const char* known : {"-o", "--ini", "--effect", "--text", "--set", "--frames-dir", "--custom-palette",
                            "--character-space"})
    if (option == known) return true;
  return false;
}

// 0 when parsed; otherwise the exit code (the message is out already).
int ParseRenderOptions(int argc, char** argv, RenderOptions* options, bool* help) {
  for (int index = 1; index < argc; ++index) {
    std::string option = argv[index];
    if (option == "--help" || option == "-h") {
      *help = true;
      return 0;
    }
    if (option == "--test") {
      options->testRun = true;
      continue;
    }
    if (!TakesValue(option)) return UsageError("unknown option '" + option + "'");
    if (index + 1 >= argc) return UsageError(option + " needs a value");
    const char* value = argv[++index];
    if (option == "-o") options->output = value;
    else if (option == "--ini") options->ini = value;
    else if (option == "--effect") options->effect = value;
    else if (option == "--text") options->text = value, options->textGiven = true;
    else if (option == "--set") options->assignments.emplace_back(value);
    else if (option == "--frames-dir") options->framesDir = value;
    else if (option == "--custom-palette" && !ParseOnOff(value, &options->customPalette))
      return UsageError("--custom-palette takes on or off");
    else if (option == "--character-space" && !ParseCharacterSpace(value, &options->characterSpace))
      return UsageError("--character-space takes a whole number from 50 to 150");
  }
  return 0;
}

// Settings as the dialog would start with them, then the command line's.
int ApplySettings(const RenderOptions& options) {
  SettingsUseFile(options.ini.empty() ? nullptr : options.ini.c_str());
  errno = 0;
  if (!SettingsLoadFile(SettingsFilePath(), PlatformShiftHeld()) && !options.ini.empty())
    return Fail("cannot read '" + options.ini + "': " + (errno != 0 ? std::strerror(errno) : "read error"));
  std::string error;
  for (const std::string& assignment : options.assignments)
    if (!RenderSetSetting(assignment, &error)) return Fail(error);
  if (!options.effect.empty()) {
    int row = RenderEffectIndex(options.effect);
    if (row < 0) return Fail("no effect '" + options.effect + "' (lwmotio3 effects lists them)");
    SettingStore(SettingFind("MainEffect"), std::to_string(row).c_str());
  }
  if (options.textGiven && !RenderSetText(options.text, &error)) return Fail(error);
  if (MainText[0] == '\0') return Fail("the text is empty");
  if (!HostMakeDataFolders(&error)) return Fail(error);
  return 0;
}

const EffectEntry* CurrentEffect(const Controls* dialog) {
  int row = ControlSelection(dialog, kEffectListControl);
  if (row < 0) row = 0;
  if (row >= kEffectCount) row = kEffectCount - 1;
  return &EffectTable[row];
}

std::string FramePath(const std::string& folder, int index) {
  char name[32];
  std::snprintf(name, sizeof name, "frame-%04d.png", index + 1);
  return folder + "/" + name;
}

// The effect's build callback alone, its frames written as PNG files.
int WriteFrames(const Controls* dialog, HostRecord* host, const EffectEntry& effect, const std::string& folder) {
  std::string error;
  if (!HostMakeFolder(folder, &error)) return Fail(error);
  FrameList frames{};
  EffectContext context{};
  context.dialog = dialog;
  context.frames = &frames;
  context.host = host;
  int built = effect.build(&context);
  HostProgress(host, 0, 0);
  if (built == 0 || frames.count < 1) {
    FrameListFree(&frames);
    return Fail("the effect made no frames (Memory error)");
  }
  std::string indexPath = folder + "/index.txt";
  std::FILE* index = std::fopen(indexPath.c_str(), "w");
  if (index == nullptr) {
    FrameListFree(&frames);
    return Fail("cannot write '" + indexPath + "': " + std::strerror(errno));
  }
  int status = 0;
  for (int i = 0; i < frames.count && status == 0; ++i) {
    std::string path = FramePath(folder, i);
    FrameRecord record;
    if (!FrameRecordRead(&frames, i, &record) || !PngWrite(path.c_str(), record.image))
      status = Fail("cannot write '" + path + "'");
    else
      std::fprintf(index, "%s %u\n", path.substr(folder.size() + 1).c_str(), record.delay);
  }
  if (std::fclose(index) != 0 && status == 0) status = Fail("cannot write '" + indexPath + "'");
  if (status == 0) std::fprintf(stderr, "wrote %d frames to %s\n", frames.count, folder.c_str());
  FrameListFree(&frames);
  return status;
}

// Whether the output can be written, tried before the long run: the writer
// goes through a temporary file beside the output.
int CheckWritable(const std::string& output) {
  std::string probe = output + ".tmp";
  std::FILE* file = std::fopen(probe.c_str(), "wb");
  if (file == nullptr) return Fail("cannot write '" + output + "': " + std::strerror(errno));
  std::fclose(file);
  std::remove(probe.c_str());
  return 0;
}

int WriteAnimation(const Controls* dialog, HostRecord* host, const RenderOptions& options) {
  if (int status = CheckWritable(options.output); status != 0) return status;
  HostCall(host, kHostBuildStarted);
  int complete = BuildAnimation(dialog, host, options.testRun ? 1 : 0);
  if (complete == 0 || ReferenceHostCurrent().filesWritten != 1) return Fail("no animation was written");
  return 0;
}

int RunRender(const RenderOptions& options) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  snapshot.messagesToStderr = true;
  HostRecord host = ReferenceHostRecord();
  RenderLoadDialog(&snapshot, host.hostFlags, options.customPalette, options.characterSpace, 1);
  const Controls* dialog = &snapshot.controls;
  const EffectEntry& effect = *CurrentEffect(dialog);
  int status = 0;
  if (effect.build == nullptr) {
    status = Fail(std::string("the effect '") + effect.name + "' is not built yet");
  } else {
    ReferenceHostReset(options.output, true);
    GdiOp drawing{};
    drawing.op = kGdiStart;
    GdiCommand(&drawing);
    status = options.framesDir.empty() ? WriteAnimation(dialog, &host, options)
                                       : WriteFrames(dialog, &host, effect, options.framesDir);
    drawing.op = kGdiStop;
    GdiCommand(&drawing);
  }
  SnapshotClear(&snapshot);
  return status;
}

}  // namespace

int CliRender(int argc, char** argv) {
  RenderOptions options;
  bool help = false;
  if (int status = ParseRenderOptions(argc, argv, &options, &help); status != 0) return status;
  if (help) {
    PrintRenderUsage(stdout);
    return 0;
  }
  if (int status = ApplySettings(options); status != 0) return status;
  return RunRender(options);
}
