// SPDX-License-Identifier: MIT
#include "databases/rows/table_rows.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "databases/rows/row_names.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

bool ReadsAll(const StatementNeeds& needs, std::string_view table) {
  return std::any_of(needs.tables().begin(), needs.tables().end(), [&](const TableNeeds& of_table) {
    return of_table.all_columns && base::EqualsIgnoringCase(of_table.name, table);
  });
}

// By which a statement finds rows: one that names such a column gives an empty journal without it, or an empty balance.
constexpr std::pair<TableName, std::string_view> kFinders[] = {
    {TableName::ReceiptBills, "AccPeriod"},    {TableName::IssueBills, "AccPeriod"},
    {TableName::ReceiptLines, "BillID"},       {TableName::ReceiptLines, "pdID"},
    {TableName::IssueLines, "BillID"},         {TableName::IssueLines, "pdID"},
    {TableName::ProductClasses, "ClassCode"},  {TableName::SupplierClasses, "ClassCode"},
    {TableName::CustomerClasses, "ClassCode"}, {TableName::ProjectClasses, "ClassCode"},
    {TableName::Periods, "AccPeriod"},         {TableName::DepotBalances, "DpID"},
    {TableName::DepotBalances, "PdID"},        {TableName::DepotBalances, "AccPeriod"},
    {TableName::SupplierBalances, "ksID"},     {TableName::SupplierBalances, "pdID"},
    {TableName::SupplierBalances, "bnPeriod"}, {TableName::CustomerBalances, "ksID"},
    {TableName::CustomerBalances, "pdID"},     {TableName::CustomerBalances, "bnPeriod"},
    {TableName::ProjectBalances, "pjID"},      {TableName::ProjectBalances, "pdID"},
    {TableName::ProjectBalances, "bnPeriod"},
};

bool FindsRows(const InventoryTable& table, std::string_view column) {
  return std::any_of(std::begin(kFinders), std::end(kFinders), [&](const auto& finder) {
    return &InventoryTableOf(finder.first) == &table && finder.second == column;
  });
}

std::string Quoted(const InventoryTable& table) { return "表“" + std::string(table.name) + "”"; }

// Like what a source throws: the rows exist, and nobody knows them.
platform::Error WrongRows(const std::string& message) {
  return {"read rows", message, 0, platform::ErrorKind::kInputOutput};
}

std::string RowCount(const platform::Field& field) {
  return field.name + " 有 " + std::to_string(field.column.size()) + " 行";
}

}  // namespace

TableRows::TableRows(const MemoryDatabase& memory, TableName table, const StatementNeeds& needs,
                     Interruption& interruption)
    : memory_(memory),
      name_(table),
      table_(InventoryTableOf(table)),
      interruption_(interruption),
      copies_(table_.columns.size()),
      key_column_(table_.columns.size()) {
  const bool all = ReadsAll(needs, table_.name);
  for (const InventoryColumn& column : table_.columns) {
    if (column.type == kKeyColumn) key_column_ = needed_.size();
    needed_.push_back(all || column.type == kKeyColumn || needs.NamesColumn(std::string(column.name)));
  }
  memory.Run(CreateStatement(table_));
  const std::string sql = InsertStatement(table_);
  sqlite3_stmt* prepared = nullptr;
  memory.Check(sqlite3_prepare_v2(memory.handle(), sql.c_str(), -1, &prepared, nullptr));
  insertion_.reset(prepared);
}

void TableRows::AddColumns(std::span<const platform::Field> fields) {
  as_columns_ = true;
  std::vector<const platform::Field*> sources;
  const platform::Field* first = nullptr;
  for (size_t column = 0; column < table_.columns.size(); ++column) {
    const std::string_view name = table_.columns[column].name;
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const platform::Field& candidate) {
      return base::EqualsIgnoringCase(candidate.name, name);
    });
    sources.push_back(field == fields.end() ? nullptr : &*field);
    if (sources.back() == nullptr) {
      MissColumn(column);
      continue;
    }
    if (first == nullptr) first = &*field;
    if (field->column.size() != first->column.size()) {
      throw WrongRows(Quoted(table_) + "的字段不一样长：" + RowCount(*first) + "，" + RowCount(*field) +
                      "。请在 RowSource::Columns 中给出同样多的值。");
    }
  }
  const size_t rows = first == nullptr ? 0 : first->column.size();
  for (size_t row = 0; row < rows; ++row) {
    for (size_t column = 0; column < sources.size(); ++column) {
      if (!needed_[column] || sources[column] == nullptr) continue;
      if (table_.columns[column].type == kKeyColumn) {
        BindKey(column, row, sources[column]->column.At(row));
      } else {
        BindValue(column, sources[column]->column.At(row));
      }
    }
    Step();
  }
}

