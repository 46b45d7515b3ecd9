// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/platform/grid.h"

namespace stockbook::app {

// What the bill column shows of a row, taken apart: of a line its period and the day, kind and number of its bill, of
// the opening row, a period and a total the caption alone.
struct BillParts {
  std::string period;  // or the caption
  std::string day;
  std::string kind;
  std::string number;
};

inline constexpr std::string_view kPeriodCaption = "期间";
inline constexpr std::string_view kBillDayCaption = "日期";
inline constexpr std::string_view kBillKindCaption = "单据";
inline constexpr std::string_view kBillNumberCaption = "单据编号";

// Takes apart the texts of a loaded journal. Borrows the grid; O(1) a row.
class BillSplitter {
 public:
  explicit BillSplitter(const platform::Grid& grid);
  // `row` is below the fixed ones.
  BillParts Of(int row) const;

 private:
  std::string Text(int row, int column) const;

  const platform::Grid& grid_;
  int period_;
  int bill_;
  int day_;
  int kind_;
};

}  // namespace stockbook::app
