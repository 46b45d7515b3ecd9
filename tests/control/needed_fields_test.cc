// SPDX-License-Identifier: MIT
// What the control does with results that lack fields, as a connection of a host's own may give them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "control/working_control.h"

namespace stockbook::control {
namespace {

constexpr const char* kJournal = "SELECT * FROM (SELECT  * FROM (";

class NeededFields : public WorkingControl {
 protected:
  // Whether a result without the field loads.
  bool LoadsWithout(const std::string& field, const std::vector<testing::JournalLine>& lines = {{.quantity = 4}}) {
    return LoadsWith([&](const std::string& name) { return name == field ? std::string() : name; }, lines);
  }
  // Whether a result loads whose fields have other names; "" leaves one out.
  template <typename Rename>
  bool LoadsWith(Rename rename, const std::vector<testing::JournalLine>& lines = {{.quantity = 4}}) {
    std::vector<std::string> names;
    std::vector<size_t> places;
    for (size_t at = 0; at < testing::JournalFieldNames().size(); ++at) {
      const std::string name = rename(testing::JournalFieldNames()[at]);
      if (name.empty()) continue;
      names.push_back(name);
      places.push_back(at);
    }
    std::vector<std::vector<base::Value>> rows;
    for (const testing::JournalLine& line : lines) {
      const std::vector<base::Value> whole = testing::JournalRow(line);
      rows.emplace_back();
      for (const size_t at : places) rows.back().push_back(whole[at]);
    }
    connection_->Answer(kJournal, names, rows);
    heard_.Take();
    return control().Load(7, 0);
  }
  bool WasTold(const std::string& part) {
    const Lines told = heard_.Of("Notify");
    return std::any_of(told.begin(), told.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
  }
};

TEST_F(NeededFields, EndALoadThatWouldShowWrongNumbersWithoutThem) {
  for (const char* field :
       {"Period", "BillNo", "Price", "Quantity", "Account", "RevQty", "RevAcc", "IssQty", "IssAcc", "Flag"}) {
    EXPECT_FALSE(LoadsWithout(field)) << field;
    EXPECT_TRUE(WasTold("查询结果中缺少字段 " + std::string(field) + "，读入已停止")) << field;
    EXPECT_EQ(grid().Rows(), grid().FixedRows()) << field;
    EXPECT_EQ(heard_.LastOf("Process"), "-1") << field;
  }
}

TEST_F(NeededFields, AreNamedAllAtOnce) {
  EXPECT_FALSE(LoadsWith([](const std::string& name) { return name.starts_with("Iss") ? std::string() : name; }));
  EXPECT_TRUE(WasTold("查询结果中缺少字段 IssQty、IssAcc，"));
}

TEST_F(NeededFields, AreMissingUnderANameOfAnotherCase) {
  EXPECT_FALSE(LoadsWith([](std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return static_cast<char>(std::tolower(c)); });
    return name;
  }));
  EXPECT_TRUE(WasTold("大小写也须一致"));
}

TEST_F(NeededFields, OfTheSecondUnitAndTheTaxesAreNeededWhereTheyAreShown) {
  for (const char* field : {"Quantity2", "RevQty2", "IssQty2", "Ratio", "Tax", "TaxPrice", "TaxAccount"}) {
    control().SetAllowQty2(false);
    control().SetAllowInv(false);
    EXPECT_TRUE(LoadsWithout(field)) << field;
    EXPECT_FALSE(WasTold("缺少字段")) << field;
    control().SetAllowQty2(true);
    control().SetAllowInv(true);
    EXPECT_FALSE(LoadsWithout(field)) << field;
    EXPECT_TRUE(WasTold("缺少字段 " + std::string(field) + "，")) << field;
  }
}

TEST_F(NeededFields, OfABillAreToldAtTheEndOfTheLoad) {
  for (const char* field :
       {"BillDate", "BillKind", "Explain", "BillName", "BillID", "RecID", "dpID", "ksID", "pjID", "OtherID", "pdID"}) {
    EXPECT_TRUE(LoadsWithout(field)) << field;
    EXPECT_TRUE(heard_.LastOf("Notify").starts_with("查询结果中缺少字段 " + std::string(field) + "，这些列是空的"))
        << field << ": " << heard_.LastOf("Notify");
  }
}

TEST_F(NeededFields, AreNotTheOptionalTextsNorWhatTheLoadComputes) {
  for (const char* field : {"Field0", "Field6", "Depot", "Enterprise", "Project", "ProjNo", "Inputor", "InputDate",
                            "Auditor", "AuditDate", "DQty", "DStoQty", "StoPrice", "StoQty", "StoQty2", "StoAcc"}) {
    EXPECT_TRUE(LoadsWithout(field)) << field;
    EXPECT_FALSE(WasTold("缺少字段")) << field;
  }
  EXPECT_TRUE(LoadsWithout("StoQty"));
  EXPECT_EQ(grid().TextMatrix(3, ColumnOf("StoQty")), "14");
}

TEST_F(NeededFields, OfTheProductAreNeededWhereAJournalHasManyProducts) {
  control().SetJournalType(base::ProjectJournal);
  connection_->Answer("Select ClassCode", {"ClassCode"}, {});
  connection_->Answer("SELECT bnPeriod", {"Period"}, {});
  connection_->Answer("SELECT  * FROM (SELECT", testing::JournalFieldNames(), {testing::JournalRow({.quantity = 4})});
  heard_.Take();
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_TRUE(WasTold("缺少字段 ProductName、ProductNo、Model、Standard、Measure，这些列是空的"));
}

TEST_F(NeededFields, AreNotNeededByAResultWithoutRows) {
  EXPECT_TRUE(LoadsWithout("RevQty", {}));
  EXPECT_FALSE(WasTold("缺少字段"));
}

}  // namespace
}  // namespace stockbook::control
