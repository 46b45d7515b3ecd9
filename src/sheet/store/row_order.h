// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "sheet/store/run_tree.h"

namespace stockbook::sheet {

// What a row is, for as long as it lives and wherever it stands: a record from 0 on, or an inserted row from -1
// downwards.
using RowId = int64_t;

// Row ids [first, last).
struct RowIdRange {
  RowId first = 0;
  RowId last = 0;

  bool operator==(const RowIdRange&) const = default;
};

// The order of the rows: pieces of records and of inserted rows. Records always stand in ascending order, so a record
// is found by the same tree as a row. Every operation is O(log pieces); a row that is inserted or removed costs the
// others nothing, and ids are never used twice until Clear.
class RowOrder {
 public:
  int64_t Rows() const { return pieces_.size(); }
  size_t PieceCount() const { return pieces_.RunCount(); }

  RowId IdAt(int64_t row) const { return pieces_.At(row); }
  // The row of a record, or -1 when it was removed.
  int64_t RowOfRecord(int64_t record) const;
  // How many rows from `row` on are records that follow each other; 0 where the row is no record.
  int64_t RecordsFrom(int64_t row) const;

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

  // The ids of rows [first, last) as few ranges in no particular order; record ranges may reach over removed records.
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

  // Every id stands once, records in ascending order. O(pieces log pieces).
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
