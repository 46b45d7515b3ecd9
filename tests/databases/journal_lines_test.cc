// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"
#include "journal/query_builder.h"

namespace stockbook::testing {
namespace {

// The journals that the control asks for, on the small inventory.
class JournalLines : public ::testing::Test {
 protected:
  JournalLines() {
    CreateInventory(file_);
    FillInventory(file_);
  }
  // The line keys of the journal of product 1, each with the named field.
  std::string Lines(base::tqJournalTypeContants type, int16_t second_key, const std::string& field) {
    databases::EmbeddedConnection connection(file_.DesktopString());
    platform::Recordset rows =
        connection.Execute(journal::QueryBuilder(&connection, type, {1, second_key, ""}).Build());
    std::string text;
    for (; !rows.AtEnd(); rows.MoveNext()) {
      const base::Value value = rows.FieldValue(field);
      text += rows.FieldValue("RecID").Text() + "=" + (value.IsNull() ? "~" : value.Text()) + " ";
    }
    return text;
  }

  DatabaseFile file_;
};

TEST_F(JournalLines, OfADeletedDepotPartnerOrProjectAreStillListedWithoutTheName) {
  file_.Run("INSERT INTO tqAccPeriod VALUES ('2005-04')");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Depot"), "101=二库 100=总库 200=总库 201=总库 102=二库 104=总库 ");
  file_.Run(
      "DELETE FROM 仓库设置 WHERE dpID=2; DELETE FROM 厂商资料 WHERE KSID=5; DELETE FROM 客户资料 WHERE KSID=7;"
      "DELETE FROM 项目设置 WHERE 项目ID=3");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Depot"), "101=~ 100=总库 200=总库 201=总库 102=~ 104=总库 ");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Enterprise"), "101=~ 100=~ 200=~ 201=黄河公司 102=远大工具 104=~ ");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Project"), "101=~ 100=~ 200=二期工程 201=~ 102=~ 104=~ ");
  EXPECT_EQ(Lines(base::SupplierJournal, 5, "Enterprise"), "100=~ 101=~ 104=~ ");
  EXPECT_EQ(Lines(base::CustomerJournal, 7, "Enterprise"), "200=~ ");
  EXPECT_EQ(Lines(base::ProjectJournal, 3, "Project"), "101=~ 100=~ 201=~ 104=~ ");
}

TEST_F(JournalLines, OfADeletedProductAreStillListedWithoutItsName) {
  file_.Run("DELETE FROM 商品设置 WHERE pdID=1");
  EXPECT_EQ(Lines(base::SupplierJournal, 5, "ProductName"), "100=~ 101=~ ");
}

TEST_F(JournalLines, OfPeriodsAfterTheNewestOneAreNotListed) {
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Period"), "101=2005-01 100=2005-01 200=2005-01 201=2005-02 102=2005-03 ");
  file_.Run("INSERT INTO tqAccPeriod VALUES ('2005-04')");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Period"),
            "101=2005-01 100=2005-01 200=2005-01 201=2005-02 102=2005-03 104=2005-04 ");
}

TEST_F(JournalLines, ComparePeriodsAsTexts) {
  file_.Run(
      "UPDATE 入库目录 SET AccPeriod='2005-10' WHERE BillID=11; UPDATE 入库目录 SET AccPeriod='2005-1' WHERE BillID=10;"
      "DELETE FROM tqAccPeriod; INSERT INTO tqAccPeriod VALUES ('2005-02'),('2005-09')");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Period"), "200=2005-01 201=2005-02 104=2005-04 ")
      << "2005-1 and 2005-10 sort after 2005-09";
}

TEST_F(JournalLines, ListReceiptsBeforeIssuesOfOneDateInStockAndProjectJournals) {
  file_.Run("UPDATE 入库目录 SET BillDate='2005-02-10' WHERE BillID=10; UPDATE 入库记录 SET pjID=3");
  EXPECT_EQ(Lines(base::MaterialJournal, 0, "Flag"), "200=1 101=0 100=0 201=1 102=0 ");
  EXPECT_EQ(Lines(base::ProjectJournal, 3, "Flag"), "101=0 100=0 201=1 102=0 ");
}

}  // namespace
}  // namespace stockbook::testing
