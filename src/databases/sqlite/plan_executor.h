// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "databases/dialect/statement_plan.h"
#include "databases/sqlite/readers.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::databases {

enum class ArmReading { kStepped, kJoined };

// Carries out a plan: the arms are read separately, without sorting; their rows are sorted and freed of duplicates
// through their places alone, and each column is gathered once at the end. Nothing when the result could differ from
// the one that SQLite gives for the whole statement, or when a value makes the statement fail, so that the caller lets
// SQLite run it: it may fail over a row that is no part of the result. Errors of the engine are thrown.
std::optional<std::vector<platform::Field>> ExecutePlan(const Readers& readers, const StatementPlan& plan,
                                                        const std::vector<ResultColumn>& columns, ArmReading reading);

}  // namespace stockbook::databases
