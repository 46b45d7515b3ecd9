// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column.h"

namespace stockbook::platform {

// A named field of a result.
struct Field {
  std::string name;
  columns::Column column;
};

// The rows of one executed statement: a cursor that moves forward, and the columns as a whole. It owns its data and no
// longer needs the connection. Moving is O(1).
class STOCKBOOK_API Recordset {
 public:
  Recordset() = default;
  // Has as many records as the longest column; begins at the first.
  explicit Recordset(std::vector<Field> fields);

  // Whether there is no current record: after the last one, and from the beginning where there are none.
  bool AtEnd() const { return row_ >= rows_; }
  // Past the end, too, where it stays at the end.
  void MoveNext() { ++row_; }
  // Drops rows and fields; RecordCount is 0 then.
  void Close();
  // All of them, wherever the cursor is.
  size_t RecordCount() const { return rows_; }

  // 0 once it is closed or taken.
  size_t FieldCount() const { return fields_.size(); }
  // Whether there is a field of exactly this name.
  bool HasField(std::string_view name) const;
  // Of the current record. A name is found exactly first, then ignoring ASCII case; an unknown name or no current
  // record throws Error.
  base::Value FieldValue(std::string_view name) const;
  // By its number from 0 on; one that is not there throws Error, as no current record does.
  base::Value FieldValue(size_t index) const;

  // Rows fetched ahead by a connection that reads in portions; kept for it to read. 1 unless set.
  void SetCacheSize(int rows) { cache_size_ = rows; }
  int CacheSize() const { return cache_size_; }

  // Hands over all rows at once, those before the cursor, too; afterwards the recordset is empty.
  std::vector<Field> TakeAll();

  // Both are about what the connection had to leave out of the rows and why, each a sentence for the user; most
  // connections have nothing to say. Remarks stay when the rows are closed or taken.
  const std::vector<std::string>& Remarks() const { return remarks_; }
  void AddRemark(std::string remark) { remarks_.push_back(std::move(remark)); }

 private:
  std::vector<Field> fields_;
  std::vector<std::string> remarks_;
  size_t rows_ = 0;
  size_t row_ = 0;
  int cache_size_ = 1;
};

}  // namespace stockbook::platform
