// SPDX-License-Identifier: MIT
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "databases/odbc/odbc_link.h"
#include "stockbook/base/date.h"

namespace stockbook::databases {

// How values of a column come from the driver: exact decimals as their digits, dates as their parts.
enum class OdbcCarrier : char { kInteger, kDouble, kDigits, kTimestamp, kText };

// A column of a result and the room for one value of it.
struct OdbcColumn {
  std::string name;
  OdbcCarrier carrier = OdbcCarrier::kText;
  size_t width = 0;  // bytes, with the zero that ends a text
};

// The columns of a statement that was run.
std::vector<OdbcColumn> DescribeColumns(const OdbcStatement& statement);

// A block of rows of a result, column by column in memory that the driver writes. Rows whose texts have no room make
// the block unusable: Fetch says so and how much there should be.
class OdbcRowset {
 public:
  explicit OdbcRowset(const std::vector<OdbcColumn>& columns);
  OdbcRowset(const OdbcRowset&) = delete;
  OdbcRowset& operator=(const OdbcRowset&) = delete;

  // Fills the block with the next rows; none means that there are no more. Throws OdbcFailure. Takes the driver's time.
  void Fetch(const OdbcStatement& statement);
  // The columns with more room, when some text had too little.
  const std::optional<std::vector<OdbcColumn>>& wider() const { return wider_; }

  size_t rows() const { return rows_; }
  const std::vector<OdbcColumn>& columns() const { return columns_; }
  bool IsNull(size_t column, size_t row) const { return buffers_[column].lengths[row] == SQL_NULL_DATA; }
  int64_t IntegerAt(size_t column, size_t row) const;
  double DoubleAt(size_t column, size_t row) const;
  std::string_view DigitsAt(size_t column, size_t row) const;
  // Nothing for parts that name no day.
  std::optional<base::Date> DateAt(size_t column, size_t row) const;
  std::span<const SQLWCHAR> TextAt(size_t column, size_t row) const;

 private:
  struct Buffer {
    std::vector<std::byte> bytes;
    std::vector<SQLLEN> lengths;
  };
  const std::byte* At(size_t column, size_t row) const;
  void Bind(const OdbcStatement& statement);
  void FindTooNarrow();

  std::vector<OdbcColumn> columns_;
  std::vector<Buffer> buffers_;
  std::vector<SQLUSMALLINT> states_;
  size_t capacity_ = 0;
  SQLULEN fetched_ = 0;
  size_t rows_ = 0;
  std::optional<std::vector<OdbcColumn>> wider_;
};

}  // namespace stockbook::databases
