// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stockbook::databases {

// The settings of a connection string `Key=Value;…`. Keys compare ignoring ASCII case, and the last of several wins. A
// value may be in double or single quotes, which are doubled inside; then it may contain semicolons.
class ConnectionString {
 public:
  // Throws platform::Error that names the place of what cannot be read.
  explicit ConnectionString(std::string_view text);

  std::optional<std::string> Find(std::string_view key) const;

 private:
  std::vector<std::pair<std::string, std::string>> settings_;
};

}  // namespace stockbook::databases
