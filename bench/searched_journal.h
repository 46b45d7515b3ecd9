// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::bench {

inline constexpr int kShown = 14;
inline constexpr int kPeriods = 36;
inline constexpr const char* kOutlineKey = "BillNo";

inline std::string Padded(int64_t number, size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// A journal as after a load, the same at every call: distinct bill numbers, a few kinds and remarks, quantities with
// two decimals, money, average prices of 15 digits, zeros where a line has no value; a node for each period.
class SearchedJournal {
 public:
  void Fill(sheet::GridSheet& sheet, int64_t lines) {
    for (int64_t line = 0; line < lines; ++line) AddLine(line, lines);
    static const char* const kKeys[] = {"BillNo",   "BillKind", "Explain", "ProductName", "Price",
                                        "Quantity", "Account",  "RevQty",  "RevAcc",      "IssQty",
                                        "IssAcc",   "StoPrice", "StoQty",  "StoAcc",      "Period"};
    sheet.SetCols(kShown + 2);
    for (int column = 0; column <= kShown; ++column) sheet.SetColKey(column + 1, kKeys[column]);
    std::vector<columns::Column> columns;
    for (columns::ColumnBuilder& column : columns_) columns.push_back(column.Finish());
    sheet.LoadColumns(std::move(columns), 1);
    sheet.SetColHidden(kShown + 1, true);
    sheet.GroupBy(kShown + 1, 1, "%s");
  }

 private:
  int64_t Random(int64_t below) {
    seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<int64_t>((seed_ >> 33) % static_cast<uint64_t>(below));
  }

  void AddLine(int64_t line, int64_t lines) {
    static const std::vector<std::string> kReceipts{"入库单", "采购单"};
    static const std::vector<std::string> kIssues{"出库单", "销售单", "调拨单"};
    static const std::vector<std::string> kExplains{"急用", "补上月欠货", "随车送货", "自提", "样品", "月末集中开单"};
    const bool receipt = stock_ < 100000 || Random(2) == 0;
    const std::string& kind =
        receipt ? kReceipts[static_cast<size_t>(Random(2))] : kIssues[static_cast<size_t>(Random(3))];
    const int64_t month = line * kPeriods / lines;
    const std::string period = std::to_string(2025 + month / 12) + "-" + Padded(month % 12 + 1, 2);
    const int64_t day = line * kPeriods % lines * 28 / lines + 1;
    const int64_t quantity = 100 * (1 + Random(400)) + (Random(4) == 0 ? 25 : 0);  // hundredths
    const int64_t price = 78500 + 10 * Random(2000);                               // ten-thousandths
    const int64_t amount = quantity * price / 100;
    const int64_t sign = receipt ? 1 : -1;
    stock_ += sign * quantity;
    value_ += sign * amount;
    columns_[0].AppendText(period + "-" + Padded(day, 2) + " " + kind + " " + Padded(line * 7919 % 10000019, 7));
    columns_[1].AppendText(receipt ? "入" : "出");
    columns_[2].AppendText(Random(5) == 0 ? kExplains[static_cast<size_t>(Random(6))] : "");
    columns_[3].AppendText("六角螺栓 M8x30[GB/T 5783](千克)");
    columns_[4].AppendMoney(base::Money::FromUnits(price));
    columns_[5].AppendDouble(static_cast<double>(sign * quantity) / 100);
    columns_[6].AppendMoney(base::Money::FromUnits(sign * amount));
    AppendSide(7, receipt, quantity, amount);
    AppendSide(9, !receipt, quantity, amount);
    columns_[11].AppendDouble(stock_ != 0 ? static_cast<double>(value_) / static_cast<double>(stock_) / 100 : 0);
    columns_[12].AppendDouble(static_cast<double>(stock_) / 100);
    columns_[13].AppendMoney(base::Money::FromUnits(value_));
    columns_[14].AppendText(period);
  }

  void AppendSide(size_t column, bool filled, int64_t quantity, int64_t amount) {
    columns_[column].AppendDouble(filled ? static_cast<double>(quantity) / 100 : 0);
    columns_[column + 1].AppendMoney(base::Money::FromUnits(filled ? amount : 0));
  }

  std::vector<columns::ColumnBuilder> columns_{kShown + 1};
  uint64_t seed_ = 20250101;
  int64_t stock_ = 0;  // hundredths
  int64_t value_ = 0;  // ten-thousandths
};

}  // namespace stockbook::bench
