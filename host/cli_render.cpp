// lwmotio3 render: runs the selected effect as a Build would, from the same
// settings file, and writes an animated GIF through the reference host, or
// the effect's 24-bit frames as PNG files.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "effects/effect.h"
#include "host/cli.h"
#include "host/cli_memory.h"
#include "host/cli_output.h"
#include "host/cp1252.h"
#include "host/data_folders.h"
#include "host/file_checks.h"
#include "host/font_match.h"
#include "host/frames_folder.h"
#include "host/interrupt_cleanup.h"
#include "host/png_writer.h"
#include "host/reference_host.h"
#include "host/render_setup.h"
#include "host/settings_report.h"
#include "plugin/build_pipeline.h"
#include "plugin/host_call.h"
#include "plugin/platform.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

constexpr const char* kCommand = "render";
constexpr int kBoldBox = 25;
constexpr int kItalicBox = 26;

struct RenderOptions {
  std::string output = "lwmotio3.gif";
  bool outputGiven = false;
  std::string ini;
  std::string effect;
  std::string text;
  bool textGiven = false;
  std::vector<std::string> assignments;
  int customPalette = 1;
  int characterSpace = 90;
  bool testRun = false;
  bool plain = false;
  std::string framesDir;
  bool framesDirGiven = false;
};

constexpr const char* kRenderUsage =
    "usage: lwmotio3 render [OPTIONS]\n"
    "\n"
    "Renders the current effect as the plug-in's Build does: from the settings\n"
    "file, through the colour stages, to an animated GIF.\n"
    "\n"
    "options:\n"
    "  -o FILE.gif            write the animation here (default lwmotio3.gif); never\n"
    "                         over the settings file, never to a PNG or other image name\n"
    "  --ini FILE             read the settings from FILE instead of the user's\n"
    "                         LWMOTIO3.INI (lwmotio3 settings shows what is in force)\n"
    "  --effect NAME|ROW      the effect, by name or row (lwmotio3 effects lists them)\n"
    "  --text TEXT            the text, in UTF-8; it must fit Windows-1252\n"
    "  --set KEY=VALUE        set any setting, as a line of the settings file would;\n"
    "                         text in UTF-8, as --text; may be given many times\n"
    "  --custom-palette on|off  compute one palette from all frames (default on)\n"
    "  --character-space N    letter spacing in per cent, 50 to 150 (default 90)\n"
    "  --test                 run as the Test button does (host code 5)\n"
    "  --plain                write every image whole, as the plug-in hands it over,\n"
    "                         instead of the smaller optimised file\n"
    "  --frames-dir DIR       write the effect's 24-bit frames as PNG files to DIR,\n"
    "                         a new or empty folder, with index.txt listing each\n"
    "                         file and its delay, and no GIF; on failure DIR is\n"
    "                         left as it was\n"
    "  -q, --quiet            no warnings and no status lines\n"
    "  --help                 show this text\n"
    "\n"
    "A value that its control clamps or that has no place in it (MainFontSize=500,\n"
    "a scroll direction of 9), and a font that is not installed, are used as the\n"
    "plug-in would use them, with a warning naming the setting. Status lines and\n"
    "progress are shown on a terminal only. A render whose frames will not fit in\n"
    "the machine's memory stops early and says which setting to lower. A render\n"
    "that fails, or is interrupted while it writes, leaves no partial file and\n"
    "keeps the file that was there.\n"
    "\n"
    "Delays are in hundredths of a second. Fills come from the Material files of\n"
    "the data folder, as in the plug-in. Exit status: 0 done, 1 failed, 2 wrong\n"
    "usage; every refusal is one line on stderr.\n";

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

