// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace stockbook::databases {

// The tables and views that statements may name. What a view of such a name is made of, its author chose.
class ReadableTables {
 public:
  // The tables of an inventory that a journal reads, and those of the list: names with commas between them, "*" for
  // every table of the file.
  explicit ReadableTables(std::string_view more = {});
  static ReadableTables All() { return ReadableTables("*"); }

  // Ignoring ASCII case. SQLite's own tables never are.
  bool Contains(std::string_view name) const;
  // Their names in lower case, for an engine that looks for these alone; nullptr where every table may be read.
  const std::set<std::string, std::less<>>* Names() const { return all_ ? nullptr : &names_; }

 private:
  std::set<std::string, std::less<>> names_;  // in lower case
  bool all_ = false;
};

}  // namespace stockbook::databases
