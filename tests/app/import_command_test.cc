// SPDX-License-Identifier: MIT
#include "stockbook/command/import_command.h"

#include <algorithm>

#include "app/inventory_balance_check.h"
#include "app/inventory_fixture.h"

namespace stockbook::app {
namespace {

using Lines = std::vector<std::string>;

const std::string kMap =
    "product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,price=UnitPrice,partner="
    "CustomerID,project=Country";
const std::string kHeader = "InvoiceNo,StockCode,Description,Quantity,InvoiceDate,UnitPrice,CustomerID,Country\n";

class ImportTest : public InventoryTest {
 protected:
  std::string Database() const { return PathOf("stock.db"); }

  Outcome Import(const std::string& table, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"import", "-", "-o", Database(), "--map", kMap});
    return RunArguments(options, table);
  }
  Lines Query(const std::string& sql) const { return OpenedInventory(Database()).Lines(sql); }
  std::string One(const std::string& sql) const { return OpenedInventory(Database()).One(sql); }

  // Imports one line together with a valid one and expects it to be skipped for the reason.
  void ExpectSkipped(const std::string& line, const std::string& reason) const {
    const Outcome outcome = Import(kHeader + line + "\nB1,P1,Bolt,1,2026-01-01,1,,\n");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("imported 1 "), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("skipped 1: " + reason + " 1."), std::string::npos) << line << ": " << outcome.out;
    EXPECT_TRUE(outcome.err.starts_with("stockbook import: Line 2 cannot be imported: ")) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  }
};

TEST_F(ImportTest, TurnsLinesIntoBillsOfIssues) {
  const Outcome outcome = Import(kHeader +
                                 "536365,85123A,WHITE HOLDER,6,2010-12-01 08:26:00,2.55,17850.0,United Kingdom\n"
                                 "536365,71053,LANTERN,8,2010-12-01 08:26:00,3.39,17850.0,United Kingdom\n"
                                 "536366,85123A,WHITE HOLDER,1.5,2011-01-02,0.3333,,France\n");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            "Read 3 lines: imported 3 (3 issues, 0 receipts; 2 bills, 2 products, 2 periods), skipped 0.\n");
  EXPECT_EQ(
      Query("SELECT BillID, AccPeriod, BillDate, 年份, 月份, 日子, 单据类型, 单据编号, dpID, ksID, pjID FROM 出库目录"),
      (Lines{"1|2010-12|2010-12-01 08:26:00|2010|12|1|销售单|536365|1|1|1",
             "2|2011-01|2011-01-02|2011|1|2|销售单|536366|1|2|2"}));
  EXPECT_EQ(Query("SELECT RecID, BillID, pdID, dpID, ksID, pjID, OtherID, 数量, Qty2, 除税单价, 除税金额, 税率, 税额, "
                  "单价, 金额 FROM 出库记录"),
            (Lines{"1|1|1|1|1|1|0|6|0|2.55|15.3|0|0|2.55|15.3", "2|1|2|1|1|1|0|8|0|3.39|27.12|0|0|3.39|27.12",
                   "3|2|1|1|2|2|0|1.5|0|0.3333|0.5|0|0|0.3333|0.5"}));
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 客户资料"), (Lines{"1|17850", "2|(无客户)"}));
  EXPECT_EQ(Query("SELECT KSID FROM 厂商资料"), Lines{});
  EXPECT_EQ(Query("SELECT pdID, 商品编号, 商品名称 FROM 商品设置"),
            (Lines{"1|85123A|WHITE HOLDER", "2|71053|LANTERN"}));
  EXPECT_EQ(Query("SELECT 项目ID, 项目名称 FROM 项目设置"), (Lines{"1|United Kingdom", "2|France"}));
  EXPECT_EQ(Query("SELECT * FROM 仓库设置"), Lines{"1|总库"});
  EXPECT_EQ(Query("SELECT * FROM tqAccPeriod"), (Lines{"2010-11", "2010-12", "2011-01"}));
}

