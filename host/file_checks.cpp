#include "host/file_checks.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

int CheckReadableFile(const std::string& path, std::string* error) {
  struct stat status {};
  const char* cause = nullptr;
  if (stat(path.c_str(), &status) != 0) cause = std::strerror(errno);
  else if (S_ISDIR(status.st_mode)) cause = "it is a folder";
  else if (!S_ISREG(status.st_mode)) cause = "it is not a regular file";
  if (cause == nullptr) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) cause = std::strerror(errno);
    else std::fclose(file);
  }
  if (cause == nullptr) return 1;
  *error = "cannot read '" + path + "': " + cause;
  return 0;
}

bool PathExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::symlink_status(path, error).type() != std::filesystem::file_type::not_found;
}

bool SameFile(const std::string& first, const std::string& second) {
  std::error_code error;
  return std::filesystem::equivalent(first, second, error) && !error;
}

bool NamesOtherImageFormat(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const char* other : {".png", ".apng", ".jpg", ".jpeg", ".bmp", ".webp", ".tif", ".tiff", ".avif", ".mp4",
                            ".webm", ".ico"})
    if (extension == other) return true;
  return false;
}
