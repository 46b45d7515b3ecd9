// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace stockbook::scenarios {

// One step of a scenario: its first line without the trailing colon, and the indented lines below it. Comments and
// blank lines before it are kept for rewriting the file.
struct Step {
  enum class Kind { kTitle, kDialect, kGiven, kWhen, kThen };
  Kind kind = Kind::kWhen;
  std::string head;  // after the first word
  std::vector<std::string> body;
  std::vector<std::string> leading;
};

// A scenario read from its text file. README.md in the folder describes the format.
class ScenarioFile {
 public:
  // Throws std::runtime_error that names file and line.
  explicit ScenarioFile(std::string path);

  const std::string& path() const { return path_; }
  std::string Title() const;
  // "desktop" by default.
  std::string Dialect() const;
  std::vector<Step>& steps() { return steps_; }
  void Write() const;

 private:
  std::string path_;
  std::vector<Step> steps_;
  std::vector<std::string> trailing_;
};

// A table in lines "| a | b |": the cells of every line.
using Table = std::vector<std::vector<std::string>>;
Table ParseTable(const std::vector<std::string>& lines);
// With the columns aligned; wide characters take two places.
std::vector<std::string> TableLines(const Table& table);

// Whether the lines are equal, ignoring blanks around the cells of tables.
bool SameLines(const std::vector<std::string>& left, const std::vector<std::string>& right);
// Both side by side, differing lines marked.
std::string SideBySide(const std::vector<std::string>& expected, const std::vector<std::string>& actual);

// Line breaks, tabs and carriage returns made visible.
std::string Visible(std::string_view text);
std::string Trimmed(std::string_view text);

}  // namespace stockbook::scenarios