TEST_F(ImportTest, TurnsANegativeQuantityIntoTheOtherDirection) {
  Import(kHeader + "C1,P1,Bolt,-3,2026-01-05,2,17850.0,\nB1,P1,Bolt,5,2026-01-04,2,17850.0,\n");
  EXPECT_EQ(
      Query("SELECT d.单据类型, d.ksID, r.数量, r.除税金额 FROM 入库记录 r JOIN 入库目录 d ON r.BillID = d.BillID"),
      Lines{"入库单|1|3|6"});
  EXPECT_EQ(
      Query("SELECT d.单据类型, d.ksID, r.数量, r.除税金额 FROM 出库记录 r JOIN 出库目录 d ON r.BillID = d.BillID"),
      Lines{"销售单|1|5|10"});
  // A partner on both sides has the same number in both tables.
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 厂商资料"), Lines{"1|17850"});
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 客户资料"), Lines{"1|17850"});
}

TEST_F(ImportTest, ReadsReceiptsAsPurchasesAndTheirReturnsAsIssues) {
  Import(kHeader + "B1,P1,Bolt,5,2026-01-04,2,7,\nB2,P1,Bolt,-1,2026-01-05,2,7,\n", {"--direction", "receipt"});
  EXPECT_EQ(Query("SELECT 单据类型, 单据编号 FROM 入库目录"), Lines{"采购单|B1"});
  EXPECT_EQ(Query("SELECT 单据类型, 单据编号 FROM 出库目录"), Lines{"出库单|B2"});
}

TEST_F(ImportTest, ImportsAQuantityOfZeroAsAMovementOfNothing) {
  const Outcome outcome = Import(kHeader + "B1,P1,Bolt,0,2026-01-04,2.5,,\nB1,P1,Bolt,-0,2026-01-04,2.5,,\n");
  EXPECT_NE(outcome.out.find("imported 2 (2 issues, 0 receipts"), std::string::npos) << outcome.out;
  EXPECT_EQ(Query("SELECT 数量, 除税单价, 除税金额 FROM 出库记录"), (Lines{"0|2.5|0", "0|2.5|0"}));
}

TEST_F(ImportTest, ImportsZeroPricesAndEmptyNames) {
  Import(kHeader + "B1,P1,,2,2026-01-04,0.0,,\nB2,P2,,2,2026-01-04,0,,\nB3,P2,Nut,2,2026-01-04,0,,\n");
  EXPECT_EQ(Query("SELECT 商品编号, 商品名称 FROM 商品设置"), (Lines{"P1|P1", "P2|Nut"}));
  EXPECT_EQ(One("SELECT sum(除税金额 = '0') FROM 出库记录"), "3");
}

TEST_F(ImportTest, NamesAProductAsItIsNamedMostAndOfEqualsFirst) {
  Import(kHeader +
         "B1,P1,damaged?,1,2026-01-04,1,,\nB2,P1,Bolt,1,2026-01-04,1,,\nB3,P1,Bolt,1,2026-01-04,1,,\n"
         "B4,P2,Zinc,1,2026-01-04,1,,\nB5,P2,Alu,1,2026-01-04,1,,\n");
  EXPECT_EQ(Query("SELECT 商品名称 FROM 商品设置 ORDER BY pdID"), (Lines{"Bolt", "Zinc"}));
}

TEST_F(ImportTest, KeepsBillsOfOneNumberApartByTimeAndPartner) {
  Import(kHeader +
         "B1,P1,Bolt,1,2026-01-04 10:00,1,7,\nB1,P2,Nut,1,2026-01-04 10:01,1,7,\nB1,P3,Pin,1,2026-01-04 "
         "10:00,1,7,\nB1,P3,Pin,1,2026-01-04 10:00,1,8,\n");
  EXPECT_EQ(Query("SELECT BillID, pdID FROM 出库记录"), (Lines{"1|1", "2|2", "1|3", "3|3"}));
}

