// SPDX-License-Identifier: MIT
#include "databases/sqlite/plan_executor.h"

#include <algorithm>
#include <deque>

#include "databases/sqlite/arm_join.h"
#include "databases/sqlite/row_sorter.h"
#include "platform/error.h"

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

class PlanRun {
 public:
  PlanRun(const Database& database, const StatementPlan& plan, ArmReading reading)
      : interruption_(database.interruption()), plan_(plan), sinks_(plan.arms[0].outputs.size()) {
    for (const PlanArm& arm : plan.arms) {
      arms_.push_back(reading == ArmReading::kJoined ? JoinArm(database, arm, sinks_) : StepArm(database, arm, sinks_));
    }
    for (const ColumnSink& sink : sinks_) {
      if (sink.mended || sink.builder.size() > UINT32_MAX) throw NotCovered{true};
    }
  }

  std::vector<platform::Field> Finish(const std::vector<ResultColumn>& columns) {
    size_t rows = 0;
    for (const ArmRows& arm : arms_) rows += arm.rows;
    if (rows > UINT32_MAX) throw NotCovered{true};
    for (ColumnSink& sink : sinks_) {
      interruption_.Check();
      columns_.push_back(sink.builder.Finish());
    }
    sinks_.clear();
    PlaceTable places(arms_);
    RowSorter sorter(rows);
    for (const PlanKey& key : plan_.keys) {
      interruption_.Check();
      const auto direction = key.descending ? RowSorter::Direction::kDescending : RowSorter::Direction::kAscending;
      sorter.Refine({&columns_[key.output], places.Of(key.output)}, direction);
    }
    if (plan_.distinct_union) DropDuplicates(sorter, places);
    std::vector<platform::Field> fields;
    std::vector<uint32_t> order(sorter.order().size());
    for (size_t index = 0; index < plan_.result_columns; ++index) {
      interruption_.Check();
      const std::vector<uint32_t>& at = places.Of(index);
      std::transform(sorter.order().begin(), sorter.order().end(), order.begin(),
                     [&](uint32_t row) { return at[row]; });
      columns::Column source = std::move(columns_[index]);
      fields.push_back({columns[index].name, source.Gather(order)});
    }
    return fields;
  }

 private:
  // To find duplicates, a union orders rows by all their columns; rows with equal keys stay in that order.
  void DropDuplicates(RowSorter& sorter, PlaceTable& places) const {
    for (size_t index = 0; index < plan_.result_columns && sorter.HasTies(); ++index) {
      interruption_.Check();
      sorter.Refine({&columns_[index], places.Of(index)}, RowSorter::Direction::kAscending);
    }
    sorter.DropTied();
  }

  const Interruption& interruption_;
  const StatementPlan& plan_;
  std::vector<ColumnSink> sinks_;
  std::vector<ArmRows> arms_;
  std::vector<columns::Column> columns_;
};

}  // namespace

std::optional<std::vector<platform::Field>> ExecutePlan(const Database& database, const StatementPlan& plan,
                                                        const std::vector<ResultColumn>& columns, ArmReading reading) {
  try {
    if (reading == ArmReading::kJoined) {
      try {
        return PlanRun(database, plan, ArmReading::kJoined).Finish(columns);
      } catch (const NotCovered& reason) {
        if (reason.nowhere) return std::nullopt;
      }
    }
    // A single SELECT is left to SQLite as a whole: stepping it unsorted would lose the order of its rows.
    if (!plan.distinct_union) return std::nullopt;
    return PlanRun(database, plan, ArmReading::kStepped).Finish(columns);
  } catch (const NotCovered&) {
    return std::nullopt;
  } catch (const base::ArithmeticError&) {
    // A value without a negative, say, may be in a row that the join leaves out.
    return std::nullopt;
  } catch (const platform::Error& error) {
    if (error.IsOfEngine()) throw;
    return std::nullopt;
  }
}

}  // namespace stockbook::databases
