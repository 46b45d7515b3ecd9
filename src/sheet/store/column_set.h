// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sheet/store/sheet_column.h"

namespace stockbook::sheet {

// The columns in their order, found by key in O(1). Moving one costs a pointer for each column that it passes.
class ColumnSet {
 public:
  int Count() const { return static_cast<int>(columns_.size()); }
  SheetColumn& At(int position) { return *columns_[static_cast<size_t>(position)]; }
  const SheetColumn& At(int position) const { return *columns_[static_cast<size_t>(position)]; }

  void SetCount(int count);
  // The first column with the key, or -1; the empty key finds none.
  int IndexOf(std::string_view key) const;
  void SetKey(int position, std::string_view key);
  void Move(int from, int to);

  // Every column knows its position, and keys find the columns that carry them.
  bool CheckInvariants() const;
  size_t MemoryBytes() const;

 private:
  struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  void Forget(const SheetColumn& column);

  std::vector<std::unique_ptr<SheetColumn>> columns_;
  std::unordered_map<std::string, std::vector<const SheetColumn*>, TextHash, std::equal_to<>> by_key_;
};

}  // namespace stockbook::sheet
