// SPDX-License-Identifier: MIT
#include "databases/execution/translated_execution.h"

#include <new>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "databases/dialect/translation.h"
#include "databases/execution/arranged_rows.h"
#include "databases/execution/row_sorter.h"
#include "stockbook/base/money.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

// The rows of one arm, read behind those of the arms before it.
ArmRows ReadArm(const PlanArm& arm, const std::vector<ValueClass>& classes, RowReader& reader,
                std::vector<ColumnSink>& sinks) {
  ArmRows result;
  for (const ColumnSink& sink : sinks) result.places.push_back({0, sink.builder.size()});
  result.rows = reader.Read(arm.sql, classes, sinks);
  result.rows_of_source.emplace_back(result.rows);
  std::iota(result.rows_of_source[0].begin(), result.rows_of_source[0].end(), 0U);
  return result;
}

// Nothing where the order of values that are no longer as they were stored could differ.
std::optional<std::vector<platform::Field>> ReadArms(const StatementPlan& plan,
                                                     const std::vector<ResultColumn>& columns, RowReader& reader,
                                                     const Interruption& interruption) {
  std::vector<ValueClass> classes;
  for (const TypedSql& output : plan.arms[0].outputs) classes.push_back(output.cls);
  for (size_t index = 0; index < plan.result_columns; ++index) classes[index] = columns[index].cls;
  std::vector<ColumnSink> sinks(classes.size());
  std::vector<ArmRows> arms;
  for (const PlanArm& arm : plan.arms) arms.push_back(ReadArm(arm, classes, reader, sinks));
  try {
    return ArrangeRows(plan, columns, arms, sinks, interruption);
  } catch (const NotCovered&) {
    return std::nullopt;
  }
}

std::vector<platform::Field> ReadWhole(const TranslatedQuery& query, RowReader& reader) {
  std::vector<ValueClass> classes;
  for (const ResultColumn& column : query.columns) classes.push_back(column.cls);
  std::vector<ColumnSink> sinks(classes.size());
  reader.Read(query.sql, classes, sinks);
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < sinks.size(); ++index)
    fields.push_back({query.columns[index].name, sinks[index].builder.Finish()});
  return fields;
}

}  // namespace

platform::Recordset ExecuteTranslated(std::string_view statement, const Target& target, const TableFinder& find_table,
                                      RowReader& reader, const Interruption& interruption) {
  try {
    Translation translation(statement, target, find_table);
    if (translation.plan()) {
      if (auto fields = ReadArms(*translation.plan(), translation.columns(), reader, interruption))
        return platform::Recordset(std::move(*fields));
    }
    return platform::Recordset(ReadWhole(translation.Whole(), reader));
  } catch (const base::ArithmeticError& error) {
    throw platform::Error("Execute", error.what());
  } catch (const std::bad_alloc&) {
    throw platform::Error("Execute", "内存不足，结果的行数太多，请缩小查询的范围", 0, platform::ErrorKind::kMemory);
  }
}

}  // namespace stockbook::databases