TEST_F(ImportTest, NumbersBillsByTheDayWhenTheTableDoesNot) {
  const Outcome outcome =
      RunArguments({"import", "-", "-o", Database(), "--map", "product=p,date=d", "--map", "quantity=q"},
                   "p;d;q\nA;2026-01-04;1\nB;2026-01-04;2\nA;2026-01-05;-3\n");
  EXPECT_EQ(outcome.code, 2) << "the delimiter is a comma unless given";
  const Outcome again = RunArguments(
      {"import", "-", "-o", Database(), "--map", "product=p,date=d", "--map", "quantity=q", "--delimiter", ";"},
      "p;d;q\nA;2026-01-04;1\nB;2026-01-04;2\nA;2026-01-05;-3\n");
  EXPECT_EQ(again.code, 0) << again.err;
  EXPECT_EQ(Query("SELECT 单据编号 FROM 出库目录"), Lines{"20260104-0001"});
  EXPECT_EQ(Query("SELECT 单据编号 FROM 入库目录"), Lines{"20260105-0001"});
}

TEST_F(ImportTest, SkipsAndExplainsEveryKindOfBadLine) {
  ExpectSkipped("", "empty line");
  ExpectSkipped("B1,P1,Bolt,1,2026-01-01,1,", "wrong number of fields");
  ExpectSkipped("B1,P1,Bolt,1,2026-01-01,1,,,", "wrong number of fields");
  ExpectSkipped("B1, ,Bolt,1,2026-01-01,1,,", "no product");
  ExpectSkipped("B1,P1,Bolt,1,,1,,", "no date");
  ExpectSkipped("B1,P1,Bolt,1,2026-02-30,1,,", "no date");
  ExpectSkipped("B1,P1,Bolt,1,12/1/2010 8:26,1,,", "no date");
  ExpectSkipped("B1,P1,Bolt,1,0202-01-01,1,,", "no date");
  ExpectSkipped("B1,P1,Bolt,,2026-01-01,1,,", "no quantity");
  ExpectSkipped("B1,P1,Bolt,six,2026-01-01,1,,", "no quantity");
  ExpectSkipped("B1,P1,Bolt,\"1,5\",2026-01-01,1,,", "no quantity");
  ExpectSkipped("B1,P1,Bolt,1e12,2026-01-01,1,,", "no quantity");
  ExpectSkipped("B1,P1,Bolt,0.0000001,2026-01-01,1,,", "no quantity");
  ExpectSkipped("B1,P1,Bolt,1,2026-01-01,,,", "no price");
  ExpectSkipped("B1,P1,Bolt,1,2026-01-01,NaN,,", "no price");
  ExpectSkipped("B1,P1,Bolt,999999999,2026-01-01,999999999,,", "amount out of range");
  ExpectSkipped("B1,P1,\"Bo\"lt,1,2026-01-01,1,,", "wrong quotes");
}

TEST_F(ImportTest, ReportsLineNumbersOfTheFileAndAnUnclosedQuote) {
  const Outcome outcome =
      Import(kHeader + "B1,P1,\"Bolt\nlong\",1,2026-01-01,1,,\nbad\nB2,P1,\"Bolt,1,2026-01-01,1,,\n");
  EXPECT_NE(
      outcome.err.find("Line 4 cannot be imported: it has 1 fields where the header line has 8; it is skipped.\n"),
      std::string::npos);
  EXPECT_NE(outcome.err.find("Line 5 cannot be imported: a quote is never closed"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.out.find("Read 3 lines: imported 1 "), std::string::npos) << outcome.out;
}

// A table of many lines, one of which opens a quote and never closes it.
std::string WithAnOpenQuote(int lines, int open) {
  std::string table = kHeader;
  for (int line = 2; line <= lines; ++line)
    table += "B" + std::to_string(line) + ",P1," + (line == open ? "\"Bolt" : "Bolt") + ",1,2026-01-01,1,,\n";
  return table;
}

TEST_F(ImportTest, LosesOneLineToAnUnclosedQuoteAndSaysSo) {
  Write("stock.db", "old");
  const Outcome outcome = Import(WithAnOpenQuote(20001, 100));
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.out.find("Read 20000 lines: imported 19999 "), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("skipped 1: "), std::string::npos) << outcome.out;
  EXPECT_TRUE(outcome.err.starts_with("stockbook import: Line 100 cannot be imported: ")) << outcome.err;
  EXPECT_TRUE(
      outcome.err.ends_with("stockbook import: Quotes that are not closed have cost 1 line, the first in line "
                            "100, so that no inventory is written; close them, or double them if they are "
                            "text.\n"))
      << outcome.err;
  EXPECT_EQ(ReadAll(Database()), "old");
  EXPECT_EQ(Files(), Lines{"stock.db"});
}

