// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/columns/column.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::app {

// Count, sum, average, least and greatest of the numbers in the selected lines, as they are stored and not as they are
// rounded to be shown. Only shown rows and columns count, as in copying. Period totals are left out, because they would
// count everything twice; they count where nothing else is selected. Sums of numbers with up to four decimals are
// exact. Their texts have the decimals of the selected columns: of the column that always shows most, and no more than
// the one that can show most, which is four where a column has no format; the average alone may have four. A plain
// value; making one costs one or two nanoseconds a cell.
class SelectionSums {
 public:
  SelectionSums() = default;
  static SelectionSums Of(const sheet::Sheet& sheet, const sheet::Selection& selection);

  int64_t count() const { return count_; }
  double sum() const;
  double average() const;
  double least() const { return least_; }
  double greatest() const { return greatest_; }

  // Grouped by thousands.
  std::string SumText() const;
  std::string AverageText() const { return NumberText(average(), std::max(most_decimals_, kExactDecimals)); }
  std::string LeastText() const { return NumberText(least_, most_decimals_); }
  std::string GreatestText() const { return NumberText(greatest_, most_decimals_); }

 private:
  static constexpr int kExactDecimals = 4;

  void TakeDecimals(const sheet::Sheet& sheet);
  std::string NumberText(double number, int most_decimals) const;
  void AddRows(const sheet::Sheet& sheet, const platform::CellRange& range);
  void AddInserted(const sheet::Sheet& sheet, const platform::CellRange& range);
  void AddRecords(const sheet::Sheet& sheet, int column, size_t first, size_t count);
  void AddCodes(const columns::Column& column, size_t first, size_t count);
  void AddRaw(const columns::Column& column, size_t first, std::span<const int64_t> raw, const columns::RawRows& rows);
  // These leave zeros out, which AddZeros counts; the first returns how many others there are.
  int64_t AddDecimals(std::span<const int64_t> raw, int decimals);
  void AddDouble(double number);
  void AddZeros(int64_t zeros);
  void AddValue(const base::Value& value);
  void AddText(std::string_view text);
  void AddNumber(double number);
  // Adds to the sum alone.
  void AddUnits(int64_t units, int decimals);
  void Meet(double number);

  int64_t count_ = 0;
  std::array<int64_t, kExactDecimals + 1> units_{};  // sums by decimals
  double others_ = 0;                                // the sum of what has no few decimals
  bool exact_ = true;
  double least_ = 0;
  double greatest_ = 0;
  std::vector<bool> has_numbers_;  // by column
  int least_decimals_ = 0;
  int most_decimals_ = 0;
};

}  // namespace stockbook::app
