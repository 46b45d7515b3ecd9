// SPDX-License-Identifier: MIT
#include "databases/sqlite/plan_executor.h"

#include "databases/execution/arranged_rows.h"
#include "databases/execution/free_memory.h"
#include "databases/execution/row_sorter.h"
#include "databases/sqlite/arm_join.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

// While it lives, the others of the readers may take part.
class Joined {
 public:
  explicit Joined(const Readers& readers) : readers_(readers) {}
  ~Joined() { readers_.Leave(); }
  Joined(const Joined&) = delete;
  Joined& operator=(const Joined&) = delete;

 private:
  const Readers& readers_;
};

std::vector<platform::Field> RunPlan(const Readers& readers, const StatementPlan& plan,
                                     const std::vector<ResultColumn>& columns, ArmReading reading) {
  const Joined joined(readers);
  std::vector<ColumnSink> sinks(plan.arms[0].outputs.size());
  std::vector<ArmRows> arms;
  for (const PlanArm& arm : plan.arms) {
    arms.push_back(reading == ArmReading::kJoined ? JoinArm(readers, arm, sinks) : StepArm(readers.own(), arm, sinks));
  }
  return ArrangeRows(plan, columns, arms, sinks, readers.own().interruption(), readers.threads());
}

std::optional<std::vector<platform::Field>> TryPlan(const Readers& readers, const StatementPlan& plan,
                                                    const std::vector<ResultColumn>& columns, ArmReading reading) {
  try {
    if (reading == ArmReading::kJoined) {
      try {
        return RunPlan(readers, plan, columns, ArmReading::kJoined);
      } catch (const NotCovered& reason) {
        if (reason.nowhere) return std::nullopt;
      }
    }
    // A single SELECT is left to SQLite as a whole: stepping it unsorted would lose the order of its rows.
    if (!plan.distinct_union) return std::nullopt;
    return RunPlan(readers, plan, columns, ArmReading::kStepped);
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

}  // namespace

std::optional<std::vector<platform::Field>> ExecutePlan(const Readers& readers, const StatementPlan& plan,
                                                        const std::vector<ResultColumn>& columns, ArmReading reading) {
  constexpr size_t kManyRows = 16384;
  auto fields = TryPlan(readers, plan, columns, reading);
  if (fields && !fields->empty() && fields->front().column.size() >= kManyRows) ReturnFreeMemory();
  return fields;
}

}  // namespace stockbook::databases
