// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "base/text.h"
#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;

class HostileData : public ::testing::Test {
 protected:
  HostileData() {
    CreateInventory(file_);
    FillInventory(file_);
  }
  platform::Recordset Journal() {
    return EmbeddedConnection(file_.DesktopString()).Execute(MaterialJournal(Dialect::kDesktop, "3)", "2005-03"));
  }
  void Line(const std::string& columns, const std::string& values) {
    file_.Run("INSERT INTO 入库记录(BillID,pdID," + columns + ") VALUES (11,3," + values + ")");
  }
  void IssueLine(const std::string& columns, const std::string& values) {
    file_.Run("INSERT INTO 出库记录(BillID,pdID," + columns + ") VALUES (20,3," + values + ")");
  }
  DatabaseFile file_;
};

TEST_F(HostileData, NullsStayNulls) {
  Line("数量", "NULL");
  const auto rows = Journal();
  ASSERT_EQ(rows.RecordCount(), 1U);
  for (const char* name :
       {"Quantity", "Account", "RevQty", "RevAcc", "StoAcc", "Ratio", "Field0", "Field6", "Depot", "OtherID"}) {
    EXPECT_TRUE(rows.FieldValue(name).IsNull()) << name;
  }
}

TEST_F(HostileData, TextsInNumberColumnsAreShownAndHaveNoNegative) {
  IssueLine("数量, Qty2, 除税金额", "'many', '1.5', 'much'");
  const auto rows = Journal();
  EXPECT_EQ(rows.FieldValue("IssQty").Text(), "many");
  EXPECT_TRUE(rows.FieldValue("Quantity").IsNull());
  EXPECT_EQ(rows.FieldValue("Quantity2").Text(), "-1.5");
  EXPECT_EQ(rows.FieldValue("IssAcc").Text(), "much");
  EXPECT_TRUE(rows.FieldValue("Account").IsNull());
}

TEST_F(HostileData, DatesThatAreNoneAreEmpty) {
  file_.Run("UPDATE 入库目录 SET BillDate='2005-13-45', 录入日期='soon', 审核日期=20050101 WHERE BillID=11");
  Line("ProductDate", "'2005-02-30'");
  const auto rows = Journal();
  for (const char* name : {"BillDate", "InputDate", "AuditDate", "Field6"})
    EXPECT_TRUE(rows.FieldValue(name).IsNull()) << name;
  EXPECT_EQ(rows.FieldValue("BillNo").Text(), " 采购入库 13");
}

TEST_F(HostileData, MoneyIsExactInEveryStorageClass) {
  Line("除税金额", "12.345");
  Line("除税金额", "'12.345'");
  Line("除税金额", "'922337203685477.5807'");
  Line("除税金额", "7");
  file_.Run(
      "CREATE TABLE amounts(m MONEY); INSERT INTO amounts VALUES (0.1), (1e-5), (2.00005), (x'31'), (1e300), "
      "(9223372036854775807), ('1.00005')");
  EXPECT_EQ(AllRows(EmbeddedConnection(file_.DesktopString()).Execute("SELECT m FROM amounts")),
            (std::vector<std::string>{"0.1", "0", "2", "1", "1E+300", "9223372036854775807", "1"}));
  auto rows = Journal();
  std::vector<std::string> amounts;
  for (; !rows.AtEnd(); rows.MoveNext()) {
    EXPECT_NE(rows.FieldValue("Account").As<base::Money>(), nullptr);
    amounts.push_back(rows.FieldValue("Account").Text());
  }
  EXPECT_EQ(amounts, (std::vector<std::string>{"7", "12.345", "12.345", "922337203685477.5807"}));
}

TEST_F(HostileData, AnAmountWithoutANegativeIsAnErrorAndNeverWraps) {
  IssueLine("除税金额", "'-922337203685477.5808'");
  for (const auto strategy :
       {databases::Strategy::kFastest, databases::Strategy::kArms, databases::Strategy::kStatement}) {
    EmbeddedConnection connection(file_.DesktopString(), strategy);
    try {
      connection.Execute(MaterialJournal(Dialect::kDesktop, "3)", "2005-03"));
      ADD_FAILURE();
    } catch (const platform::Error& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with("金额超出范围")) << error.what();
    }
  }
}

