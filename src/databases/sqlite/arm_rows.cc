// SPDX-License-Identifier: MIT
#include "databases/sqlite/arm_rows.h"

#include <numeric>

namespace stockbook::databases {

ArmRows StepArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks) {
  ArmRows result;
  std::vector<ValueFeed> feeds;
  for (size_t index = 0; index < sinks.size(); ++index) {
    result.places.push_back({0, sinks[index].builder.size()});
    feeds.emplace_back(ResultFormOf(arm.outputs[index].cls)).AddTarget(sinks[index], ValueFeed::Sign::kKept);
  }
  Statement statement(database, arm.sql);
  result.rows = StepInto(statement, feeds);
  result.rows_of_source.emplace_back(result.rows);
  std::iota(result.rows_of_source[0].begin(), result.rows_of_source[0].end(), 0U);
  return result;
}

base::Value ConstantOf(const TypedSql& output) {
  const base::Value& value = *output.constant;
  if (const auto* whole = value.As<int64_t>(); whole != nullptr && output.cls == ValueClass::kReal) {
    return base::Value(static_cast<double>(*whole));
  }
  if (value.As<base::Date>() != nullptr && output.cls != ValueClass::kDate) return base::Value(value.Text());
  return value;
}

}  // namespace stockbook::databases
