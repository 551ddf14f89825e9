// A folder of the test's own, for tests that write files.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

// A folder of the test's own under the temporary directory, so that tests
// run side by side never share a file; removed with everything in it.
struct TestFolder {
  std::filesystem::path path;
  explicit TestFolder(const std::string& name) {
    std::filesystem::path base = std::filesystem::temp_directory_path();
    auto tick = static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
    for (unsigned long long suffix = tick % 1000000007;; ++suffix) {
      path = base / (name + "_" + std::to_string(suffix));
      std::error_code error;
      if (std::filesystem::create_directory(path, error) || error) break;
    }
  }
  ~TestFolder() {
    std::error_code error;
    std::filesystem::remove_all(path, error);
  }
  std::string File(const std::string& name) const { return (path / name).string(); }
};

