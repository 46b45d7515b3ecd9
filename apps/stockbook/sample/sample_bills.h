// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/date.h"
#include "stockbook/inventory/inventory_records.h"
#include "stockbook/sample/sample_random.h"
#include "stockbook/sample/sample_stock.h"

namespace stockbook::app {

// The five kinds of bills, in the order of their number prefixes.
enum class SampleBillKind { StockIn, Purchase, StockOut, Sale, Transfer };
inline constexpr size_t kSampleBillKindCount = 5;

std::string_view SampleBillName(SampleBillKind kind);    // 入库单, ...
std::string_view SampleBillPrefix(SampleBillKind kind);  // RK, ...

// A line before it is numbered and written. `serial` keeps the text of the record's serial number.
struct SampleLine {
  Direction direction = Direction::Receipt;
  LineRecord record;
  std::string serial;
};

struct SampleBill {
  SampleBillKind kind = SampleBillKind::StockIn;
  int64_t partner_id = 0;
  int64_t project_id = 0;
  std::vector<SampleLine> lines;
};

// Makes up bills consistent with the stock: goods are issued from where they are stored, at their average cost and
// seldom more than available; receipts replenish what runs low. Every line is entered into the stock at once.
class SampleBillMaker {
 public:
  SampleBillMaker(SampleStock& stock, SampleRandom& random, SampleProductRange range)
      : stock_(stock), random_(random), range_(range) {}

  // A bill of at least one and at most `most_lines` lines, dated and numbered by the caller.
  SampleBill Make(base::Date date, int64_t most_lines);
  int64_t record_count(Direction direction) const { return next_record_[static_cast<size_t>(direction)] - 1; }

 private:
  enum class Limit { FillUp, Always };

  SampleBillKind ChooseKind(int64_t most_lines);
  int64_t LineCount(int64_t most_lines);
  void MakeReceipts(SampleBill& bill, int64_t count, Limit limit);
  void MakeIssues(SampleBill& bill, int64_t count);
  void MakeTransfers(SampleBill& bill, int64_t count);
  std::optional<size_t> EmptiestOf(const std::vector<size_t>& products, Limit limit);
  std::optional<size_t> DepotWith(size_t product);
  std::optional<StockSums> Issuable(size_t depot, size_t product, std::optional<size_t> project);
  int64_t OriginOf(const SampleCell& cell);
  void SetAmounts(LineRecord& record, base::Money price, int tax_percent);
  int TaxPercent(SampleBillKind kind);
  SampleLine LineOf(Direction direction, size_t product, size_t depot, const StockSums& moved);
  void AddDetails(SampleLine& line, const SampleProduct& product);
  void Enter(SampleBill& bill, SampleLine line);

  SampleStock& stock_;
  SampleRandom& random_;
  SampleProductRange range_;
  base::Date date_;
  int month_ = 0;
  int64_t next_record_[2] = {1, 1};
};

}  // namespace stockbook::app
