// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <string>

#include "base/value.h"
#include "databases/dialect/typed_sql.h"
#include "platform/column.h"

namespace stockbook::databases {

// A stored value in the form that a translated expression gives it; texts keep the bytes they have.
base::Value ReadValue(sqlite3_value* stored, Form form);

// The value as a function's result, in the forms that translated statements use between functions.
void WriteValue(sqlite3_context* context, const base::Value& value);

// A column under construction from the values of stepped statements. Texts are cleaned here, and nowhere later.
class ColumnSink {
 public:
  // The value in `column` of the row that the statement stands on; negated is minus that value, as sb_negate gives it.
  enum class Sign { kKept, kNegated };
  void Append(sqlite3_stmt* row, int column, Form form, Sign sign);
  void AppendNull() { builder_.AppendNull(); }
  void AppendValue(const base::Value& value) { builder_.Append(value); }
  size_t size() const { return builder_.size(); }
  platform::Column Finish() { return builder_.Finish(); }

  // Whether a text had to be mended: then its order among the others is no longer the stored one.
  bool mended() const { return mended_; }

 private:
  void AppendKept(sqlite3_stmt* row, int column, Form form);
  void AppendText(std::string_view bytes);
  void AppendDate(std::string_view bytes);
  void AppendAmount(sqlite3_stmt* row, int column, int type);

  platform::ColumnBuilder builder_;
  bool mended_ = false;
  std::string last_date_;  // dates repeat from row to row
  base::Value last_date_value_;
};

}  // namespace stockbook::databases