void TableRows::Collect(std::string_view column, CollectedNumbers* numbers) {
  collected_ = numbers;
  collected_column_ = 0;
  while (table_.columns[collected_column_].name != column) ++collected_column_;
}

void TableRows::MissColumn(size_t column) const {
  const InventoryColumn& missed = table_.columns[column];
  const std::string name(missed.name);
  if (missed.type == kKeyColumn)
    throw WrongRows(Quoted(table_) + "缺少键字段 " + name + "：请在 RowSource::Columns 中给出它。");
  if (needed_[column] && FindsRows(table_, name)) {
    throw WrongRows(Quoted(table_) + "缺少字段 " + name +
                    "，没有它就找不到要读的行：请在 RowSource::Columns 中给出它。");
  }
}

void TableRows::ThrowWhatWasKept() const {
  if (failure_) std::rethrow_exception(failure_);
}

void TableRows::Bind(size_t column, int64_t number) {
  if (column == key_column_) key_ = number;
  if (collected_ != nullptr && column == collected_column_) collected_->Add(number);
  if (needed_[column]) memory_.Check(sqlite3_bind_int64(insertion_.get(), static_cast<int>(column) + 1, number));
}

void TableRows::Bind(size_t column, double number) {
  if (needed_[column]) memory_.Check(sqlite3_bind_double(insertion_.get(), static_cast<int>(column) + 1, number));
}

void TableRows::BindNull(size_t column) {
  memory_.Check(sqlite3_bind_null(insertion_.get(), static_cast<int>(column) + 1));
}

// An empty text is null, as nothing is.
void TableRows::BindText(size_t column, const std::string& text) {
  if (text.empty()) {
    BindNull(column);
  } else {
    BindStored(column, text);
  }
}

void TableRows::BindStored(size_t column, const std::string& text) {
  if (!needed_[column]) return;
  memory_.Check(sqlite3_bind_text64(insertion_.get(), static_cast<int>(column) + 1, text.data(), text.size(),
                                    SQLITE_STATIC, SQLITE_UTF8));
}

void TableRows::BindValue(size_t column, const base::Value& value) {
  if (const auto* number = value.As<int64_t>()) {
    Bind(column, *number);
    return;
  }
  if (collected_ != nullptr && column == collected_column_) collected_->has_others = true;
  if (const auto* real = value.As<double>()) {
    Bind(column, *real);
  } else if (value.IsNull()) {
    BindNull(column);
  } else {
    BindStored(column, copies_[column] = value.Text());
  }
}

// The engine would give a row without a key one of its own.
void TableRows::BindKey(size_t column, size_t row, const base::Value& value) {
  const auto key = value.AsInteger();
  const bool exact = value.As<int64_t>() != nullptr || (key && value.Number() == static_cast<double>(*key));
  if (!exact) {
    throw WrongRows(Quoted(table_) + "第 " + std::to_string(row + 1) + " 行的键 " +
                    std::string(table_.columns[column].name) + " 不是整数：每一行须有自己的编号，请更正后再读入。");
  }
  Bind(column, *key);
}

void TableRows::Step() {
  if (interruption_.IsDueAfter(1)) throw interruption_.Reason("Execute");
  const int code = sqlite3_step(insertion_.get());
  if (code == SQLITE_CONSTRAINT) throw WrongRows(SameKey());
  memory_.Check(code);
  memory_.Check(sqlite3_reset(insertion_.get()));
  interruption_.CountRows(1);
}

std::string TableRows::SameKey() const {
  const RowNames names = NamesOf(name_);
  const std::string where = as_columns_ ? Quoted(table_) + "中有两行的键 " + std::string(table_.keys)
                                        : std::string(names.function) + " 给出了两行，" + std::string(names.key);
  return where + " 同为 " + std::to_string(key_) + "：每一行须有自己的编号，请更正后再读入。";
}

}  // namespace stockbook::databases
