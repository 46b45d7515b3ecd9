// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_rowset.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "databases/odbc/driver_manager.h"
#include "databases/odbc/odbc_text.h"

namespace stockbook::databases {
namespace {

constexpr SQLULEN kUnknown = ~SQLULEN{0};

SQLPOINTER BoundSize(size_t number) {
  return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

OdbcCarrier CarrierOf(SQLSMALLINT sql_type) {
  switch (sql_type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return OdbcCarrier::kInteger;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return OdbcCarrier::kDouble;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return OdbcCarrier::kDigits;
    case SQL_DATE:
    case SQL_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return OdbcCarrier::kTimestamp;
    default:
      return OdbcCarrier::kText;
  }
}

SQLSMALLINT BoundType(OdbcCarrier carrier) {
  switch (carrier) {
    case OdbcCarrier::kInteger:
      return SQL_C_SBIGINT;
    case OdbcCarrier::kDouble:
      return SQL_C_DOUBLE;
    case OdbcCarrier::kDigits:
      return SQL_C_CHAR;
    case OdbcCarrier::kTimestamp:
      return SQL_C_TYPE_TIMESTAMP;
    case OdbcCarrier::kText:
      return SQL_C_WCHAR;
  }
  return SQL_C_WCHAR;
}

// Drivers call a text without a limit by many sizes, all of them large.
size_t FirstWidth(OdbcCarrier carrier, SQLULEN size) {
  constexpr SQLULEN kMostUnits = 255;
  constexpr size_t kDigits = 64;
  switch (carrier) {
    case OdbcCarrier::kInteger:
      return sizeof(int64_t);
    case OdbcCarrier::kDouble:
      return sizeof(double);
    case OdbcCarrier::kDigits:
      return kDigits;
    case OdbcCarrier::kTimestamp:
      return sizeof(SQL_TIMESTAMP_STRUCT);
    case OdbcCarrier::kText:
      break;
  }
  const SQLULEN units = size == 0 || size > kMostUnits ? kMostUnits : std::max<SQLULEN>(size, 32);
  return (units + 1) * sizeof(SQLWCHAR);
}

size_t RowsPerBlock(const std::vector<OdbcColumn>& columns) {
  constexpr size_t kBlockBytes = size_t{4} << 20;
  constexpr size_t kMostRows = 1024;
  size_t bytes = 1;
  for (const OdbcColumn& column : columns) bytes += column.width;
  return std::clamp<size_t>(kBlockBytes / bytes, 1, kMostRows);
}

size_t UnitOf(OdbcCarrier carrier) { return carrier == OdbcCarrier::kText ? sizeof(SQLWCHAR) : 1; }

}  // namespace

std::vector<OdbcColumn> DescribeColumns(const OdbcStatement& statement) {
  SQLSMALLINT count = 0;
  statement.Check(SQLNumResultCols(statement.handle(), &count));
  std::vector<OdbcColumn> columns;
  for (SQLUSMALLINT number = 1; number <= static_cast<SQLUSMALLINT>(count); ++number) {
    OdbcWideText name(256);
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    statement.Check(SQLDescribeColW(statement.handle(), number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                    &length, &type, &size, &digits, &nullable));
    OdbcColumn column;
    AppendUtf8(name.data(), std::min<size_t>(static_cast<size_t>(length), name.size() - 1), column.name);
    // Columns of SQLite hold what they hold, whatever their type: only its text is true.
    column.carrier = statement.link().info().engine == OdbcEngine::kSqlite ? OdbcCarrier::kText : CarrierOf(type);
    column.width = FirstWidth(column.carrier, size);
    columns.push_back(std::move(column));
  }
  return columns;
}

OdbcRowset::OdbcRowset(const std::vector<OdbcColumn>& columns)
    : columns_(columns), buffers_(columns.size()), capacity_(RowsPerBlock(columns)) {
  for (size_t index = 0; index < columns.size(); ++index) {
    buffers_[index].bytes.resize(columns[index].width * capacity_);
    buffers_[index].lengths.resize(capacity_);
  }
  states_.resize(capacity_);
}

void OdbcRowset::Bind(const OdbcStatement& statement) {
  const SQLHSTMT handle = statement.handle();
  // A driver that knows no blocks gives one row at a time.
  SQLULEN agreed = 1;
  if (!SQL_SUCCEEDED(SQLSetStmtAttrW(handle, SQL_ATTR_ROW_ARRAY_SIZE, BoundSize(capacity_), 0)) ||
      !SQL_SUCCEEDED(SQLGetStmtAttrW(handle, SQL_ATTR_ROW_ARRAY_SIZE, &agreed, 0, nullptr)))
    agreed = 1;
  if (agreed > capacity_ || agreed == 0) statement.Check(SQL_ERROR);
  SQLSetStmtAttrW(handle, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0);
  SQLSetStmtAttrW(handle, SQL_ATTR_ROW_STATUS_PTR, states_.data(), 0);
  for (size_t index = 0; index < columns_.size(); ++index) {
    Buffer& buffer = buffers_[index];
    statement.Check(SQLBindCol(handle, static_cast<SQLUSMALLINT>(index + 1), BoundType(columns_[index].carrier),
                               buffer.bytes.data(), static_cast<SQLLEN>(columns_[index].width), buffer.lengths.data()));
  }
}

void OdbcRowset::Fetch(const OdbcStatement& statement) {
  rows_ = 0;
  Bind(statement);
  fetched_ = kUnknown;
  std::fill(states_.begin(), states_.end(), static_cast<SQLUSMALLINT>(SQL_ROW_SUCCESS));
  const SQLRETURN code = SQLFetch(statement.handle());
  if (code == SQL_NO_DATA) return;
  statement.Check(code);
  rows_ = fetched_ == kUnknown ? 1 : std::min<size_t>(fetched_, capacity_);
  for (size_t row = 0; row < rows_; ++row) {
    if (states_[row] == SQL_ROW_ERROR) statement.Check(SQL_ERROR);
  }
  FindTooNarrow();
}

// Some drivers tell the whole length of a text that was cut off, some the room that it had, some nothing.
void OdbcRowset::FindTooNarrow() {
  wider_.reset();
  for (size_t index = 0; index < columns_.size(); ++index) {
    const OdbcColumn& column = columns_[index];
    if (column.carrier != OdbcCarrier::kText && column.carrier != OdbcCarrier::kDigits) continue;
    const auto room = static_cast<SQLLEN>(column.width - UnitOf(column.carrier));
    SQLLEN needed = 0;
    bool cut_off = false;
    for (size_t row = 0; row < rows_; ++row) {
      const SQLLEN length = buffers_[index].lengths[row];
      needed = std::max(needed, length);
      cut_off = cut_off || length == SQL_NO_TOTAL || length > room;
    }
    if (!cut_off) continue;
    if (!wider_) wider_ = columns_;
    (*wider_)[index].width = std::max(column.width * 2, static_cast<size_t>(needed) + UnitOf(column.carrier));
  }
}

const std::byte* OdbcRowset::At(size_t column, size_t row) const {
  return buffers_[column].bytes.data() + columns_[column].width * row;
}

int64_t OdbcRowset::IntegerAt(size_t column, size_t row) const {
  int64_t number = 0;
  std::memcpy(&number, At(column, row), sizeof number);
  return number;
}

double OdbcRowset::DoubleAt(size_t column, size_t row) const {
  double number = 0;
  std::memcpy(&number, At(column, row), sizeof number);
  return number;
}

std::string_view OdbcRowset::DigitsAt(size_t column, size_t row) const {
  return {reinterpret_cast<const char*>(At(column, row)), static_cast<size_t>(buffers_[column].lengths[row])};
}

std::optional<base::Date> OdbcRowset::DateAt(size_t column, size_t row) const {
  SQL_TIMESTAMP_STRUCT stamp{};
  std::memcpy(&stamp, At(column, row), sizeof stamp);
  return base::Date::FromParts({stamp.year, stamp.month, stamp.day, stamp.hour, stamp.minute, stamp.second});
}

std::span<const SQLWCHAR> OdbcRowset::TextAt(size_t column, size_t row) const {
  return {reinterpret_cast<const SQLWCHAR*>(At(column, row)),
          static_cast<size_t>(buffers_[column].lengths[row]) / sizeof(SQLWCHAR)};
}

}  // namespace stockbook::databases
