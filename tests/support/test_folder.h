// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::testing {

// The result of running a program: its exit code and its two outputs.
struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
};

// A folder of its own for a test, deleted at its end.
class TestFolder {
 public:
  TestFolder() {
    std::random_device random;
    const std::string name = "stockbook-" + std::to_string(random()) + std::to_string(random());
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(path_);
  }
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  std::string PathOf(std::string_view name) const { return (path_ / name).string(); }
  std::string Write(std::string_view name, std::string_view text) const {
    const std::string path = PathOf(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  static std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  // The names in the folder, sorted.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace stockbook::testing
