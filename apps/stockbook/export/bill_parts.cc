// SPDX-License-Identifier: MIT
#include "stockbook/export/bill_parts.h"

#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

// Without the word and the blank behind it, where the text begins so.
std::string_view WithoutWord(std::string_view text, std::string_view word) {
  if (word.empty() || !text.starts_with(word)) return text;
  text.remove_prefix(word.size());
  if (text.starts_with(' ')) text.remove_prefix(1);
  return text;
}

}  // namespace

BillSplitter::BillSplitter(const platform::Grid& grid)
    : grid_(grid),
      period_(grid.ColIndex(keys::kPeriod)),
      bill_(grid.ColIndex(keys::kBillNo)),
      day_(grid.ColIndex(keys::kBillDate)),
      kind_(grid.ColIndex(keys::kBillName)) {}

std::string BillSplitter::Text(int row, int column) const {
  return column < 0 ? std::string() : grid_.TextMatrix(row, column);
}

BillParts BillSplitter::Of(int row) const {
  BillParts parts;
  const std::string bill = Text(row, bill_);
  parts.kind = Text(row, kind_);
  const std::string date = Text(row, day_);
  if (grid_.IsSubtotal(row) || (date.empty() && parts.kind.empty())) {
    parts.kind.clear();
    parts.period = bill;
    return parts;
  }
  parts.period = Text(row, period_);
  constexpr size_t kDayLength = 10;
  parts.day = date.substr(0, kDayLength);
  // Of a bill with a time some statements join all of it, and others the day alone; without a date a blank is left.
  std::string_view number = WithoutWord(bill, bill.starts_with(date) ? date : parts.day);
  if (date.empty() && number.starts_with(' ')) number.remove_prefix(1);
  parts.number = WithoutWord(number, parts.kind);
  return parts;
}

}  // namespace stockbook::app