TEST_F(ImportTest, LosesOneLineToAQuoteThatAnotherLineCloses) {
  const std::string table = WithAnOpenQuote(1001, 100);
  for (const char* later : {"B,P1,\"Bolt\",1,2026-01-01,1,,\n", "B,P1,Pipe 5\",1,2026-01-01,1,,,,,\n"}) {
    const Outcome outcome = Import(table + later);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("Line 100 cannot be imported: "), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.out.find("Read 1001 lines: imported "), std::string::npos) << outcome.out;
  }
}

TEST_F(ImportTest, CountsASkippedRecordInLinesOfTheFile) {
  const Outcome outcome = Import(kHeader + "B1,P1,\"Bolt\nlong\nlonger\",1,never,1,,\nB2,P1,Bolt,1,2026-01-01,1,,\n");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("Read 4 lines: imported 1 "), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("skipped 3: no date 3."), std::string::npos) << outcome.out;
}

TEST_F(ImportTest, LeavesOutTheApostropheThatAnExportPutsBeforeAFormula) {
  Import(kHeader + "B1,'=1+1,'@x,1,2026-01-01,1,,\nB2,'tis,''-y,1,2026-01-01,1,,\n");
  EXPECT_EQ(Query("SELECT 商品编号, 商品名称 FROM 商品设置"), (Lines{"=1+1|@x", "'tis|'-y"}));
}

TEST_F(ImportTest, WritesBalancesOnlyWhereSomethingMoved) {
  std::string table = kHeader;
  for (int month = 0; month < 240; ++month) {
    const std::string date =
        std::to_string(1990 + month / 12) + (month % 12 < 9 ? "-0" : "-") + std::to_string(month % 12 + 1) + "-05";
    table += "B,P" + std::to_string(month) + ",Bolt,1," + date + ",1,,\n";
  }
  ASSERT_EQ(Import(table).code, 0);
  EXPECT_EQ(One("SELECT count(*) FROM 仓库余额表"), "240");
  EXPECT_EQ(CheckBalances(Database()), 240 + 240) << "of the depot, and of the customer who is none";
  EXPECT_EQ(One("SELECT min(AccPeriod) FROM tqAccPeriod"), "1989-12") << "a period without bills comes first";
}

TEST_F(ImportTest, OnlyCountsBadLinesAfterTheFirstTwenty) {
  std::string table = kHeader + "B1,P1,Bolt,1,2026-01-01,1,,\n";
  for (int count = 0; count < 50; ++count) table += "bad\n";
  const Outcome outcome = Import(table);
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 21);
  EXPECT_TRUE(outcome.err.ends_with("stockbook import: Further lines that are skipped are only counted.\n"));
  EXPECT_NE(outcome.out.find("skipped 50: wrong number of fields 50."), std::string::npos) << outcome.out;
}

TEST_F(ImportTest, StopsAtTheFirstBadLineWhenStrictAndLeavesNoFile) {
  const Outcome outcome = Import(kHeader + "B1,P1,Bolt,1,2026-01-01,1,,\nbad\nworse\n", {"--strict"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "stockbook import: Line 3 cannot be imported: it has 1 fields where the header line has 8; correct it, or "
            "leave --strict out to skip it.\n");
  EXPECT_TRUE(Files().empty());
}

TEST_F(ImportTest, LeavesTheOldInventoryWhenTheInputBreaksOff) {
  Write("stock.db", "old");
  const std::string broken = Write("broken.csv.xz", std::string("\xFD"
                                                                "7zXZ\0\0\1",
                                                                8));
  const Outcome outcome = RunArguments({"import", broken, "-o", Database(), "--map", kMap});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.err,
            "stockbook import: Cannot read '" + broken + "': its xz data ends too early; fetch the file again.\n");
  EXPECT_EQ(ReadAll(Database()), "old");
  EXPECT_EQ(Files().size(), 2u);
}

