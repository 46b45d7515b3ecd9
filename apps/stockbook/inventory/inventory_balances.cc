// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_balances.h"

#include <algorithm>

#include "base/digits.h"

namespace stockbook::app {

int MonthOf(base::Date date) {
  const base::DateParts parts = date.parts();
  return parts.year * 12 + parts.month - 1;
}

std::string PeriodText(int month) {
  return base::ZeroPadded(month / 12, 4) + "-" + base::ZeroPadded(month % 12 + 1, 2);
}

size_t BalanceBook::KeyHash::operator()(const Key& key) const {
  const auto mixed = static_cast<uint64_t>(key.owner_id) * 0x9E3779B97F4A7C15u + static_cast<uint64_t>(key.product_id);
  return static_cast<size_t>((mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93u);
}

int64_t BalanceBook::Open(int64_t owner_id, int64_t product_id, const StockSums& stock) {
  Account& account = accounts_[{owner_id, product_id}];
  account.opening += stock;
  if (account.opening_id == 0) account.opening_id = ++openings_;
  return account.opening_id;
}

BalanceBook::Month& BalanceBook::MonthIn(Account& account, int month) {
  auto& months = account.months;
  if (!months.empty() && months.back().month == month) return months.back();
  const auto at = std::lower_bound(months.begin(), months.end(), month,
                                   [](const Month& entry, int wanted) { return entry.month < wanted; });
  if (at != months.end() && at->month == month) return *at;
  return *months.insert(at, Month{month, {}, {}});
}

void BalanceBook::Enter(Direction direction, int64_t owner_id, int64_t product_id, int month, const StockSums& sums) {
  Month& entry = MonthIn(accounts_[{owner_id, product_id}], month);
  (direction == Direction::Receipt ? entry.received : entry.issued) += sums;
}

void BalanceBook::ForEachRow(int initial_month, const std::function<void(const BalanceRecord&)>& take) const {
  std::vector<std::pair<Key, const Account*>> sorted;
  sorted.reserve(accounts_.size());
  for (const auto& [key, account] : accounts_) sorted.emplace_back(key, &account);
  std::sort(sorted.begin(), sorted.end());
  int64_t next_id = openings_ + 1;
  for (const auto& [key, account] : sorted) {
    BalanceRecord row{account->opening_id, key.owner_id, key.product_id, initial_month, account->opening, {}, {}};
    if (account->opening_id != 0) take(row);
    for (const Month& month : account->months) {
      row.id = next_id++;
      row.month = month.month;
      row.received = month.received;
      row.issued = month.issued;
      take(row);
      row.carried_forward += row.received;
      row.carried_forward -= row.issued;
    }
  }
}

}  // namespace stockbook::app