TEST_F(HostileData, AmountsBeyondMoneyAreShownAsTheyStandAndHaveNoNegative) {
  IssueLine("除税金额", "'99999999999999999999'");
  const auto rows = Journal();
  EXPECT_EQ(rows.FieldValue("IssAcc").Text(), "99999999999999999999");
  EXPECT_TRUE(rows.FieldValue("Account").IsNull());
}

TEST_F(HostileData, MalformedTextsAreMendedAndTakenFromBlobsToo) {
  Line("经手人, 交接人, 包装, 货位",
       "CAST(x'41FF42' AS TEXT), CAST(x'410042' AS TEXT), x'E5BA93', CAST(x'EDA080' AS TEXT)");
  const auto rows = Journal();
  EXPECT_EQ(rows.FieldValue("Field0").Text(),
            "A\xEF\xBF\xBD"
            "B");
  EXPECT_EQ(rows.FieldValue("Field1").Text(),
            "A\xEF\xBF\xBD"
            "B");
  EXPECT_EQ(rows.FieldValue("Field2").Text(), "库");
  EXPECT_TRUE(base::IsCleanUtf8(rows.FieldValue("Field3").Text()));
}

TEST_F(HostileData, MalformedTextsInComputedColumnsAreMendedToo) {
  file_.Run("UPDATE 入库目录 SET 单据编号=CAST(x'FF' AS TEXT) WHERE BillID=11");
  Line("数量", "1");
  EXPECT_EQ(Journal().FieldValue("BillNo").Text(), "2005-03-08 采购入库 \xEF\xBF\xBD");
}

TEST_F(HostileData, LongTextsComeWhole) {
  file_.Run(
      "INSERT INTO 入库记录(BillID,pdID,经手人,交接人) VALUES (11,3,printf('%.*c', 1048576, 'x'), printf('%.*c', "
      "1048575, 'x') || 'y'), (11,3,printf('%.*c', 1048576, 'x'), '')");
  file_.Run("UPDATE 入库目录 SET 单据编号=printf('%.*c', 1048576, 'n') WHERE BillID=11");
  const auto rows = Journal();
  ASSERT_EQ(rows.RecordCount(), 2U);
  EXPECT_EQ(rows.FieldValue("Field0").Text().size(), 1048576U);
  EXPECT_EQ(rows.FieldValue("BillNo").Text().size(), 1048576U + std::string("2005-03-08 采购入库 ").size());
  EmbeddedConnection connection(file_.DesktopString());
  EXPECT_EQ(connection.Execute("SELECT 经手人 FROM 入库记录 WHERE pdID=3 AND 经手人 LIKE '%x%x*xy?%'").RecordCount(),
            0U);
}

TEST_F(HostileData, NumbersAtTheirLimitsStayWhatTheyAre) {
  Line("数量, OtherID", "9e999, 9223372036854775807");
  const auto rows = Journal();
  EXPECT_EQ(rows.FieldValue("OtherID").Text(), "9223372036854775807");
  EXPECT_EQ(rows.FieldValue("Quantity").Text(), "");
}

TEST_F(HostileData, NoRowsAndOneRowAndManyPeriodsAreAllRead) {
  EXPECT_EQ(Journal().RecordCount(), 0U);
  EXPECT_EQ(Journal().FieldCount(), 49U);
  file_.Run(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<299) INSERT INTO "
      "入库目录(BillID,AccPeriod,BillDate) SELECT 1000+i, printf('%04d-%02d', 1980+i/12, 1+i%12), "
      "printf('%04d-%02d-15', 1980+i/12, 1+i%12) FROM n;"
      "INSERT INTO 入库记录(BillID,pdID,数量) SELECT BillID,3,1 FROM 入库目录 WHERE BillID>=1000");
  auto rows = EmbeddedConnection(file_.DesktopString()).Execute(MaterialJournal(Dialect::kDesktop, "3)", "9999"));
  ASSERT_EQ(rows.RecordCount(), 300U);
  EXPECT_EQ(rows.FieldValue("Period").Text(), "1980-01");
}

}  // namespace
}  // namespace stockbook::testing
