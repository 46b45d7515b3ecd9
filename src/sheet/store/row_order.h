// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "sheet/store/run_tree.h"

namespace stockbook::sheet {

// Identifies a row for as long as it exists, wherever it moves: records count up from 0, inserted rows down from -1.
using RowId = int64_t;

// Row ids [first, last).
struct RowIdRange {
  RowId first = 0;
  RowId last = 0;

  bool operator==(const RowIdRange&) const = default;
};

// The order of the rows, in pieces of records and of inserted rows. Records are always in ascending order, so the same
// tree finds a row by its position and by its record. Every operation is O(log pieces); inserting or removing a row
// does not touch the others, and ids are never reused until Clear. A change for which there is no memory throws
// std::bad_alloc and changes nothing.
class RowOrder {
 public:
  int64_t Rows() const { return pieces_.size(); }
  size_t PieceCount() const { return pieces_.RunCount(); }

  RowId IdAt(int64_t row) const { return pieces_.At(row); }
  // The row of a record, or -1 when it was removed.
  int64_t RowOfRecord(int64_t record) const;
  // How many rows from `row` on are consecutive records; 0 if the row is not a record.
  int64_t RecordsFrom(int64_t row) const;

  // Makes room for a few changes of any kind but InsertBeforeEach: they need no memory then.
  void Reserve() { pieces_.Reserve(); }
  // Inserts new rows before `row`.
  void Insert(int64_t row, int64_t count);
  // One new row before each of the ascending `rows` (numbered as they are now); O(pieces + rows).
  void InsertBeforeEach(const std::vector<int64_t>& rows);
  void Remove(int64_t row, int64_t count);
  // Adds records 0 to count - 1 at the end; there must be none yet.
  void AppendRecords(int64_t count);

  // Gives rows [row, row + count) new ids, as if they had been removed and inserted.
  void Renew(int64_t row, int64_t count) {
    Remove(row, count);
    Insert(row, count);
  }

  // The ids of rows [first, last) as few ranges, in no particular order. Ranges of records may include removed records.
  std::vector<RowIdRange> IdsOf(int64_t first, int64_t last) const;
  // The ids of all rows as ascending ranges that do not touch.
  std::vector<RowIdRange> LivingIds() const;
  // Calls visit(first_row, count, first_id) piece by piece; ids of inserted rows go down within a piece.
  template <typename Visit>
  void ForEachPiece(int64_t first, int64_t last, Visit visit) const {
    pieces_.ForEach(first, last, [&](const auto& place) {
      visit(place.first, place.count, place.value);
      return true;
    });
  }

  // Every id occurs once, and records are in ascending order. O(pieces log pieces).
  bool CheckInvariants() const;
  size_t MemoryBytes() const { return pieces_.MemoryBytes(); }

 private:
  struct Traits {
    using Value = RowId;
    // The last record so far, -1 for none.
    struct Summary {
      int64_t last_record = -1;
      bool operator==(const Summary&) const = default;
    };
    static Summary Of(RowId id, int64_t count) { return {id >= 0 ? id + count - 1 : -1}; }
    static Summary Combine(const Summary& left, const Summary& right) { return right.last_record >= 0 ? right : left; }
    static RowId Advance(RowId id, int64_t offset) { return id >= 0 ? id + offset : id - offset; }
    static bool Continues(RowId id, int64_t count, RowId next) {
      return (id >= 0) == (next >= 0) && next == Advance(id, count);
    }
  };

  RunTree<Traits> pieces_;
  RowId next_inserted_ = -1;
};

}  // namespace stockbook::sheet
