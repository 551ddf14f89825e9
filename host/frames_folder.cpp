#include "host/frames_folder.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string Reason(const std::error_code& error) { return error.message(); }

}  // namespace

int FramesFolderUsable(const std::string& folder, std::string* error) {
  std::error_code code;
  fs::file_status status = fs::status(folder, code);
  if (status.type() == fs::file_type::not_found) return 1;
  if (code) {
    *error = "cannot use '" + folder + "': " + Reason(code);
    return 0;
  }
  if (status.type() != fs::file_type::directory) {
    *error = "'" + folder + "' exists and is not a folder";
    return 0;
  }
  if (!fs::is_empty(folder, code) || code) {
    *error = code ? "cannot read the folder '" + folder + "': " + Reason(code)
                  : "the folder '" + folder + "' is not empty; give a new or empty folder";
    return 0;
  }
  return 1;
}

int FramesFolderBegin(const std::string& folder, std::string* staging, std::string* error) {
  fs::path target = fs::path(folder).lexically_normal();
  if (target.has_filename() == false) target = target.parent_path();
  fs::path parent = target.parent_path();
  std::error_code code;
  if (!parent.empty()) fs::create_directories(parent, code);
  for (int attempt = 0; !code && attempt < 1000; ++attempt) {
    fs::path candidate = target;
    candidate += ".partial-" + std::to_string(attempt);
    if (fs::create_directory(candidate, code)) {
      *staging = candidate.string();
      return 1;
    }
  }
  *error = "cannot make a folder beside '" + folder + "': " + (code ? Reason(code) : "too many left-over folders");
  return 0;
}

int FramesFolderCommit(const std::string& staging, const std::string& folder, std::string* error) {
  std::error_code code;
  fs::remove(folder, code);  // an empty folder makes way; a full one stays and fails the move
  fs::rename(staging, folder, code);
  if (!code) return 1;
  *error = "cannot move the frames to '" + folder + "': " + Reason(code);
  FramesFolderAbandon(staging);
  return 0;
}

void FramesFolderAbandon(const std::string& staging) {
  std::error_code code;
  fs::remove_all(staging, code);
}
