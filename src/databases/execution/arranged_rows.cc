// SPDX-License-Identifier: MIT
#include "databases/execution/arranged_rows.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "databases/execution/row_sorter.h"

namespace stockbook::databases {
namespace {

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
  std::deque<Known> known_;
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
                                         const Interruption& interruption) {
  size_t rows = 0;
  for (const ArmRows& arm : arms) rows += arm.rows;
  if (rows > UINT32_MAX) throw NotCovered{true};
  std::vector<columns::Column> read = FinishedColumns(sinks, interruption);
  PlaceTable places(arms);
  RowSorter sorter(rows);
  for (const PlanKey& key : plan.keys) {
    interruption.Check();
    const auto direction = key.descending ? RowSorter::Direction::kDescending : RowSorter::Direction::kAscending;
    sorter.Refine({&read[key.output], places.Of(key.output)}, direction);
  }
  if (plan.distinct_union) DropDuplicates(read, plan.result_columns, interruption, sorter, places);
  std::vector<platform::Field> fields;
  std::vector<uint32_t> order(sorter.order().size());
  for (size_t index = 0; index < plan.result_columns; ++index) {
    interruption.Check();
    const std::vector<uint32_t>& at = places.Of(index);
    std::transform(sorter.order().begin(), sorter.order().end(), order.begin(), [&](uint32_t row) { return at[row]; });
    columns::Column source = std::move(read[index]);
    fields.push_back({columns[index].name, source.Gather(order)});
  }
  return fields;
}

}  // namespace stockbook::databases