TEST_F(ImportTest, RefusesATableWithoutAHeaderOrWithoutAnyGoodLine) {
  EXPECT_EQ(Import("").code, 1);
  EXPECT_EQ(Import("\n").code, 1);
  EXPECT_EQ(Import(kHeader).code, 1);
  EXPECT_EQ(Import(kHeader + "bad\n").code, 1);
  EXPECT_TRUE(Files().empty());
}

TEST_F(ImportTest, RefusesWrongMappingsAndArgumentsAsUsageErrors) {
  const std::string table = Write("t.csv", "p,d,q,q2,q2\nA,2026-01-01,1,1,1\n");
  const std::string good = "product=p,date=d,quantity=q";
  const std::vector<std::vector<std::string>> wrong{
      {"import", table, "-o", Database()},
      {"import", table, "--map", good},
      {"import", "-o", Database(), "--map", good},
      {"import", table, "-o", "-", "--map", good},
      {"import", table, "-o", table, "--map", good},
      {"import", table, "-o", Database(), "--map", "product=p,date=d"},
      {"import", table, "-o", Database(), "--map", "product=p,date=d,quantity=nothing"},
      {"import", table, "-o", Database(), "--map", "product=p,date=d,quantity=q2"},
      {"import", table, "-o", Database(), "--map", good + ",colour=p"},
      {"import", table, "-o", Database(), "--map", good + ",price"},
      {"import", table, "-o", Database(), "--map", good + ",price="},
      {"import", table, "-o", Database(), "--map", good + ",product=p"},
      {"import", table, "-o", Database(), "--map", good, "--direction", "sideways"},
      {"import", table, "-o", Database(), "--map", good, "--delimiter", "::"},
      {"import", table, "-o", Database(), "--map", good, "--colour"},
      {"import", table, table, "-o", Database(), "--map", good},
  };
  for (const auto& arguments : wrong) {
    const Outcome outcome = RunArguments(arguments);
    EXPECT_EQ(outcome.code, 2) << outcome.err << outcome.out;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  }
  EXPECT_EQ(Files(), Lines{"t.csv"});
  EXPECT_EQ(RunArguments({"import", table, "-o", Database(), "--map", good}).code, 0);
}

TEST_F(ImportTest, ReportsAMissingTable) {
  const Outcome outcome = RunArguments({"import", PathOf("no.csv"), "-o", Database(), "--map", kMap});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.err, "stockbook import: Cannot read '" + PathOf("no.csv") + "': No such file or directory.\n");
}

TEST_F(ImportTest, ReplacesBytesThatAreNoUtf8) {
  Import(kHeader + "B1,P1,caf\xE9,1,2026-01-04,1,,\n");
  EXPECT_EQ(One("SELECT 商品名称 FROM 商品设置"), "caf\xEF\xBF\xBD");
}

TEST_F(ImportTest, FillsBalancesFromAnUnsortedTable) {
  Import(kHeader +
         "B3,P1,Bolt,5,2026-03-04,1.5,7,X\nB1,P1,Bolt,0.1,2026-01-04,2,7,X\nC1,P1,Bolt,-2,2026-02-04,1,7,X\nB1,P2,Nut,"
         "0.2,2026-01-04,2,8,\n"
         "B4,P3,Pin,1,2026-03-09,1,,Y\n");
  EXPECT_EQ(CheckBalances(Database()), 5 + 1 + 4 + 4);
  EXPECT_EQ(Query("SELECT ID, DpID, PdID, AccPeriod, 年份, 月份, 上期库存单价, 上期库存数量, 上期库存金额, "
                  "TotalRevQuantity, TotalIssQuantity, TotalIssAccount "
                  "FROM 仓库余额表 WHERE PdID IN (1, 3) ORDER BY ID"),
            (Lines{"1|1|1|2026-01|2026|1|0|0|0|0|0.1|0.2", "2|1|1|2026-02|2026|2|2|-0.1|-0.2|2|0|0",
                   "3|1|1|2026-03|2026|3|0.947368421052632|1.9|1.8|0|5|7.5", "5|1|3|2026-03|2026|3|0|0|0|0|1|1"}));
}

}  // namespace
}  // namespace stockbook::app
