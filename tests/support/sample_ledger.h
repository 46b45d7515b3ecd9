// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/base/money.h"
#include "stockbook/columns/column.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::testing {

// The columns of the sample ledger, in the order in which they are loaded.
enum LedgerColumn : int {
  kLedgerLine,
  kLedgerPeriod,
  kLedgerBill,
  kLedgerExplain,
  kLedgerPrice,
  kLedgerRevQty,
  kLedgerRevAcc,
  kLedgerIssQty,
  kLedgerIssAcc,
  kLedgerStoQty,
  kLedgerStoAcc,
  kLedgerDepot,
  kLedgerColumns
};

struct SampleLedgerSize {
  int periods = 12;
  int lines = 84;  // per period
};

// A made-up stock journal for a bare sheet, the same at every call: two-line captions, line numbers in the fixed
// column, a node above each period and a two-line total after it (of the period, over that of all so far). The stock
// goes below zero now and then.
class SampleLedger {
 public:
  explicit SampleLedger(SampleLedgerSize size = {}) : size_(size), columns_(kLedgerColumns) {}

  void Fill(sheet::GridSheet& sheet) {
    MakeLines();
    std::vector<columns::Column> columns;
    for (columns::ColumnBuilder& column : columns_) columns.push_back(column.Finish());
    sheet.SetCols(kLedgerColumns);
    sheet.LoadColumns(std::move(columns), 0);
    Describe(sheet);
    sheet.SetOutlineCol(kLedgerBill);
    sheet.GroupBy(kLedgerPeriod, kLedgerBill, "%s");
    AddTotals(sheet);
    sheet.Select(sheet.FixedRows(), kLedgerBill);
  }

 private:
  struct Sums {
    int64_t rev_qty = 0;  // hundredths
    int64_t rev_acc = 0;
    int64_t iss_qty = 0;
    int64_t iss_acc = 0;
  };

  int64_t Random(int64_t below) {
    seed_ = seed_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int64_t>((seed_ >> 33) % static_cast<uint64_t>(below));
  }

  static std::string Padded(int64_t number, size_t digits) {
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
  }
  static std::string Period(int period) {
    return std::to_string(2004 + period / 12) + "-" + Padded(period % 12 + 1, 2);
  }

  void MakeLines() {
    for (int period = 0; period < size_.periods; ++period) {
      sums_.push_back(period == 0 ? Sums() : sums_.back());
      for (int line = 0; line < size_.lines; ++line) AddLine(period, line);
    }
  }

  void AddLine(int period, int line) {
    static const std::vector<std::string> kPartners{"新华五金厂", "东海机电有限公司", "城北建材市场", "三号车间",
                                                    "江南桥梁工程第二项目部"};
    static const std::vector<std::string> kDepots{"一号仓", "二号仓", "露天堆场"};
    const bool receipt = Random(5) < 2 || (period == 0 && line == 0);
    const int64_t quantity = receipt ? 20000 + 100 * Random(900) : 5000 + 50 * Random(1300);
    const int64_t price = 11800 + 50 * Random(40);  // ten-thousandths
    const int64_t amount = (quantity * price + 5000) / 10000;
    Sums& sums = sums_.back();
    (receipt ? sums.rev_qty : sums.iss_qty) += quantity;
    (receipt ? sums.rev_acc : sums.iss_acc) += amount;
    const std::string date = Period(period) + "-" + Padded(1 + line * 28 / size_.lines, 2);
    const auto partner = static_cast<size_t>(Random(5));
    columns_[kLedgerLine].AppendInteger(++lines_);
    columns_[kLedgerPeriod].AppendText(Period(period));
    columns_[kLedgerBill].AppendText(date + (receipt ? " 入库单 R-" : " 出库单 C-") + Padded(lines_, 5));
    columns_[kLedgerExplain].AppendText((receipt ? "购入 " : "发往 ") + kPartners[partner]);
    columns_[kLedgerPrice].AppendMoney(base::Money::FromUnits(price));
    AppendPair(kLedgerRevQty, receipt, quantity, amount);
    AppendPair(kLedgerIssQty, !receipt, quantity, amount);
    columns_[kLedgerStoQty].AppendDouble(static_cast<double>(sums.rev_qty - sums.iss_qty) / 100);
    columns_[kLedgerStoAcc].AppendMoney(base::Money::FromUnits((sums.rev_acc - sums.iss_acc) * 100));
    columns_[kLedgerDepot].AppendText(kDepots[static_cast<size_t>(Random(3))]);
  }

