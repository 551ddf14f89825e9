// lwhost: loads the plug-in, shows its name, runs its dialog and writes what
// a Build hands over as an animated GIF. At the end it prints the host codes
// it received and the plug-in's result.
//
//   lwhost [--plugin PATH] [--out FILE.gif] [--flags N] [--plain]

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "host/data_folders.h"
#include "host/lwhost/lwhost.h"
#include "host/reference_host.h"

namespace {

using GetPluginParamsEntry = int (*)(PluginParams*);
using DoBuildEntry = int (*)(HWND, HostRecord*);

struct HostOptions {
  std::string plugin;
  std::string out = "lwmotio3.gif";
  unsigned flags = kHostFlagPaletteFormat;  // a GIF-like target by default
  bool plain = false;                        // images written as handed over, not optimised
};

// The plug-in next to this program.
std::string DefaultPluginPath() {
  char path[MAX_PATH];
  DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
  std::string folder(path, length);
  std::size_t slash = folder.find_last_of("\\/");
  return (slash == std::string::npos ? std::string() : folder.substr(0, slash + 1)) + "lwmotio3.dll";
}

int Usage(const char* problem) {
  std::fprintf(stderr, "lwhost: %s\nusage: lwhost [--plugin PATH] [--out FILE.gif] [--flags N] [--plain]\n", problem);
  return 2;
}

// 0 when parsed, else the exit code.
int ParseOptions(int argc, char** argv, HostOptions* options) {
  for (int index = 1; index < argc; ++index) {
    std::string option = argv[index];
    if (option == "--plain") {
      options->plain = true;
      continue;
    }
    if (index + 1 >= argc) return Usage(("missing value after " + option).c_str());
    const char* value = argv[++index];
    if (option == "--plugin") options->plugin = value;
    else if (option == "--out") options->out = value;
    else if (option == "--flags") options->flags = static_cast<unsigned>(std::strtoul(value, nullptr, 0));
    else return Usage(("unknown option " + option).c_str());
  }
  if (options->plugin.empty()) options->plugin = DefaultPluginPath();
  return 0;
}

void PrintCodes() {
  std::printf("codes:");
  for (std::uint32_t code : ReferenceHostCurrent().codes) std::printf(" %u", code);
  std::printf("\nfiles written: %d\n", ReferenceHostCurrent().filesWritten);
}

}  // namespace

int main(int argc, char** argv) {
  HostOptions options;
  if (int failed = ParseOptions(argc, argv, &options)) return failed;

  std::string folderError;
  if (!HostMakeDataFolders(&folderError)) std::fprintf(stderr, "lwhost: %s\n", folderError.c_str());
  HMODULE plugin = LoadLibraryA(options.plugin.c_str());
  if (plugin == nullptr) {
    std::fprintf(stderr, "lwhost: cannot load %s (error %lu)\n", options.plugin.c_str(), GetLastError());
    return 1;
  }
  auto describe = reinterpret_cast<GetPluginParamsEntry>(
      reinterpret_cast<void*>(GetProcAddress(plugin, "PLUGIN16GetPluginParams")));
  auto build = reinterpret_cast<DoBuildEntry>(reinterpret_cast<void*>(GetProcAddress(plugin, "PLUGIN16DoBuild")));
  if (describe == nullptr || build == nullptr) {
    std::fprintf(stderr, "lwhost: %s is not a plug-in of this host\n", options.plugin.c_str());
    return 1;
  }
  PluginParams params{};
  params.size = sizeof params;
  describe(&params);
  char name[sizeof params.displayName + 1] = {};
  std::memcpy(name, params.displayName, sizeof params.displayName);
  std::printf("plugin: %s\n", name);

  HostWindow window{};
  if (!HostWindowCreate(GetModuleHandleA(nullptr), name, &window)) return 1;
  LwHostUseWindow(&window);
  ReferenceHostReset(options.out, false);
  ReferenceHostCurrent().plainOutput = options.plain;

  HostRecord host = ReferenceHostRecord();
  host.callback = LwHostCallback;
  host.hostFlags = static_cast<std::uint8_t>(options.flags);
  int result = build(window.frame, &host);

  std::printf("result: %d\n", result);
  PrintCodes();
  std::fflush(stdout);
  LwHostUseWindow(nullptr);
  DestroyWindow(window.frame);
  FreeLibrary(plugin);
  return 0;
}