// One option with its value; 0 when taken, else the usage refusal.
int TakeOption(const std::string& option, const char* value, RenderOptions* options) {
  std::string error;
  const SettingRow* row = nullptr;
  std::string setting;
  if (option == "-o") options->output = value, options->outputGiven = true;
  else if (option == "--ini") options->ini = value;
  else if (option == "--effect") options->effect = value;
  else if (option == "--text") options->text = value, options->textGiven = true;
  else if (option == "--frames-dir") options->framesDir = value, options->framesDirGiven = true;
  else if (option == "--set" && !RenderParseSetting(value, &row, &setting, &error)) return CliUsage(kCommand, error);
  else if (option == "--set") options->assignments.emplace_back(value);
  else if (option == "--custom-palette" && !ParseOnOff(value, &options->customPalette))
    return CliUsage(kCommand, "--custom-palette takes on or off");
  else if (option == "--character-space" && !ParseCharacterSpace(value, &options->characterSpace))
    return CliUsage(kCommand, "--character-space takes a whole number from 50 to 150");
  return 0;
}

// What the options say together, before anything is read.
int CheckOutputs(const RenderOptions& options) {
  if (options.outputGiven && options.framesDirGiven)
    return CliUsage(kCommand, "-o and --frames-dir cannot be given together");
  if (options.framesDirGiven && options.framesDir.empty()) return CliUsage(kCommand, "--frames-dir needs a folder");
  if (options.output.empty()) return CliUsage(kCommand, "-o needs a file name");
  if (NamesOtherImageFormat(options.output))
    return CliUsage(kCommand, "'" + options.output + "' is not a GIF name; for PNG frames use --frames-dir DIR");
  return 0;
}

// 0 when parsed; otherwise the exit code (the message is out already).
int ParseRenderOptions(int argc, char** argv, RenderOptions* options, bool* help) {
  for (int index = 1; index < argc; ++index) {
    std::string option = argv[index];
    if (option == "--help" || option == "-h") {
      *help = true;
      return 0;
    }
    if (option == "--test" || option == "--plain") {
      (option == "--test" ? options->testRun : options->plain) = true;
      continue;
    }
    if (option == "-q" || option == "--quiet") {
      CliSetQuiet(true);
      continue;
    }
    if (!TakesValue(option)) {
      bool isOption = option.size() > 1 && option[0] == '-';
      return CliUsage(kCommand, (isOption ? "unknown option '" : "unexpected argument '") + option + "'");
    }
    if (index + 1 >= argc) return CliUsage(kCommand, option + " needs a value");
    if (int status = TakeOption(option, argv[++index], options); status != 0) return status;
  }
  return CheckOutputs(*options);
}

// The primary groups go into the data folder, as an installer would, where
// they may be read: Background Mural always draws a tile, and a data folder
// that exists may hold tile fills. A render of plain fills leaves the
// configuration folder alone. A failure is a warning: the built-in tile
// stands in.
void InstallGroupsWhereRead() {
  constexpr int kBackgroundMuralRow = 3;
  std::error_code missing;
  bool folderExists = std::filesystem::is_directory(DataFolderPath(""), missing);
  if (static_cast<int>(MainEffect) != kBackgroundMuralRow && !folderExists) return;
  std::string error;
  if (!HostMakeDataFolders(&error)) CliWarn(kCommand, error + "; the built-in tile stands in");
}

// Settings as the dialog would start with them, then the command line's.
int ApplySettings(const RenderOptions& options) {
  if (int status = CliLoadSettings(kCommand, options.ini); status != kExitSuccess) return status;
  if (options.framesDir.empty() && SameFile(options.output, SettingsFilePath()))
    return CliUsage(kCommand, "-o '" + options.output + "' would write over the settings file");
  std::string error;
  for (const std::string& assignment : options.assignments)
    if (!RenderSetSetting(assignment, &error)) return CliFail(kCommand, error);
  if (!options.effect.empty()) {
    int row = RenderEffectIndex(options.effect);
    if (row < 0) return CliFail(kCommand, "no effect '" + options.effect + "' (lwmotio3 effects lists them)");
    SettingStore(SettingFind("MainEffect"), std::to_string(row).c_str());
  }
  if (options.textGiven && !RenderSetText(options.text, &error)) return CliFail(kCommand, error);
  if (MainText[0] == '\0') return CliFail(kCommand, "the text is empty");
  if (!options.framesDir.empty() && !FramesFolderUsable(options.framesDir, &error)) return CliFail(kCommand, error);
  InstallGroupsWhereRead();
  return kExitSuccess;
}

