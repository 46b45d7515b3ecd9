// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "databases/dialect/statement_plan.h"
#include "databases/execution/column_sink.h"
#include "databases/execution/interruption.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::databases {

// The rows of one arm of a plan, as places in the columns under construction: the values of an output are in its sink
// from `offset` on, in the order of the table that they come from; row r takes the one at rows_of_source[source][r].
struct ArmRows {
  static constexpr size_t kConstant = SIZE_MAX;
  struct Place {
    size_t source = kConstant;
    size_t offset = 0;
  };

  size_t rows = 0;
  std::vector<std::vector<uint32_t>> rows_of_source;
  std::vector<Place> places;  // of each output
};

// The result of a plan whose arms have been read, one after the other, into `sinks`, which are used up: rows sorted by
// the keys of the plan and freed of duplicates through their places alone, and each column gathered once at the end.
// The columns are gathered on up to `threads` threads. Throws NotCovered where the order of the engine's own could
// differ.
std::vector<platform::Field> ArrangeRows(const StatementPlan& plan, const std::vector<ResultColumn>& columns,
                                         const std::vector<ArmRows>& arms, std::vector<ColumnSink>& sinks,
                                         const Interruption& interruption, size_t threads = 1);

}  // namespace stockbook::databases
