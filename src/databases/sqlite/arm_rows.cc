// SPDX-License-Identifier: MIT
#include "databases/sqlite/arm_rows.h"

#include <numeric>

namespace stockbook::databases {

ArmRows StepArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks) {
  ArmRows result;
  for (const ColumnSink& sink : sinks) result.places.push_back({0, sink.size()});
  Statement statement(database, arm.sql);
  while (statement.Step()) {
    for (size_t index = 0; index < sinks.size(); ++index) {
      sinks[index].Append(statement.handle(), static_cast<int>(index), ResultFormOf(arm.outputs[index].cls), ColumnSink::Sign::kKept);
    }
    ++result.rows;
  }
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
