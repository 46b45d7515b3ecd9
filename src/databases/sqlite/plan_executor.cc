// SPDX-License-Identifier: MIT
#include "databases/sqlite/plan_executor.h"

#include "databases/execution/arranged_rows.h"
#include "databases/execution/row_sorter.h"
#include "databases/sqlite/arm_join.h"
#include "platform/error.h"

namespace stockbook::databases {
namespace {

std::vector<platform::Field> RunPlan(const Database& database, const StatementPlan& plan,
                                     const std::vector<ResultColumn>& columns, ArmReading reading) {
  std::vector<ColumnSink> sinks(plan.arms[0].outputs.size());
  std::vector<ArmRows> arms;
  for (const PlanArm& arm : plan.arms) {
    arms.push_back(reading == ArmReading::kJoined ? JoinArm(database, arm, sinks) : StepArm(database, arm, sinks));
  }
  return ArrangeRows(plan, columns, arms, sinks, database.interruption());
}

}  // namespace

std::optional<std::vector<platform::Field>> ExecutePlan(const Database& database, const StatementPlan& plan,
                                                        const std::vector<ResultColumn>& columns, ArmReading reading) {
  try {
    if (reading == ArmReading::kJoined) {
      try {
        return RunPlan(database, plan, columns, ArmReading::kJoined);
      } catch (const NotCovered& reason) {
        if (reason.nowhere) return std::nullopt;
      }
    }
    // A single SELECT is left to SQLite as a whole: stepping it unsorted would lose the order of its rows.
    if (!plan.distinct_union) return std::nullopt;
    return RunPlan(database, plan, columns, ArmReading::kStepped);
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
