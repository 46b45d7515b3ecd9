// SPDX-License-Identifier: MIT
#include "sheet/store/row_order.h"

#include <algorithm>

namespace stockbook::sheet {
namespace {

// The ids in a piece.
RowIdRange RangeOf(RowId id, int64_t count) {
  return id >= 0 ? RowIdRange{id, id + count} : RowIdRange{id - count + 1, id + 1};
}

// Sorts the ranges and joins those that touch.
void Coalesce(std::vector<RowIdRange>& ranges) {
  std::sort(ranges.begin(), ranges.end(), [](const RowIdRange& a, const RowIdRange& b) { return a.first < b.first; });
  size_t kept = 0;
  for (const RowIdRange& range : ranges) {
    if (kept > 0 && ranges[kept - 1].last >= range.first) {
      ranges[kept - 1].last = std::max(ranges[kept - 1].last, range.last);
    } else {
      ranges[kept++] = range;
    }
  }
  ranges.resize(kept);
}

}  // namespace

int64_t RowOrder::RowOfRecord(int64_t record) const {
  if (record < 0) return -1;
  const int64_t row = pieces_.FindFirst([&](const Traits::Summary& sum) { return sum.last_record >= record; });
  return row < Rows() && IdAt(row) == record ? row : -1;
}

int64_t RowOrder::RecordsFrom(int64_t row) const {
  const auto piece = pieces_.RunAt(row);
  return piece.count > 0 && piece.value >= 0 ? piece.first + piece.count - row : 0;
}

void RowOrder::Insert(int64_t row, int64_t count) {
  pieces_.Insert(row, count, next_inserted_);
  next_inserted_ -= count;
}

void RowOrder::InsertBeforeEach(const std::vector<int64_t>& rows) {
  std::vector<Run<RowId>> pieces;
  pieces.reserve(PieceCount() + 2 * rows.size());
  size_t next = 0;
  int64_t first = 0;
  for (const Run<RowId>& piece : pieces_.Runs()) {
    int64_t done = 0;
    for (; next < rows.size() && rows[next] < first + piece.count; ++next) {
      const int64_t inside = rows[next] - first;
      pieces.push_back({inside - done, Traits::Advance(piece.value, done)});
      pieces.push_back({1, next_inserted_--});
      done = inside;
    }
    pieces.push_back({piece.count - done, Traits::Advance(piece.value, done)});
    first += piece.count;
  }
  for (; next < rows.size(); ++next) pieces.push_back({1, next_inserted_--});
  pieces_.Assign(std::move(pieces));
}

void RowOrder::Remove(int64_t row, int64_t count) { pieces_.Remove(row, count); }

void RowOrder::AppendRecords(int64_t count) { pieces_.Insert(Rows(), count, 0); }

std::vector<RowIdRange> RowOrder::IdsOf(int64_t first, int64_t last) const {
  std::vector<RowIdRange> ranges;
  RowIdRange records{INT64_MAX, -1};
  ForEachPiece(first, last, [&](int64_t, int64_t count, RowId id) {
    if (id >= 0) {
      records = {std::min(records.first, id), id + count};
    } else {
      ranges.push_back(RangeOf(id, count));
    }
  });
  Coalesce(ranges);
  if (records.last > records.first) ranges.push_back(records);
  return ranges;
}

std::vector<RowIdRange> RowOrder::LivingIds() const {
  std::vector<RowIdRange> ranges;
  ForEachPiece(0, Rows(), [&](int64_t, int64_t count, RowId id) { ranges.push_back(RangeOf(id, count)); });
  Coalesce(ranges);
  return ranges;
}

bool RowOrder::CheckInvariants() const {
  if (!pieces_.CheckInvariants()) return false;
  int64_t last_record = -1;
  bool ordered = true;
  ForEachPiece(0, Rows(), [&](int64_t, int64_t count, RowId id) {
    if (id < 0) {
      ordered = ordered && id - count >= next_inserted_;
      return;
    }
    ordered = ordered && id > last_record;
    last_record = id + count - 1;
  });
  int64_t living = 0;
  for (const RowIdRange& range : LivingIds()) living += range.last - range.first;
  return ordered && living == Rows();
}

}  // namespace stockbook::sheet
