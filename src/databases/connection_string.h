// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stockbook::databases {

// The settings of a connection string `Key=Value;…`. Keys compare ignoring ASCII case, and the last of several wins. A
// value may be in double or single quotes, which are doubled inside; then it may contain semicolons. So may a value in
// braces, as ODBC writes it; it keeps its braces.
class ConnectionString {
 public:
  using Setting = std::pair<std::string, std::string>;

  // Throws platform::Error that names the place of what cannot be read.
  explicit ConnectionString(std::string_view text);

  std::optional<std::string> Find(std::string_view key) const;
  const std::vector<Setting>& settings() const { return settings_; }

  // Gives the key the value, in the place of every value that it has.
  void Set(std::string_view key, std::string value);
  // Removes every setting that is, or may hold, a password; returns whether there was one.
  bool RemovePasswords();
  // Reads as the same settings, with quotes around the values that need them.
  std::string Text() const;

 private:
  std::vector<Setting> settings_;
};

// What a connection of the string tells as its own: the text as it is or, where it has a password, the settings without
// it. So a password is never shown, and the letters of one do not decide the dialect. Throws like ConnectionString.
std::string WithoutPassword(std::string_view connection_string);

}  // namespace stockbook::databases
