// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "support/fake_connection.h"

namespace stockbook::testing {

// One line of a journal as the statement of the stock journal delivers it.
struct JournalLine {
  std::string period = "2004-03";
  std::string bill_no = "2004-03-05 入库单 1";
  int64_t flag = 0;  // 0 receipt, 1 issue
  double quantity = 0;
  double quantity2 = 0;
  std::string amount = "0";
  double price = 0;
  std::string bill_name = "入库单";
  std::string auditor = {};
  std::string depot = {};
  std::string enterprise = {};
  std::string project = {};
  int64_t other_id = 0;
  int64_t bill_id = 1;
  int64_t rec_id = 1;
  int64_t product_id = 7;
  base::Value audit_date = {};
};

inline const std::vector<std::string>& JournalFieldNames() {
  static const std::vector<std::string> kNames = {
      "Period",  "BillDate",  "BillNo",   "BillKind", "Explain",    "Price",   "Quantity", "Quantity2", "Account",
      "RevQty",  "RevQty2",   "RevAcc",   "IssQty",   "IssQty2",    "IssAcc",  "StoPrice", "StoQty",    "StoQty2",
      "StoAcc",  "Ratio",     "Tax",      "TaxPrice", "TaxAccount", "Field0",  "Field1",   "Field2",    "Field3",
      "Field4",  "Field5",    "Field6",   "Depot",    "Enterprise", "Project", "ProjNo",   "Inputor",   "InputDate",
      "Auditor", "AuditDate", "DQty",     "DStoQty",  "BillID",     "RecID",   "dpID",     "ksID",      "pjID",
      "OtherID", "Flag",      "BillName", "pdID"};
  return kNames;
}

inline std::vector<base::Value> JournalRow(const JournalLine& line) {
  const auto text = [](const std::string& value) { return base::Value(value); };
  const base::Value zero(int64_t{0});
  const base::Value money(*base::Money::Parse(line.amount));
  const base::Value quantity(line.quantity);
  const base::Value quantity2(line.quantity2);
  const bool issue = line.flag != 0;
  const base::Value negative_money(-*base::Money::Parse(line.amount));
  return {text(line.period),
          base::Value(*base::Date::Parse("2004-03-05")),
          text(line.bill_no),
          text("A"),
          text("说明"),
          base::Value(line.price),
          issue ? base::Value(-line.quantity) : quantity,
          issue ? base::Value(-line.quantity2) : quantity2,
          issue ? negative_money : money,
          issue ? zero : quantity,
          issue ? zero : quantity2,
          issue ? zero : money,
          issue ? quantity : zero,
          issue ? quantity2 : zero,
          issue ? money : zero,
          zero,
          quantity,
          quantity2,
          money,
          base::Value(0.13),
          zero,
          zero,
          zero,
          text("张"),
          text(""),
          text(""),
          text(""),
          text(""),
          text(""),
          base::Value(),
          text(line.depot),
          text(line.enterprise),
          text(line.project),
          text(""),
          text("李"),
          base::Value(*base::Date::Parse("2004-03-05")),
          text(line.auditor),
          line.audit_date,
          quantity,
          zero,
          base::Value(line.bill_id),
          base::Value(line.rec_id),
          zero,
          zero,
          zero,
          base::Value(line.other_id),
          base::Value(line.flag),
          text(line.bill_name),
          base::Value(line.product_id)};
}

// Answers a stock journal of the lines, the periods 2004-03 and 2004-04, and an opening balance of 10 pieces worth 25.
inline void AnswerJournal(FakeConnection& connection, const std::vector<JournalLine>& lines) {
  std::vector<std::vector<base::Value>> rows;
  for (const JournalLine& line : lines) rows.push_back(JournalRow(line));
  connection.Answer("SELECT * FROM (SELECT  * FROM (", JournalFieldNames(), rows);
  connection.Answer("Select Top 1 * From tqAccPeriod", {"AccPeriod"}, {{Text("2004-04")}});
  connection.Answer("Select * From tqAccPeriod", {"AccPeriod"}, {{Text("2004-03")}, {Text("2004-04")}});
  connection.Answer("SELECT TOP 1 AccPeriod AS Period",
                    {"Period", "LastPrice", "LastQty", "LastQty2", "LastAcc", "RevQty", "RevQty2", "RevAcc", "IssQty",
                     "IssQty2", "IssAcc"},
                    {{Text("2004-03"), base::Value(2.5), base::Value(10.0), base::Value(1.0),
                      base::Value(base::Money::FromInteger(25)), base::Value(3.0), base::Value(0.0),
                      base::Value(base::Money::FromInteger(6)), base::Value(4.0), base::Value(0.0), base::Value(4.0)}});
  connection.Answer("SELECT pd.pdID", {"商品名称", "商品编号", "规格", "型号", "计量单位", "计量2"},
                    {{Text("六角螺栓"), Text("1001"), Text("GB5783"), Text("M8"), Text("箱"), Text("个")}});
}

}  // namespace stockbook::testing
