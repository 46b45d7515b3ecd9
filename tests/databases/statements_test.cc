// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using platform::Recordset;

class Statements : public ::testing::Test {
 protected:
  Statements() {
    CreateInventory(file_);
    FillInventory(file_);
  }
  Recordset Desktop(const std::string& statement) {
    return EmbeddedConnection(file_.DesktopString()).Execute(statement);
  }
  Recordset Server(const std::string& statement) { return EmbeddedConnection(file_.ServerString()).Execute(statement); }
  std::string DesktopError(const std::string& statement) { return ErrorOf(file_.DesktopString(), statement); }
  std::string ServerError(const std::string& statement) { return ErrorOf(file_.ServerString(), statement); }

  // The named fields of every row, joined by "|".
  static std::vector<std::string> Fields(Recordset rows, const std::vector<std::string>& names) {
    std::vector<std::string> texts;
    for (; !rows.AtEnd(); rows.MoveNext()) {
      std::string text;
      for (const std::string& name : names) {
        const base::Value value = rows.FieldValue(name);
        text.append(&name == &names.front() ? "" : "|").append(value.IsNull() ? "~" : value.Text());
      }
      texts.push_back(text);
    }
    return texts;
  }

  DatabaseFile file_;

 private:
  static std::string ErrorOf(const std::string& connection, const std::string& statement) {
    try {
      EmbeddedConnection(connection).Execute(statement);
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "no error";
  }
};

using Lines = std::vector<std::string>;

const std::vector<std::string> kMoved = {"Period", "BillDate", "BillNo", "Quantity", "Account",
                                         "RevQty", "RevAcc",   "IssQty", "IssAcc",   "Flag"};

TEST_F(Statements, MaterialJournalListsReceiptsBeforeIssuesOfTheSameDate) {
  const Lines expected = {
      "2005-01|2005-01-05|2005-01-05 采购入库 12|10|12.5|10|12.5|0|0|0",
      "2005-01|2005-01-05|2005-01-05 采购入库 12|4|5|4|5|0|0|0",
      "2005-01|2005-01-05|2005-01-05 销售出库 7|-2|-2.5|0|0|2|2.5|1",
      "2005-02|2005-02-10|2005-02-10 销售出库 8|-1.5|-1.875|0|0|1.5|1.875|1",
      "2005-03|2005-03-08|2005-03-08 采购入库 13|3|6|3|6|0|0|0",
  };
  Lines sorted = Fields(Desktop(MaterialJournal(Dialect::kDesktop, "1)", "2005-03")), kMoved);
  // The two lines of one bill have equal keys; a union puts them in the order of their values.
  EXPECT_EQ(sorted[0], expected[1]);
  std::swap(sorted[0], sorted[1]);
  EXPECT_EQ(sorted, expected);
}

TEST_F(Statements, MaterialJournalOfTheServerHasNoBlankBetweenDateAndBillType) {
  const auto rows = Fields(Server(MaterialJournal(Dialect::kServer, "1)", "2005-01")), {"BillNo"});
  EXPECT_EQ(rows, (Lines{"2005-01-05采购入库 12", "2005-01-05采购入库 12", "2005-01-05销售出库 7"}));
}

TEST_F(Statements, MaterialJournalOfOneDepotListsItsLinesAlone) {
  const auto rows = Fields(Desktop(MaterialJournal(Dialect::kDesktop, "1) And Recs.dpID=2", "2005-03")),
                           {"RecID", "Depot", "Field3"});
  EXPECT_EQ(rows, (Lines{"101|二库|A-2", "102|二库|~"}));
}

TEST_F(Statements, LinesOfADeletedDepotAreStillListed) {
  const auto rows =
      Fields(Desktop(MaterialJournal(Dialect::kDesktop, "2)", "2005-03")), {"RecID", "Depot", "Enterprise", "Project"});
  EXPECT_EQ(rows, (Lines{"202|总库|黄河公司|一期工程", "103|~|远大工具|~"}));
}

TEST_F(Statements, HeadersWithoutLinesAndLinesWithoutHeadersContributeNothing) {
  file_.Run(
      "INSERT INTO 入库目录(BillID,AccPeriod,BillDate) VALUES (50,'2005-01','2005-01-01');"
      "INSERT INTO 入库记录(RecID,BillID,pdID,数量) VALUES (300,999,3,1)");
  EXPECT_EQ(Desktop(MaterialJournal(Dialect::kDesktop, "3)", "2005-03")).RecordCount(), 0U);
}

TEST_F(Statements, AUnionListsALineOnceThatBothItsArmsFind) {
  const std::string arm = "SELECT 企业名称, ClassCode FROM 厂商资料 WHERE KSID=5";
  EXPECT_EQ(AllRows(Desktop(arm + " UNION " + arm)), Lines{"宏达五金|0101"});
  EXPECT_EQ(AllRows(Desktop(arm + " UNION ALL " + arm)), (Lines{"宏达五金|0101", "宏达五金|0101"}));
}

TEST_F(Statements, SupplierJournalGivesItsKeysAsTexts) {
  const auto rows =
      Fields(Desktop(SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 5) And Recs.pdID=1", "2005-03")),
             {"BillNo", "ProductName", "Model", "Standard", "BillID", "RecID", "pjID", "OtherID", "Flag", "pdID"});
  EXPECT_EQ(rows, (Lines{"2005-01-05 采购入库 12|螺丝|M4|GB1|10|100|3|0|0|1",
                         "2005-01-05 采购入库 12|螺丝|M4|GB1|10|101|3|0|0|1"}));
  const Recordset first = Desktop(SupplierJournal(Dialect::kDesktop, " Where Recs.ksID in (6,5)", "2005-03"));
  EXPECT_NE(first.FieldValue("BillID").As<std::string>(), nullptr);
  EXPECT_EQ(first.RecordCount(), 4U);
}

TEST_F(Statements, AKeyThatIsNullComesAsEmptyText) {
  const Recordset rows =
      Desktop(SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 6) And Recs.pdID=2", "2005-03"));
  ASSERT_NE(rows.FieldValue("pjID").As<std::string>(), nullptr);
  EXPECT_EQ(rows.FieldValue("pjID").Text(), "");
}

TEST_F(Statements, CustomerJournalListsIssuesOfAllCustomersWhereNoneIsAskedFor) {
  const auto rows = Fields(Desktop(CustomerJournal(Dialect::kDesktop, " Where Recs.pdID>0", "2005-03")),
                           {"BillNo", "Quantity", "IssAcc"});
  EXPECT_EQ(rows,
            (Lines{"2005-01-05 销售出库 7|-2|2.5", "2005-02-10 销售出库 8|-1.5|1.875", "2005-02-10 销售出库 8|-1|9"}));
}

TEST_F(Statements, ProjectJournalOrdersByDateAndFlag) {
  const auto rows = Fields(Desktop(ProjectJournal(Dialect::kDesktop, "1 And Recs.pjID in (3,4)", "2005-03")),
                           {"RecID", "Flag", "Project"});
  EXPECT_EQ(rows, (Lines{"101|0|一期工程", "100|0|一期工程", "200|1|二期工程", "201|1|一期工程"}));
}

TEST_F(Statements, APartnerJournalWithoutItsWhereFailsInTheDesktopDialect) {
  const std::string message = DesktopError(SupplierJournal(Dialect::kDesktop, " And Recs.pdID=1", "2005-03"));
  EXPECT_TRUE(message.starts_with("JOIN expression not supported.")) << message;
  EXPECT_NE(message.find("第 1 行第 "), std::string::npos);
}

TEST_F(Statements, PartnerAndProjectJournalsFailOnTextKeysInTheServerDialect) {
  for (const std::string& statement : {SupplierJournal(Dialect::kServer, " Where (Recs.ksID = 5)", "2005-03"),
                                       SupplierJournal(Dialect::kServer, " And Recs.pdID=1", "2005-03"),
                                       CustomerJournal(Dialect::kServer, " Where (Recs.ksID = 7)", "2005-03"),
                                       ProjectJournal(Dialect::kServer, "1", "2005-03")}) {
    const std::string message = ServerError(statement);
    EXPECT_TRUE(
        message.starts_with("Invalid operator for data type. Operator equals boolean AND, type equals varchar."))
        << message;
  }
}

TEST_F(Statements, DepotBalanceSumsTheProductOverAllDepots) {
  EXPECT_EQ(AllRows(Desktop(DepotBalance("1", "", "2004-12"))), Lines{"2004-12|1.3|6|60|7.4|1|10|1.2|2|20|2.4"});
  EXPECT_EQ(AllRows(Desktop(DepotBalance("1", "AND bn.DpID=2 ", "2004-12"))),
            Lines{"2004-12|1.4|1|10|1.4|0|0|0|0|0|0"});
  EXPECT_EQ(AllRows(Server(DepotBalance("1", "", "2004-12"))), Lines{"2004-12|1.3|6|60|7.4|1|10|1.2|2|20|2.4"});
}

TEST_F(Statements, DepotBalanceOfAProductNeverCarriedForwardHasNoRow) {
  EXPECT_TRUE(Desktop(DepotBalance("3", "", "2004-12")).AtEnd());
}

TEST_F(Statements, PartnerBalanceIsOneRowEvenOverNothing) {
  EXPECT_EQ(AllRows(Desktop(PartnerBalance("tqSuppBalance", " Where bn.ksID=5 And bn.pdID=1", "2005-01"))),
            Lines{"2005-01|1.25|7|70|8.8|15|150|17.4|0|0|0"});
  EXPECT_EQ(AllRows(Desktop(PartnerBalance("tqSuppBalance", " Where bn.ksID=-1", "2004-12"))),
            Lines{"2004-12|~|~|~|~|~|~|~|~|~|~"});
  EXPECT_EQ(AllRows(Server(PartnerBalance("tqCustBalance", " Where bn.ksID in (7,8)", "2004-12"))),
            Lines{"2004-12|1.2|0|0|0|0|0|0|6|60|6"});
}

TEST_F(Statements, ABalanceThatLostItsWhereIsASyntaxErrorWithItsPlace) {
  const std::string message = DesktopError(PartnerBalance("tqSuppBalance", " And bn.pdID=1", "2004-12"));
  EXPECT_TRUE(message.starts_with("“And”处有语法错误")) << message;
  EXPECT_NE(message.find("SQL 语句第 1 行第 "), std::string::npos) << message;
  EXPECT_EQ(ServerError(PartnerBalance("tqSuppBalance", " And bn.pdID=1", "2004-12")), message);
}

TEST_F(Statements, ProjectBalanceHasARowForEachPeriod) {
  EXPECT_EQ(AllRows(Desktop(ProjectBalance("1", " And bn.pjID=3"))),
            (Lines{"2004-12|1.2|0|0|0|2|20|2.4|1|10|1", "2005-01|1.5|1|10|1.2|3|30|3.6|2|20|2"}));
}

TEST_F(Statements, PeriodsAreReadFromEitherEnd) {
  EXPECT_EQ(AllRows(Desktop("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC")), Lines{"2005-03"});
  EXPECT_EQ(AllRows(Server("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC")), Lines{"2005-03"});
  EXPECT_EQ(AllRows(Desktop("Select * From tqAccPeriod Order by AccPeriod")),
            (Lines{"2004-12", "2005-01", "2005-02", "2005-03"}));
}

TEST_F(Statements, ClassCodesSelectTheMembersOfAClass) {
  for (const bool server : {false, true}) {
    const auto run = [&](const std::string& statement) { return server ? Server(statement) : Desktop(statement); };
    EXPECT_EQ(Fields(run("Select * From 厂商资料 Where ClassCode like '01%'"), {"ksID"}), (Lines{"5", "6"}));
    EXPECT_EQ(Fields(run("Select 项目ID As pjID From 项目设置 Where ClassCode='01'"), {"pjID"}), (Lines{"3"}));
    EXPECT_EQ(Fields(run("Select ksID From 厂商资料 Where Left(ClassCode,4) = '0102'"), {"ksID"}), (Lines{"6"}));
    EXPECT_EQ(Fields(run("Select ksID From 客户资料 Where Left(ClassCode,2)='01'"), {"ksID"}), (Lines{"7", "8"}));
  }
}

TEST_F(Statements, ClassCodesWithAnApostropheBreakTheirStatementAndDoNoHarm) {
  EXPECT_NE(DesktopError("Select ksID From 客户资料 Where Left(ClassCode,2)='0'1'"), "no error");
  EXPECT_NE(DesktopError("Select 项目ID As pjID From 项目设置 Where ClassCode='x'; Drop Table 客户资料; --'"),
            "no error");
  EXPECT_EQ(Desktop("Select * From 客户资料").RecordCount(), 2U);
}

TEST_F(Statements, HeaderLookUpsFindTheirRecord) {
  EXPECT_EQ(Fields(Desktop("Select * From 厂商资料 Where ksID=5"), {"企业名称", "ClassCode"}), Lines{"宏达五金|0101"});
  EXPECT_EQ(Fields(Desktop("SELECT pd.pdID, pd.商品名称, pd.商品编号, pd.计量单位,pd.计量2, pd.计价方法, pd.进位方法, "
                           "pd.最低库存, pd.最高库存, "
                           "pd.输入简码, pd.KSID, pd.默认单价, pd.普通税率, pd.增值税率, pd.购进单价, pd.普购税率, "
                           "pd.增购税率, pd.ClassCode, "
                           "pd.单位数量, pd.存放位置, pd.商品条码, pd.生产厂家, pd.备注, pd.别名, pd.颜色, pd.重量, "
                           "pd.定义, pd.规格, pd.型号 "
                           "FROM 商品设置 AS pd Where pdID=1"),
                   {"商品名称", "计量单位", "计量2", "规格", "型号"}),
            Lines{"螺丝|箱|个|M4|GB1"});
  EXPECT_EQ(Fields(Desktop("SELECT * FROM 仓库设置 Where dpID=1"), {"仓库名称"}), Lines{"总库"});
  EXPECT_EQ(Fields(Desktop("SELECT * FROM 项目分类 Where ClassCode='0101'"), {"ClassName"}), Lines{"土建一部"});
  EXPECT_EQ(Fields(Desktop("Select ClassCode From 客户资料 Where ksID=8"), {"ClassCode"}), Lines{"0101"});
  EXPECT_EQ(
      Fields(Desktop("Select * From 项目分类 Where ClassCode='01' Union Select * From 项目分类 Where ClassCode='0101'"),
             {"ClassName"}),
      (Lines{"土建", "土建一部"}));
}

TEST_F(Statements, ProjectClassCodeLookUpFailsBecauseTheTableHasNoSuchKey) {
  const std::string message = DesktopError("Select ClassCode From 项目设置 Where pjID=3");
  EXPECT_EQ(message, "没有名为“pjID”的字段（SQL 语句第 1 行第 34 个字符）");
}

TEST_F(Statements, IssueSourceOfAnOpeningBalanceNamesDepotAndPeriod) {
  const std::string statement =
      "SELECT 仓库余额表.*, 仓库设置.仓库名称, * FROM 仓库余额表 LEFT JOIN 仓库设置 ON 仓库余额表.DpID = 仓库设置.dpID "
      " Where ID=55";
  EXPECT_EQ(Fields(Desktop(statement), {"仓库名称", "年份", "月份"}), Lines{"总库|2004|12"});
}

TEST_F(Statements, IssueSourceOfAReceiptBuildsItsDate) {
  const std::string statement =
      "SELECT d.BillID, CDate(d.年份 & '-' & d.月份 & '-' & d.日子) AS BillDate, d.单据类型 AS BillName, d.单据编号 AS "
      "BillNo, "
      "仓库设置.仓库名称 AS DepotName FROM (入库目录 AS d INNER JOIN 入库记录 AS r ON d.BillID = r.BillID) LEFT JOIN "
      "仓库设置 ON r.dpID = "
      "仓库设置.dpID Where r.RecID=102";
  const Recordset rows = Desktop(statement);
  ASSERT_NE(rows.FieldValue("BillDate").As<base::Date>(), nullptr);
  EXPECT_EQ(RowText(rows), "11|2005-03-08|采购入库|13|二库");
}

TEST_F(Statements, PeriodAndDateLabelsReadAlikeInBothDialects) {
  EXPECT_EQ(AllRows(Desktop(
                "Select (bn.年份 & '年' & Format(bn.月份,'00') & '月'), (bn.年份 & '年' & Format(bn.月份,'00月')),"
                "CDATE(年份 & '-' & 月份 &  '-' & 5) From 仓库余额表 As bn Where ID=57")),
            Lines{"2005年01月|2005年01月|2005-01-05"});
  EXPECT_EQ(
      AllRows(Server(
          "Select CAST(年份 As varchar(4))+'年' + right(cast(10000 + 月份 as varchar), 2)+'月',"
          "Convert(varchar(10),CAST(CAST(年份 AS char(4)) + '-' + CAST(月份 AS char(2)) + '-' + CAST(5 AS char(2)) AS "
          "DATETIME),121) From 仓库余额表 Where ID=57")),
      Lines{"2005年01月|2005-01-05"});
}

}  // namespace
}  // namespace stockbook::testing
