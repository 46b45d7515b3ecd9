// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "columns/column.h"

namespace stockbook::databases {

// Thrown where a quick way of finding or ordering rows cannot guarantee the result that SQLite alone would give.
struct NotCovered {
  bool nowhere = false;  // no other quick way can, either
};

// A column of rows whose values are in another column: row r has the value at[r] of `column`.
struct Cells {
  const columns::Column* column = nullptr;
  std::span<const uint32_t> at;
};

// Puts rows in order key by key, in the order that SQLite gives to values: nulls, then numbers, then texts byte by
// byte. Rows that are equal so far keep their order. A key costs O(n) where it is a small range of numbers, and
// otherwise O(n log n) on eight bytes at a time; it costs nothing for rows that are no longer tied.
class RowSorter {
 public:
  explicit RowSorter(size_t rows);

  enum class Direction { kAscending, kDescending };
  // Orders tied rows by one more key. Throws NotCovered when the key mixes numbers of different kinds, or numbers and
  // texts.
  void Refine(const Cells& cells, Direction direction);

  bool HasTies() const { return !ties_.empty(); }
  // Leaves one row of each group that is still tied.
  void DropTied();
  const std::vector<uint32_t>& order() const { return order_; }

 private:
  using Group = std::pair<size_t, size_t>;  // half-open range of order_
  struct Item {
    uint64_t key;
    uint32_t row;
  };
  struct TextTask {
    Group group;
    size_t depth;
  };
  class CodeReader;
  class NumberReader;

  bool SameCell(const Group& group, const Cells& cells) const;
  void RefineNumbers(const Group& group, const Cells& cells, NumberReader& numbers, Direction direction);
  void RefineTexts(const Group& group, const Cells& cells, CodeReader& codes, Direction direction);
  void RefineTextTask(const TextTask& task, const Cells& cells, CodeReader& codes, Direction direction);
  size_t CommonPrefix(const TextTask& task, const Cells& cells, CodeReader& codes) const;
  void SortItems();
  void RadixSortItems(uint64_t lowest, int bits);
  void WriteItems(size_t begin);
  // Calls what(begin, end) for each run of two or more items with equal keys.
  template <typename What>
  void ForEqualItems(size_t begin, What what) const;
  size_t TiedRows() const;

  std::vector<uint32_t> order_;
  std::vector<Group> ties_;
  std::vector<Group> next_ties_;
  std::vector<TextTask> tasks_;
  std::vector<Item> items_;
  std::vector<Item> scratch_;
};

}  // namespace stockbook::databases