// Every value the dialog did not take as given, and a font drawn by another.
void WarnOfAdjustments(const Controls* dialog, int effect) {
  for (const std::string& line : SettingsAdjustments(dialog, effect)) CliWarn(kCommand, line);
  std::string used;
  if (FontFamilyFound(MainFontName, ControlChecked(dialog, kBoldBox), ControlChecked(dialog, kItalicBox), &used))
    return;
  std::string asked = CodePageToUtf8(MainFontName);
  CliWarn(kCommand, "MainFontName = " + asked + " is not installed; " +
                        (used.empty() ? std::string("another font is used") : "'" + used + "' is used"));
}

// The run's own refusal: the message the run showed (Memory error), else what.
int RunFailed(const ControlsSnapshot& snapshot, const std::string& what) {
  return CliFail(kCommand, snapshot.messages.empty() ? what : snapshot.messages.back());
}

std::string FrameName(int index) {
  char name[32];
  std::snprintf(name, sizeof name, "frame-%04d.png", index + 1);
  return name;
}

std::string WriteFailure(const std::string& path) {
  return "cannot write '" + path + "': " + (errno != 0 ? std::strerror(errno) : "write error");
}

// The frames as PNG files and their index, into the staging folder; errors
// name the files by the folder they are meant for.
int WriteFrameFiles(FrameList* frames, const std::string& staging, const std::string& folder, std::string* error) {
  std::FILE* index = std::fopen((staging + "/index.txt").c_str(), "w");
  if (index == nullptr) return (*error = WriteFailure(folder + "/index.txt")), 0;
  bool written = true;
  for (int i = 0; i < frames->count && written; ++i) {
    FrameRecord record;
    errno = 0;
    written = FrameRecordRead(frames, i, &record) && PngWrite((staging + "/" + FrameName(i)).c_str(), record.image);
    if (!written) *error = WriteFailure(folder + "/" + FrameName(i));
    else std::fprintf(index, "%s %u\n", FrameName(i).c_str(), record.delay);
  }
  errno = 0;
  if (std::fclose(index) != 0 && written) return (*error = WriteFailure(folder + "/index.txt")), 0;
  return written ? 1 : 0;
}

// The frame files into the staging folder, moved into place when complete
// and removed otherwise, also when the process is interrupted meanwhile.
int WriteStagedFrames(FrameList* frames, const std::string& staging, const std::string& folder) {
  std::string error;
  InterruptCleanupWatchFolder(staging);
  bool written = WriteFrameFiles(frames, staging, folder, &error) && FramesFolderCommit(staging, folder, &error);
  if (!written) FramesFolderAbandon(staging);
  InterruptCleanupRelease();
  return written ? kExitSuccess : CliFail(kCommand, error);
}

// The effect's build callback alone, its frames written as PNG files.
int WriteFrames(const ControlsSnapshot& snapshot, HostRecord* host, const EffectEntry& effect,
                const std::string& folder) {
  FrameList frames{};
  EffectContext context{};
  context.dialog = &snapshot.controls;
  context.frames = &frames;
  context.host = host;
  int built = effect.build(&context);
  HostProgress(host, 0, 0);
  std::string error;
  std::string staging;
  int status = kExitSuccess;
  if (built == 0 || frames.count < 1) status = RunFailed(snapshot, "the effect made no frames");
  else if (!FramesFolderBegin(folder, &staging, &error)) status = CliFail(kCommand, error);
  else status = WriteStagedFrames(&frames, staging, folder);
  if (status == kExitSuccess && CliShowsStatus())
    std::fprintf(stderr, "wrote %d frames to %s\n", frames.count, folder.c_str());
  FrameListFree(&frames);
  return status;
}

