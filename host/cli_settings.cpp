// lwmotio3 settings: the settings a render will use, printed in the
// configuration file's own format. Also the loading of the settings that
// every command shares.
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "host/cli.h"
#include "host/cli_output.h"
#include "host/cp1252.h"
#include "host/file_checks.h"
#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

constexpr const char* kSettingsUsage =
    "usage: lwmotio3 settings [--ini FILE] [--quiet]\n"
    "\n"
    "Prints the effective settings as LWMOTIO3.INI holds them: the header and\n"
    "one \"key = value\" line per setting, compiled-in defaults where the file\n"
    "says nothing. On a terminal the text is shown in UTF-8; redirected, the\n"
    "output keeps the file's own Windows-1252 bytes, ready for --ini.\n"
    "\n"
    "options:\n"
    "  --ini FILE   read FILE instead of the user's LWMOTIO3.INI\n"
    "  -q, --quiet  no warnings\n"
    "  --help       show this text\n";

// The file's text as it would be written, in UTF-8 for a terminal.
int PrintSettings() {
  if (isatty(fileno(stdout)) == 0) {
    SettingsWrite(stdout, std::time(nullptr));
    return CliFinishOutput("settings");
  }
  std::FILE* buffer = std::tmpfile();
  if (buffer == nullptr) return CliFail("settings", "cannot make a temporary file");
  SettingsWrite(buffer, std::time(nullptr));
  std::rewind(buffer);
  std::string text;
  char chunk[4096];
  for (std::size_t got; (got = std::fread(chunk, 1, sizeof chunk, buffer)) > 0;) text.append(chunk, got);
  std::fclose(buffer);
  std::fputs(CodePageToUtf8(text).c_str(), stdout);
  return CliFinishOutput("settings");
}

}  // namespace

int CliLoadSettings(const char* command, const std::string& explicitFile) {
  SettingsUseFile(explicitFile.empty() ? nullptr : explicitFile.c_str());
  std::string path = SettingsFilePath();
  std::string error;
  if (!explicitFile.empty()) {
    if (!CheckReadableFile(path, &error) || !SettingsLoadFile(path.c_str(), PlatformShiftHeld()))
      return CliFail(command, error.empty() ? "cannot read '" + path + "'" : error);
    return kExitSuccess;
  }
  if (path.empty()) {
    CliWarn(command, "the user's application-data folder cannot be found; the compiled-in defaults apply");
    return kExitSuccess;
  }
  if (!CheckReadableFile(path, &error)) {
    // No file yet is the usual first run; any other reason is worth a word.
    if (PathExists(path)) CliWarn(command, error + "; the compiled-in defaults apply");
    return kExitSuccess;
  }
  if (!SettingsLoadFile(path.c_str(), PlatformShiftHeld())) {
    SettingsReset();
    CliWarn(command, "cannot read '" + path + "'; the compiled-in defaults apply");
  }
  return kExitSuccess;
}

int CliSettings(int argc, char** argv) {
  std::string explicitFile;
  for (int index = 1; index < argc; ++index) {
    std::string option = argv[index];
    if (option == "--help" || option == "-h") {
      std::fputs(kSettingsUsage, stdout);
      return CliFinishOutput("settings");
    }
    if (option == "-q" || option == "--quiet") {
      CliSetQuiet(true);
    } else if (option == "--ini") {
      if (index + 1 >= argc) return CliUsage("settings", "--ini needs a file name");
      explicitFile = argv[++index];
    } else if (option.size() > 1 && option[0] == '-') {
      return CliUsage("settings", "unknown option '" + option + "'");
    } else {
      return CliUsage("settings", "unexpected argument '" + option + "'");
    }
  }
  if (int status = CliLoadSettings("settings", explicitFile); status != kExitSuccess) return status;
  return PrintSettings();
}
