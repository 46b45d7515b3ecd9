// SPDX-License-Identifier: MIT
#include "databases/execution/arranged_rows.h"

#include <algorithm>
#include <deque>
#include <span>
#include <utility>

#include "databases/execution/row_sorter.h"
#include "databases/execution/side_by_side.h"

namespace stockbook::databases {
namespace {

// Gathering them takes no longer than starting a thread.
constexpr size_t kFewRows = 16384;

// The places of all rows of an output; outputs of one table share the same vector.
class PlaceTable {
 public:
  explicit PlaceTable(const std::vector<ArmRows>& arms) : arms_(arms) {}

  const std::vector<uint32_t>& Of(size_t output) {
    std::vector<std::pair<size_t, size_t>> signature;
    for (const ArmRows& arm : arms_) signature.emplace_back(arm.places[output].source, arm.places[output].offset);
    for (const auto& known : known_) {
      if (known.signature == signature) return known.places;
    }
    known_.push_back({signature, Compose(output)});
    return known_.back().places;
  }

  // Puts the rows of all places into this order.
  void Arrange(std::span<const uint32_t> order) {
    std::vector<uint32_t> arranged;
    for (Known& known : known_) {
      arranged.resize(order.size());
      std::transform(order.begin(), order.end(), arranged.begin(), [&](uint32_t row) { return known.places[row]; });
      known.places.swap(arranged);
    }
  }

 private:
  struct Known {
    std::vector<std::pair<size_t, size_t>> signature;
    std::vector<uint32_t> places;
  };

  std::vector<uint32_t> Compose(size_t output) const {
    std::vector<uint32_t> places;
    for (const ArmRows& arm : arms_) {
      const ArmRows::Place& place = arm.places[output];
      const auto offset = static_cast<uint32_t>(place.offset);
      if (place.source == ArmRows::kConstant) {
        places.insert(places.end(), arm.rows, offset);
        continue;
      }
      for (const uint32_t row : arm.rows_of_source[place.source]) places.push_back(offset + row);
    }
    return places;
  }

  const std::vector<ArmRows>& arms_;
  std::deque<Known> known_;  // what Of gave stays where it is
};

// To find duplicates, a union orders rows by all their columns; rows with equal keys stay in that order.
void DropDuplicates(const std::vector<columns::Column>& columns, size_t result_columns,
                    const Interruption& interruption, RowSorter& sorter, PlaceTable& places) {
  for (size_t index = 0; index < result_columns && sorter.HasTies(); ++index) {
    interruption.Check();
    sorter.Refine({&columns[index], places.Of(index)}, RowSorter::Direction::kAscending);
  }
  sorter.DropTied();
}

std::vector<columns::Column> FinishedColumns(std::vector<ColumnSink>& sinks, const Interruption& interruption) {
  std::vector<columns::Column> columns;
  for (ColumnSink& sink : sinks) {
    interruption.Check();
    if (sink.mended || sink.builder.size() > UINT32_MAX) throw NotCovered{true};
    columns.push_back(sink.builder.Finish());
  }
  sinks.clear();
  return columns;
}

}  // namespace

std::vector<platform::Field> ArrangeRows(const StatementPlan& plan, const std::vector<ResultColumn>& columns,
                                         const std::vector<ArmRows>& arms, std::vector<ColumnSink>& sinks,
                                         const Interruption& interruption, size_t threads) {
  size_t rows = 0;
  for (const ArmRows& arm : arms) rows += arm.rows;
  if (rows > UINT32_MAX) throw NotCovered{true};
  std::vector<columns::Column> read = FinishedColumns(sinks, interruption);
  PlaceTable places(arms);
  RowSorter sorter(rows, threads);
  for (const PlanKey& key : plan.keys) {
    interruption.Check();
    const auto direction = key.descending ? RowSorter::Direction::kDescending : RowSorter::Direction::kAscending;
    sorter.Refine({&read[key.output], places.Of(key.output)}, direction);
  }
  if (plan.distinct_union) DropDuplicates(read, plan.result_columns, interruption, sorter, places);
  std::vector<const std::vector<uint32_t>*> orders;
  for (size_t index = 0; index < plan.result_columns; ++index) orders.push_back(&places.Of(index));
  places.Arrange(sorter.order());
  std::vector<platform::Field> fields(plan.result_columns);
  const size_t workers = sorter.order().size() < kFewRows ? 1 : threads;
  RunSideBySide(fields.size(), workers, [&](size_t index, const auto&) {
    interruption.Check();
    const columns::Column source = std::move(read[index]);
    fields[index] = {columns[index].name, source.Gather(*orders[index])};
  });
  return fields;
}

}  // namespace stockbook::databases