// Whether the output can be written, tried before the long run: the writer
// goes through a temporary file beside the file it replaces, unless it
// writes to standard output or to something other than a regular file.
int CheckWritable(const std::string& output) {
  std::string target = GifWriteTarget(output);
  if (target == "-")
    return isatty(fileno(stdout)) != 0 ? CliFail(kCommand, "will not write a GIF to a terminal") : kExitSuccess;
  std::error_code error;
  if (std::filesystem::exists(target, error) && !std::filesystem::is_regular_file(target, error)) return kExitSuccess;
  std::string probe = target + ".tmp";
  std::FILE* file = std::fopen(probe.c_str(), "wb");
  if (file == nullptr) return CliFail(kCommand, WriteFailure(output));
  std::fclose(file);
  std::remove(probe.c_str());
  return kExitSuccess;
}

int WriteAnimation(const ControlsSnapshot& snapshot, HostRecord* host, const RenderOptions& options) {
  if (int status = CheckWritable(options.output); status != kExitSuccess) return status;
  HostCall(host, kHostBuildStarted);
  int complete = BuildAnimation(&snapshot.controls, host, options.testRun ? 1 : 0);
  const ReferenceHost& written = ReferenceHostCurrent();
  if (written.outOfMemory) return CliFail(kCommand, "Memory error");
  if (written.writeError != 0) {
    errno = written.writeError;
    return CliFail(kCommand, WriteFailure(options.output));
  }
  if (complete == 0 || written.filesWritten != 1) return RunFailed(snapshot, "no animation was written");
  return kExitSuccess;
}

// The size of the effect's frames, as its preview draws the first of them;
// 0 by 0 if it draws none.
void FirstFrameSize(const Controls* dialog, const EffectEntry& effect, int* width, int* height) {
  *width = *height = 0;
  if (effect.preview == nullptr) return;
  EffectContext context{};
  context.dialog = dialog;
  if (effect.preview(&context) == 0 || context.previewBitmap == nullptr) return;
  DibSizeOf(context.previewBitmap, width, height);
  MemFree(context.previewBitmap);
}

int RunEffect(const ControlsSnapshot& snapshot, const RenderOptions& options, int row) {
  const EffectEntry& effect = EffectTable[row];
  HostRecord host = ReferenceHostRecord();
  host.callback = CliWatchedCallback;
  ReferenceHostReset(options.output, CliShowsStatus());
  ReferenceHostCurrent().plainOutput = options.plain;
  GdiOp drawing{};
  drawing.op = kGdiStart;
  GdiCommand(&drawing);
  int width = 0;
  int height = 0;
  FirstFrameSize(&snapshot.controls, effect, &width, &height);
  CliMemoryWatchStart(row, width, height);
  int status = options.framesDir.empty() ? WriteAnimation(snapshot, &host, options)
                                         : WriteFrames(snapshot, &host, effect, options.framesDir);
  drawing.op = kGdiStop;
  GdiCommand(&drawing);
  return status;
}

int RunRender(const RenderOptions& options) {
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  RenderLoadDialog(&snapshot, ReferenceHostRecord().hostFlags, options.customPalette, options.characterSpace, 1);
  int row = EffectRowOfSelection(ControlSelection(&snapshot.controls, kEffectListControl));
  int status = kExitSuccess;
  if (EffectTable[row].build == nullptr) {
    status = CliFail(kCommand, std::string("the effect '") + EffectTable[row].name + "' is not built yet");
  } else {
    WarnOfAdjustments(&snapshot.controls, row);
    status = RunEffect(snapshot, options, row);
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
    std::fputs(kRenderUsage, stdout);
    return CliFinishOutput(kCommand);
  }
  if (int status = ApplySettings(options); status != kExitSuccess) return status;
  return RunRender(options);
}
