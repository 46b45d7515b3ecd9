// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "databases/dialect/statement_plan.h"
#include "databases/execution/arranged_rows.h"
#include "databases/sqlite/database.h"
#include "databases/sqlite/readers.h"
#include "databases/sqlite/value_feed.h"

namespace stockbook::databases {

// Lets SQLite run the arm as it is, unsorted.
ArmRows StepArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks);

// Reads each table of the arm once (or, where few of its rows are needed, row by row over its index) and joins them in
// memory. Throws NotCovered where that could differ from SQLite's own join: joins on anything but whole-number keys
// that are unique among the rows needed, and expressions over more than one table. Rows come in the first table's row
// order.
ArmRows JoinArm(const Readers& readers, const PlanArm& arm, std::vector<ColumnSink>& sinks);

// The value of a constant output as a result column of its class holds it.
base::Value ConstantOf(const TypedSql& output);

}  // namespace stockbook::databases
