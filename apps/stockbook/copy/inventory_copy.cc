// SPDX-License-Identifier: MIT
#include "stockbook/copy/inventory_copy.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "base/text.h"
#include "stockbook/inventory/inventory_rules.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr size_t kPortionRows = size_t{1} << 16;

[[noreturn]] void RefuseCopy(const std::string& sentence) { throw platform::Error("copy", sentence); }

// All rows, by their key where they have one.
std::vector<platform::Field> ReadInventoryTable(platform::Connection& source, TableName name) {
  const std::string table(InventoryTableOf(name).name);
  const std::string key(NumberKeyOf(name));
  try {
    return source.Execute("Select * From " + table + (key.empty() ? "" : " Order By " + key)).TakeAll();
  } catch (const platform::Error& error) {
    if (error.IsOfEngine()) throw;
    RefuseCopy("源库的表“" + table + "”无法读取，没有复制任何内容，请先用 stockbook doctor 检查：" + error.what());
  }
}

void NoteDifferences(TableName name, const std::vector<platform::Field>& fields, CopiedTable& copied) {
  const InventoryTable& schema = InventoryTableOf(name);
  for (const InventoryColumn& column : schema.columns) {
    if (std::none_of(fields.begin(), fields.end(),
                     [&](const platform::Field& field) { return base::EqualsIgnoringCase(field.name, column.name); }))
      copied.added.emplace_back(column.name);
  }
  for (const platform::Field& field : fields) {
    if (std::none_of(schema.columns.begin(), schema.columns.end(),
                     [&](const InventoryColumn& column) { return base::EqualsIgnoringCase(field.name, column.name); }))
      copied.extra.push_back(field.name);
  }
}

void CheckKeys(const databases::StoredTable& table, const std::vector<columns::Column>& columns) {
  for (size_t index = 0; index < table.columns.size(); ++index) {
    if (table.columns[index].name != table.key) continue;
    std::optional<int64_t> before;
    for (size_t row = 0; row < columns[index].size(); ++row) {
      const base::Value value = columns[index].At(row);
      const auto key = value.AsInteger();
      if (value.IsNull() || !key || table.columns[index].type != databases::StoredType::kWhole ||
          table.columns[index].mixed || (before && *before >= *key)) {
        RefuseCopy("源库的表“" + table.name + "”有重复、为空或不是整数的 " + table.key + "（" +
                   (value.IsNull() ? std::string("空") : value.Text()) +
                   "），没有复制任何内容，请先用 stockbook doctor 检查并改正");
      }
      before = key;
    }
  }
}

CopiedTable CopyTable(platform::Connection& source, TableName name, databases::TableWriter& target,
                      const ShowProgress& show) {
  show("读取", InventoryTableOf(name).name, 0, 0);
  std::vector<platform::Field> fields = ReadInventoryTable(source, name);
  CopiedTable copied;
  NoteDifferences(name, fields, copied);
  if (!fields.empty()) copied.rows = fields.front().column.size();
  copied.table = PlanStoredTable(name, fields);
  std::vector<columns::Column> columns;
  for (platform::Field& field : fields) columns.push_back(std::move(field.column));
  CheckKeys(copied.table, columns);
  target.Create(copied.table);
  for (size_t first = 0; first < copied.rows; first += kPortionRows) {
    show("复制", copied.table.name, first, copied.rows);
    target.Write(copied.table, columns, first, std::min(kPortionRows, copied.rows - first));
  }
  for (size_t index = 0; index < columns.size(); ++index)
    copied.digests.push_back(DigestOf(columns[index], copied.table.columns[index].type));
  return copied;
}

std::vector<databases::StoredIndex> IndexesToMake() {
  std::vector<databases::StoredIndex> indexes;
  for (const InventoryIndex& index : InventoryIndexes()) {
    const std::string table(InventoryTableOf(index.table).name);
    databases::StoredIndex made{table + "_" + std::string(index.suffix), table, {}};
    for (const std::string_view column : base::Split(index.columns, ','))
      made.columns.emplace_back(base::TrimBlanks(column));
    indexes.push_back(std::move(made));
  }
  return indexes;
}

void VerifyTable(const CopiedTable& copied, databases::TableWriter& target) {
  const std::vector<columns::Column> stored = target.ReadBack(copied.table);
  const std::string where = "核对失败：写入的表“" + copied.table.name + "”";
  constexpr const char* kEnd = "，没有保留任何内容，请检查磁盘后重试，仍然如此请报告此错误";
  if (stored.size() != copied.digests.size()) RefuseCopy(where + "的列数与源不同" + kEnd);
  for (size_t index = 0; index < stored.size(); ++index) {
    const databases::StoredColumn& column = copied.table.columns[index];
    if (stored[index].size() != copied.rows) RefuseCopy(where + "的行数与源不同" + kEnd);
    if (DigestOf(stored[index], column.type) != copied.digests[index])
      RefuseCopy(where + "的列“" + column.name + "”与源不同" + kEnd);
  }
}

}  // namespace

std::vector<CopiedTable> CopyInventory(platform::Connection& source, databases::TableWriter& target,
                                       const ShowProgress& show) {
  std::vector<CopiedTable> tables;
  {
    const std::unique_ptr<platform::Moment> moment = source.ReadAsOfOneMoment();
    for (size_t index = 0; index < kTableCount; ++index)
      tables.push_back(CopyTable(source, static_cast<TableName>(index), target, show));
  }
  show("建立索引", {}, 0, 0);
  target.Seal(IndexesToMake());
  for (const CopiedTable& copied : tables) {
    show("核对", copied.table.name, 0, copied.rows);
    VerifyTable(copied, target);
  }
  target.Commit();
  return tables;
}

}  // namespace stockbook::app
