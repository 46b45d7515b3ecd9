// SPDX-License-Identifier: MIT
#include "designer/sample_journal.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"

namespace stockbook::designer {
namespace {

using base::Value;

enum class Direction { kReceipt, kIssue };

// A line of a bill: what of it differs from one to the next.
struct SampleLine {
  const char* period;
  const char* date;
  const char* bill_no;
  const char* bill_name;
  Direction direction;
  double quantity;
  double price;
  const char* amount;
  const char* partner;
  const char* explain;
};

constexpr std::array kLines = {
    SampleLine{"2024-01", "2024-01-05", "2024-01-05 入库单 1", "采购入库", Direction::kReceipt, 500, 0.25, "125",
               "宏达五金厂", "补充库存"},
    SampleLine{"2024-01", "2024-01-11", "2024-01-11 出库单 1", "销售出库", Direction::kIssue, 120, 0.25, "30",
               "东方机械厂", "合同 24-017"},
    SampleLine{"2024-01", "2024-01-19", "2024-01-19 出库单 2", "销售出库", Direction::kIssue, 80, 0.25, "20",
               "永安建材店", ""},
    SampleLine{"2024-01", "2024-01-26", "2024-01-26 入库单 2", "采购入库", Direction::kReceipt, 300, 0.27, "81",
               "宏达五金厂", "涨价"},
    SampleLine{"2024-02", "2024-02-02", "2024-02-02 出库单 1", "领料出库", Direction::kIssue, 200, 0.26, "52",
               "一号楼工地", "基建项目"},
    SampleLine{"2024-02", "2024-02-18", "2024-02-18 入库单 1", "退料入库", Direction::kReceipt, 40, 0.26, "10.40",
               "一号楼工地", "余料"},
    SampleLine{"2024-02", "2024-02-27", "2024-02-27 出库单 2", "销售出库", Direction::kIssue, 150, 0.26, "39",
               "东方机械厂", ""},
};

Value Text(const char* text) { return Value(std::string(text)); }
Value Whole(int64_t number) { return Value(number); }
Value Amount(const char* amount) { return Value(*base::Money::Parse(amount)); }

using Record = std::vector<std::pair<const char*, Value>>;

// The record as the statement of a journal delivers it.
Record RecordOf(const SampleLine& line, int64_t number) {
  const bool issued = line.direction == Direction::kIssue;
  const base::Money amount = *base::Money::Parse(line.amount);
  const Value date(*base::Date::Parse(line.date));
  const Value none(0.0);
  const Value no_amount{base::Money()};
  return {{"Period", Text(line.period)},
          {"BillDate", date},
          {"BillNo", Text(line.bill_no)},
          {"BillKind", Text("A")},
          {"Explain", Text(line.explain)},
          {"Price", Value(line.price)},
          {"Quantity", Value(issued ? -line.quantity : line.quantity)},
          {"Quantity2", none},
          {"Account", Value(issued ? -amount : amount)},
          {"RevQty", issued ? none : Value(line.quantity)},
          {"RevQty2", none},
          {"RevAcc", issued ? no_amount : Value(amount)},
          {"IssQty", issued ? Value(line.quantity) : none},
          {"IssQty2", none},
          {"IssAcc", issued ? Value(amount) : no_amount},
          {"StoPrice", none},
          {"StoQty", Value(line.quantity)},
          {"StoQty2", none},
          {"StoAcc", Value(amount)},
          {"Ratio", Value(0.13)},
          {"Tax", no_amount},
          {"TaxPrice", none},
          {"TaxAccount", no_amount},
          {"Field0", Text("王")},
          {"Field1", Text("")},
          {"Field2", Text("")},
          {"Field3", Text("")},
          {"Field4", Text("")},
          {"Field5", Text("")},
          {"Field6", Value()},
          {"Depot", Text("总库")},
          {"Enterprise", Text(line.partner)},
          {"Project", Text("")},
          {"ProjNo", Text("")},
          {"Inputor", Text("李")},
          {"InputDate", date},
          {"Auditor", Text(number % 3 == 0 ? "" : "赵")},
          {"AuditDate", number % 3 == 0 ? Value() : date},
          {"DQty", Value(line.quantity)},
          {"DStoQty", none},
          {"BillID", Whole(number)},
          {"RecID", Whole(number)},
          {"dpID", Whole(1)},
          {"ksID", Whole(1)},
          {"pjID", Whole(0)},
          {"OtherID", Whole(0)},
          {"Flag", Whole(issued ? 1 : 0)},
          {"BillName", Text(line.bill_name)},
          {"pdID", Whole(1)}};
}

platform::Recordset RecordsetOf(const std::vector<Record>& records) {
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < records.front().size(); ++index) {
    columns::ColumnBuilder builder;
    for (const Record& record : records) builder.Append(record[index].second);
    fields.push_back({records.front()[index].first, builder.Finish()});
  }
  return platform::Recordset(std::move(fields));
}

platform::Recordset Lines() {
  std::vector<Record> records;
  for (const SampleLine& line : kLines) records.push_back(RecordOf(line, static_cast<int64_t>(records.size()) + 1));
  return RecordsetOf(records);
}

platform::Recordset OpeningBalance() {
  return RecordsetOf({{{"Period", Text("2024-01")},
                       {"LastPrice", Value(0.25)},
                       {"LastQty", Value(200.0)},
                       {"LastQty2", Value(0.0)},
                       {"LastAcc", Amount("50")},
                       {"RevQty", Value(0.0)},
                       {"RevQty2", Value(0.0)},
                       {"RevAcc", Amount("0")},
                       {"IssQty", Value(0.0)},
                       {"IssQty2", Value(0.0)},
                       {"IssAcc", Amount("0")}}});
}

platform::Recordset Product() {
  return RecordsetOf({{{"商品名称", Text("六角螺栓")},
                       {"商品编号", Text("1001")},
                       {"规格", Text("GB5783")},
                       {"型号", Text("M8")},
                       {"计量单位", Text("件")},
                       {"计量2", Text("箱")}}});
}

// Knows the statements of a load by words that no other has.
class SampleConnection : public platform::Connection {
 public:
  std::string ConnectionString() const override { return "Provider=Stockbook.Embedded;Data Source=sample"; }

  platform::Recordset Execute(std::string_view statement, int /*options*/) override {
    if (statement.find("AS Period,dir.BillDate") != std::string_view::npos) return Lines();
    if (statement.starts_with("SELECT TOP 1 AccPeriod AS Period")) return OpeningBalance();
    if (statement.starts_with("SELECT pd.pdID")) return Product();
    if (statement.starts_with("Select Top 1 * From tqAccPeriod"))
      return RecordsetOf({{{"AccPeriod", Text("2024-02")}}});
    if (statement.starts_with("Select * From tqAccPeriod"))
      return RecordsetOf({{{"AccPeriod", Text("2024-01")}}, {{"AccPeriod", Text("2024-02")}}});
    throw platform::Error("sample", "样本中没有这些数据。");
  }

  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return nullptr; }
};

}  // namespace

std::shared_ptr<platform::Connection> SampleJournal() { return std::make_shared<SampleConnection>(); }

}  // namespace stockbook::designer
