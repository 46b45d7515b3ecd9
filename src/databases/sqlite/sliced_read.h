// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "databases/sqlite/readers.h"
#include "databases/sqlite/table_part.h"

namespace stockbook::databases {

// The rows of a table whose numbers are in [numbers[0], numbers[1]].
struct RowRange {
  size_t slice = 0;
  std::array<int64_t, 2> numbers{};
};

// The condition for VisitRows with the numbers of a range.
std::string RangeOf(const std::string& row_number);

// Reads a table in slices by row number, one for each reader, side by side. What comes of it is what reading one slice
// after the other would give.
class SlicedRead {
 public:
  SlicedRead(const Readers& readers, std::vector<ColumnSink>& sinks) : readers_(readers), sinks_(sinks) {}

  // Reads a range into a part, to the end.
  using ReadRange = std::function<void(const Database& database, TablePart& part, const RowRange& range,
                                       const std::atomic<bool>& failed)>;
  // Reads the rows from `first` on, or all, into the part. Slices are numbered from 0 on; there are no more than
  // readers.
  void Read(TablePart& part, std::optional<int64_t> first, const ReadRange& read);

 private:
  struct Slice {
    TablePart part;
    std::vector<ColumnSink> sinks;
  };
  std::vector<RowRange> RangesOf(const TablePart& part, std::optional<int64_t> first) const;
  std::optional<int64_t> LimitOf(const TablePart& part, const char* function) const;
  void Append(TablePart& part, std::vector<Slice>& slices);

  const Readers& readers_;
  std::vector<ColumnSink>& sinks_;
};

}  // namespace stockbook::databases
