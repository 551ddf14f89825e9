#include "tests/fuzz/fuzz_input.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct FuzzFolder {
  std::string folder;
  std::string input;
  std::string output;

  FuzzFolder() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr && base[0] != '\0' ? base : "/tmp") + "/lw_fuzz_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    folder = pattern;
    input = folder + "/input";
    output = folder + "/output";
  }
  ~FuzzFolder() {
    std::remove(input.c_str());
    std::remove(output.c_str());
    rmdir(folder.c_str());
  }
};

FuzzFolder& Folder() {
  static FuzzFolder folder;
  return folder;
}

}  // namespace

const char* FuzzInputFile(const std::uint8_t* data, std::size_t size) {
  std::FILE* file = std::fopen(Folder().input.c_str(), "wb");
  if (file == nullptr || std::fwrite(data, 1, size, file) != size || std::fclose(file) != 0) std::abort();
  return Folder().input.c_str();
}

const char* FuzzOutputFile() { return Folder().output.c_str(); }
