// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_writer.h"

#include <fstream>
#include <string>

#include "app/inventory_fixture.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

class InventoryWriterTest : public InventoryTest {
 protected:
  std::string Empty() {
    InventoryWriter writer(PathOf("empty.db"));
    writer.Finish();
    return PathOf("empty.db");
  }
};

TEST_F(InventoryWriterTest, CreatesEveryTableWithItsColumns) {
  const OpenedInventory inventory(Empty());
  const std::string bills =
      "BillID,AccPeriod,BillDate,年份,月份,日子,单据类型,单据编号,类型,说明,dpID,ksID,pjID,录入员,录入日期,审核员,"
      "审核日期";
  const std::string lines =
      "RecID,BillID,pdID,dpID,ksID,pjID,OtherID,数量,Qty2,除税单价,除税金额,税率,税额,单价,金额,经手人,交接人,包装,"
      "货位,期限,SerialNo,ProductDate";
  const auto columns = [&](const std::string& table) {
    return inventory.One("SELECT group_concat(name) FROM pragma_table_info('" + table + "')");
  };
  EXPECT_EQ(columns("入库目录"), bills);
  EXPECT_EQ(columns("出库目录"), bills);
  EXPECT_EQ(columns("入库记录"), lines);
  EXPECT_EQ(columns("出库记录"), lines);
  EXPECT_EQ(columns("仓库设置"), "dpID,仓库名称");
  EXPECT_EQ(columns("厂商资料"), "KSID,企业名称,ClassCode");
  EXPECT_EQ(columns("客户资料"), "KSID,企业名称,ClassCode");
  EXPECT_EQ(columns("项目设置"), "项目ID,项目名称,项目编号,ClassCode");
  EXPECT_EQ(columns("商品设置"),
            "pdID,商品名称,商品编号,规格,型号,计量单位,计量2,计价方法,进位方法,最低库存,最高库存,输入简码,KSID,"
            "默认单价,普通税率,增值税率,"
            "购进单价,普购税率,增购税率,ClassCode,单位数量,存放位置,商品条码,生产厂家,备注,别名,颜色,重量,定义");
  for (const std::string table : {"项目分类", "商品分类", "厂商分类", "客户分类"})
    EXPECT_EQ(columns(table), "ClassCode,ClassName");
  EXPECT_EQ(columns("tqAccPeriod"), "AccPeriod");
  EXPECT_EQ(columns("仓库余额表"),
            "ID,DpID,PdID,AccPeriod,年份,月份,上期库存单价,上期库存数量,上期库存数量2,上期库存金额,TotalRevQuantity,"
            "TotalRevQuantity2,"
            "TotalRevAccount,TotalIssQuantity,TotalIssQuantity2,TotalIssAccount");
  const std::string sums =
      ",pdID,LastPrice,LastQuantity,LastQuantity2,LastAccount,SumRevQuantity,SumRevQuantity2,SumRevAccount,"
      "SumIssQuantity,"
      "SumIssQuantity2,SumIssAccount";
  EXPECT_EQ(columns("tqSuppBalance"), "bnPeriod,ksID" + sums);
  EXPECT_EQ(columns("tqCustBalance"), "bnPeriod,ksID" + sums);
  EXPECT_EQ(columns("tqProjBalance"), "bnPeriod,pjID" + sums);
}

TEST_F(InventoryWriterTest, MarksTheFileAsAnInventoryForDesktops) {
  const std::string path = Empty();
  EXPECT_EQ(OpenedInventory(path).One("PRAGMA application_id"), std::to_string(0x53746B42));
  std::ifstream file(path, std::ios::binary);
  std::string head(72, '\0');
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  EXPECT_EQ(head.substr(68), "StkB");
}

TEST_F(InventoryWriterTest, KeepsMoneyAsExactDecimalText) {
  {
    InventoryWriter writer(PathOf("money.db"));
    LineRecord line;
    line.record_id = 1;
    line.amount = *base::Money::Parse("922337203685477.5807");
    line.tax = *base::Money::Parse("-0.0001");
    line.tax_amount = *base::Money::Parse("12.50");
    writer.AddLine(Direction::Issue, line);
    writer.Finish();
  }
  const OpenedInventory inventory(PathOf("money.db"));
  EXPECT_EQ(inventory.Lines("SELECT typeof(除税金额), 除税金额, 税额, 金额, typeof(数量), typeof(单价) FROM 出库记录"),
            std::vector<std::string>{"text|922337203685477.5807|-0.0001|12.5|real|real"});
}

TEST_F(InventoryWriterTest, StoresDatesAsIsoTextAndNothingAsNull) {
  {
    InventoryWriter writer(PathOf("dates.db"));
    BillRecord bill;
    bill.bill_id = 1;
    bill.period = "2026-03";
    bill.date = *base::Date::Parse("2026-03-09");
    bill.entered_on = *base::Date::Parse("2026-03-09 08:05:00");
    writer.AddBill(Direction::Receipt, bill);
    writer.Finish();
  }
  const OpenedInventory inventory(PathOf("dates.db"));
  EXPECT_EQ(inventory.Lines("SELECT BillDate, 年份, 月份, 日子, 录入日期, 审核员, 审核日期, 说明 FROM 入库目录"),
            std::vector<std::string>{"2026-03-09|2026|3|9|2026-03-09 08:05:00|NULL|NULL|NULL"});
}

TEST_F(InventoryWriterTest, LeavesNothingWithoutFinish) {
  Write("stock.db", "old");
  {
    InventoryWriter writer(PathOf("stock.db"));
    writer.AddDepot(1, "总库");
  }
  EXPECT_EQ(Files(), std::vector<std::string>{"stock.db"});
  EXPECT_EQ(ReadAll(PathOf("stock.db")), "old");
}

TEST_F(InventoryWriterTest, RemovesWhatTheReplacedInventoryLeftBesideIt) {
  Write("empty.db", "old");
  Write("empty.db-journal", "left over");
  Write("empty.db-wal", "left over");
  Empty();
  EXPECT_EQ(Files(), std::vector<std::string>{"empty.db"});
}

TEST_F(InventoryWriterTest, ReportsAKeyThatIsUsedTwice) {
  InventoryWriter writer(PathOf("twice.db"));
  writer.AddDepot(1, "总库");
  EXPECT_THROW(writer.AddDepot(1, "分库"), platform::Error);
}

TEST_F(InventoryWriterTest, ReportsAFolderThatIsNotThere) {
  EXPECT_THROW(InventoryWriter(PathOf("missing/stock.db")), platform::Error);
}

TEST_F(InventoryWriterTest, PassesTheDatabasesOwnCheck) {
  EXPECT_EQ(OpenedInventory(Empty()).One("PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace stockbook::app
