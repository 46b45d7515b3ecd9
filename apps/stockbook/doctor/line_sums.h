// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/wide_integer.h"
#include "stockbook/doctor/doctor_tables.h"
#include "stockbook/inventory/inventory_records.h"

namespace stockbook::app {

// Quantity and second quantity in millionths, amount in 1/10,000; sums cannot overflow.
using ExactSums = std::array<base::WideInteger, 3>;

// The periods that occur anywhere in an inventory, numbered in the order of their texts.
class PeriodNumbers {
 public:
  explicit PeriodNumbers(const ExaminedTables& tables);
  int Of(const std::string& period) const;
  const std::string& Text(int number) const { return texts_[static_cast<size_t>(number)]; }

 private:
  std::map<std::string, int> numbers_;
  std::vector<std::string> texts_;
};

// One owner's movements of one product in one period.
struct StockKey {
  int64_t owner = 0;
  int64_t product = 0;
  int period = 0;
  auto operator<=>(const StockKey&) const = default;
};
struct StockMovement {
  ExactSums received{};
  ExactSums issued{};
  bool has_row = false;  // in the balance table
};

// What the lines add up to, for the owner that a column of theirs names. Lines without a bill or an owner are left out,
// as they are in the balances.
class LineSums {
 public:
  LineSums(const ExaminedTables& tables, const PeriodNumbers& periods) : tables_(tables), periods_(periods) {}

  void Add(Direction direction, std::string_view owner_column);
  // The movements of the key, nothing moved where there are none; marks them as having a row.
  const StockMovement& Take(const StockKey& key) { return Marked(sums_[key]); }
  const auto& sums() const { return sums_; }

 private:
  struct KeyHash {
    size_t operator()(const StockKey& key) const;
  };
  static StockMovement& Marked(StockMovement& movement) {
    movement.has_row = true;
    return movement;
  }

  const ExaminedTables& tables_;
  const PeriodNumbers& periods_;
  std::unordered_map<StockKey, StockMovement, KeyHash> sums_;
};

// The three values of a row; what is missing or no number counts as 0.
struct SumColumns {
  std::array<const columns::Column*, 3> columns{};  // nullptr where a table has none
  ExactSums At(size_t row) const;
};

}  // namespace stockbook::app