  void AppendPair(int column, bool filled, int64_t quantity, int64_t amount) {
    columns::ColumnBuilder& quantities = columns_[static_cast<size_t>(column)];
    columns::ColumnBuilder& amounts = columns_[static_cast<size_t>(column) + 1];
    if (filled) {
      quantities.AppendDouble(static_cast<double>(quantity) / 100);
      amounts.AppendMoney(base::Money::FromUnits(amount * 100));
    } else {
      quantities.AppendNull();
      amounts.AppendNull();
    }
  }

  static void Describe(sheet::GridSheet& sheet) {
    struct Look {
      const char* key;
      const char* caption;
      int width_px;
      const char* format;
    };
    static const Look kLooks[kLedgerColumns] = {
        {"Line", "行", 44, ""},
        {"Period", "期间", 70, ""},
        {"BillNo", "日期\n单据", 220, ""},
        {"Explain", "摘要", 150, ""},
        {"Price", "单价", 64, "#,##0.0000"},
        {"RevQty", "收入\n数量", 86, "#,##0.00"},
        {"RevAcc", "收入\n金额", 96, "#,##0.00"},
        {"IssQty", "发出\n数量", 86, "#,##0.00"},
        {"IssAcc", "发出\n金额", 96, "#,##0.00"},
        {"StoQty", "结存\n数量", 86, "#,##0.00"},
        {"StoAcc", "结存\n金额", 96, "#,##0.00"},
        {"Depot", "仓库", 80, ""},
    };
    constexpr int kTwips = 15;
    for (int column = 0; column < kLedgerColumns; ++column) {
      const Look& look = kLooks[column];
      sheet.SetColKey(column, look.key);
      sheet.SetTextMatrix(0, column, look.caption);
      sheet.SetColWidth(column, look.width_px * kTwips);
      sheet.SetColFormat(column, look.format);
      const bool number = *look.format != '\0' || column == kLedgerLine;
      sheet.SetColDataType(column, number ? platform::DataType::kDouble : platform::DataType::kString);
    }
    sheet.SetColHidden(kLedgerPeriod, true);
    sheet.SetRowHeight(-1, 22 * kTwips);
    sheet.SetRowHeight(0, 40 * kTwips);
  }

  void AddTotals(sheet::GridSheet& sheet) const {
    constexpr int kTwips = 15;
    for (int period = size_.periods - 1; period >= 0; --period) {
      const auto last = static_cast<size_t>((period + 1) * size_.lines - 1);
      const int row = sheet.RowOfRecord(last) + 1;
      const Sums all = sums_[static_cast<size_t>(period)];
      const Sums before = period == 0 ? Sums() : sums_[static_cast<size_t>(period) - 1];
      sheet.AddItem("", row);
      sheet.SetIsSubtotal(row, true);
      sheet.SetRowOutlineLevel(row, 0);
      sheet.SetRowHeight(row, 40 * kTwips);
      sheet.SetTextMatrix(row, kLedgerBill, Period(period) + " 合计\n本年累计");
      const auto set = [&](int column, int64_t now, int64_t then) {
        sheet.SetTextMatrix(row, column, Amount(now - then) + "\n" + Amount(now));
      };
      set(kLedgerRevQty, all.rev_qty, before.rev_qty);
      set(kLedgerRevAcc, all.rev_acc, before.rev_acc);
      set(kLedgerIssQty, all.iss_qty, before.iss_qty);
      set(kLedgerIssAcc, all.iss_acc, before.iss_acc);
      set(kLedgerStoQty, all.rev_qty - all.iss_qty, before.rev_qty - before.iss_qty);
      set(kLedgerStoAcc, all.rev_acc - all.iss_acc, before.rev_acc - before.iss_acc);
    }
  }

  // Formats hundredths with thousands separators.
  static std::string Amount(int64_t hundredths) {
    const bool negative = hundredths < 0;
    const int64_t size = negative ? -hundredths : hundredths;
    std::string text = std::to_string(size / 100);
    for (auto at = static_cast<int>(text.size()) - 3; at > 0; at -= 3) text.insert(static_cast<size_t>(at), ",");
    return (negative ? "-" : "") + text + "." + Padded(size % 100, 2);
  }

  SampleLedgerSize size_;
  std::vector<columns::ColumnBuilder> columns_;
  std::vector<Sums> sums_;  // up to the end of each period
  uint64_t seed_ = 20040305;
  int lines_ = 0;
};

}  // namespace stockbook::testing
