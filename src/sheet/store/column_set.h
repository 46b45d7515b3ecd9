// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sheet/store/sheet_column.h"

namespace stockbook::sheet {

// The columns in order; a key is looked up in O(1). Moving a column moves one pointer for each column it passes.
class ColumnSet {
 public:
  ColumnSet() = default;
  // Shares the loaded columns with the other one.
  ColumnSet(const ColumnSet& other);
  ColumnSet(ColumnSet&&) noexcept = default;
  ColumnSet& operator=(const ColumnSet&) = delete;
  ColumnSet& operator=(ColumnSet&&) noexcept = default;
  int Count() const { return static_cast<int>(columns_.size()); }
  SheetColumn& At(int position) { return *columns_[static_cast<size_t>(position)]; }
  const SheetColumn& At(int position) const { return *columns_[static_cast<size_t>(position)]; }

  void SetCount(int count);
  // The first column with the key, or -1. The empty key matches none.
  int IndexOf(std::string_view key) const;
  void SetKey(int position, std::string_view key);
  void Move(int from, int to);

  // Every column knows its position, and every key leads to its columns.
  bool CheckInvariants() const;
  size_t MemoryBytes() const;

 private:
  struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  void List(const SheetColumn& column, const std::string& key);
  void Forget(const SheetColumn& column);

  std::vector<std::unique_ptr<SheetColumn>> columns_;
  std::unordered_map<std::string, std::vector<const SheetColumn*>, TextHash, std::equal_to<>> by_key_;
};

}  // namespace stockbook::sheet
