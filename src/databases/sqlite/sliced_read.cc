// SPDX-License-Identifier: MIT
#include "databases/sqlite/sliced_read.h"

#include <algorithm>

#include "databases/execution/row_sorter.h"
#include "databases/execution/side_by_side.h"

namespace stockbook::databases {

std::string RangeOf(const std::string& row_number) { return row_number + " BETWEEN ?2 AND ?3"; }

std::optional<int64_t> SlicedRead::LimitOf(const TablePart& part, const char* function) const {
  Statement limit(readers_.own(), std::string("SELECT ") + function + "(" + part.source->table->row_number + ") FROM " +
                                      QuotedName(part.source->table->name));
  if (!limit.Step() || sqlite3_column_type(limit.handle(), 0) == SQLITE_NULL) return std::nullopt;
  return limit.Integer(0);
}

std::vector<RowRange> SlicedRead::RangesOf(const TablePart& part, std::optional<int64_t> first) const {
  constexpr uint64_t kFewRows = 4096;
  if (!first) first = LimitOf(part, "min");
  const auto last = LimitOf(part, "max");
  if (!first || !last || *first > *last) return {};
  const auto begin = static_cast<uint64_t>(*first);
  const uint64_t above = static_cast<uint64_t>(*last) - begin;
  const size_t count = above < kFewRows ? 1 : readers_.Join().size();
  std::vector<RowRange> ranges;
  for (size_t slice = 0; slice < count; ++slice) {
    const uint64_t from = slice == 0 ? 0 : above / count * slice + 1;
    const uint64_t to = slice + 1 == count ? above : above / count * (slice + 1);
    ranges.push_back({slice, {static_cast<int64_t>(begin + from), static_cast<int64_t>(begin + to)}});
  }
  return ranges;
}

void SlicedRead::Read(TablePart& part, std::optional<int64_t> first, const ReadRange& read) {
  const std::vector<RowRange> ranges = RangesOf(part, first);
  std::vector<Slice> others(ranges.empty() ? 0 : ranges.size() - 1);
  for (Slice& other : others) {
    other.sinks.resize(sinks_.size());
    other.part = part.WithSinks(other.sinks);
  }
  const std::vector<const Database*> databases =
      ranges.size() > 1 ? readers_.Join() : std::vector<const Database*>{&readers_.own()};
  RunSideBySide(ranges.size(), ranges.size(), [&](size_t slice, const std::atomic<bool>& failed) {
    TablePart& taking = slice == 0 ? part : others[slice - 1].part;
    read(*databases[slice], taking, ranges[slice], failed);
    taking.Flush();
  });
  Interruption& interruption = readers_.own().interruption();
  for (size_t slice = 1; slice < ranges.size(); ++slice) {
    // Texts that the slices made count as if one had made them all.
    if (!interruption.MayMake(databases[slice]->interruption().TakeMade())) throw NotCovered{true};
  }
  Append(part, others);
}

void SlicedRead::Append(TablePart& part, std::vector<Slice>& slices) {
  if (slices.empty()) return;
  std::vector<size_t> sinks;
  for (const TableRead& read : part.reads) {
    for (const TableRead::Output& output : read.outputs) sinks.push_back(output.sink);
  }
  RunSideBySide(sinks.size(), readers_.threads(), [&](size_t index, const auto&) {
    readers_.own().interruption().Check();
    ColumnSink& sink = sinks_[sinks[index]];
    for (Slice& slice : slices) {
      ColumnSink& other = slice.sinks[sinks[index]];
      sink.mended = sink.mended || other.mended;
      sink.builder.AppendColumn(other.builder.Finish());
    }
  });
  for (const Slice& slice : slices) part.AppendKeysOf(slice.part);
}

}  // namespace stockbook::databases
