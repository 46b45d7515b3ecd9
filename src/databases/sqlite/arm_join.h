// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "databases/sqlite/arm_rows.h"

namespace stockbook::databases {

// Reads each table of the arm once (or, where few of its rows are needed, row by row over its index) and joins them in
// memory. Throws NotCovered where that could differ from SQLite's own join: joins on anything but whole-number keys
// that are unique among the rows needed, and expressions over more than one table. Rows come in the first table's row
// order.
ArmRows JoinArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks);

}  // namespace stockbook::databases
