// A stand-in host process: loads the plug-in DLL named on the command line
// and exits 0 if the load succeeded, 1 if the plug-in refused it. Built
// several times with different version records.
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: host_probe PLUGIN.dll\n");
    return 2;
  }
  HMODULE plugin = LoadLibraryA(argv[1]);
  if (plugin == nullptr) {
    std::printf("refused (error %lu)\n", GetLastError());
    return 1;
  }
  std::printf("loaded\n");
  FreeLibrary(plugin);
  return 0;
}
