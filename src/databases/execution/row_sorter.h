// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "stockbook/columns/column.h"

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
// otherwise O(n log n) on eight bytes at a time; it costs nothing for rows that are no longer tied. Groups of tied rows
// are ordered on up to `threads` threads.
class RowSorter {
 public:
  RowSorter(size_t rows, size_t threads);

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
  class CodeReader;
  class Refinement;

  // Parts of ties_, each with about as many rows as the others.
  std::vector<Group> PartsOfTies() const;
  size_t TiedRows() const;

  size_t threads_;
  std::vector<uint32_t> order_;
  std::vector<Group> ties_;
};

}  // namespace stockbook::databases
