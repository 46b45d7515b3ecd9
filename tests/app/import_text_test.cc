// SPDX-License-Identifier: MIT
// `import` of tables as people write them: encodings, spellings, and what is no table.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/inventory_fixture.h"

namespace stockbook::app {
namespace {

using std::string_view_literals::operator""sv;
using Lines = std::vector<std::string>;

// 螺栓 in GBK, Big5 and GB18030's own four bytes for a character beyond GBK.
const std::string kBoltInGbk = "\xC2\xDD\xCB\xA8";
const std::string kBoltInBig5 = "\xC1\xB3\xAE\xEA";
const std::string kBeyondGbk = "\x81\x39\xEE\x39";

class ImportText : public InventoryTest {
 protected:
  std::string Database() const { return PathOf("stock.db"); }
  Outcome Import(const std::string& table, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"import", "-", "-o", Database(), "--map", "product=p,date=d,quantity=q"});
    return RunArguments(options, table);
  }
  Lines Query(const std::string& sql) const { return OpenedInventory(Database()).Lines(sql); }
};

TEST_F(ImportText, RecognisesGbkAndNamesIt) {
  const Outcome outcome = Import("p,d,q\n" + kBoltInGbk + ",2025-01-02,1\n");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_TRUE(outcome.out.starts_with("The table is GBK text.\nRead 1 lines: imported 1 ")) << outcome.out;
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), Lines{"螺栓"});
  const Outcome beyond = Import("p,d,q\n" + kBoltInGbk + kBeyondGbk + ",2025-01-02,1\n");
  EXPECT_TRUE(beyond.out.starts_with("The table is GB18030 text.\n")) << beyond.out;
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), Lines{"螺栓㐀"});
}

TEST_F(ImportText, RecognisesGbkWhereACharacterIsCutInTwo) {
  // As programs write it whose fields have so many bytes.
  const Outcome outcome = Import("p,d,q\n" + kBoltInGbk + "\xC2,2025-01-02,1\n" + kBoltInGbk + ",2025-01-02,1\n");
  EXPECT_TRUE(outcome.out.starts_with("The table is GBK text.\n")) << outcome.out;
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), (Lines{"螺栓\uFFFD", "螺栓"}));
  // And the same of UTF-8.
  ASSERT_EQ(Import("p,d,q\n螺栓\xE8,2025-01-02,1\n螺栓,2025-01-02,1\n").code, 0);
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), (Lines{"螺栓\uFFFD", "螺栓"}));
}

TEST_F(ImportText, SaysHowManyLinesHaveDamagedTexts) {
  const Outcome outcome = Import("p,d,q\n" + kBoltInGbk + "\xC2,2025-01-02,1\n" + kBoltInGbk + ",2025-01-02,1\n");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err,
            "stockbook import: Texts of 1 line hold bytes that are no GBK, the first in line 2; they are imported as "
            "\uFFFD; where there are many of them, say by --encoding what the table is.\n");
  EXPECT_EQ(Import("p,d,q\n" + kBoltInGbk + ",2025-01-02,1\n").err, "");
}

TEST_F(ImportText, FindsMappedColumnsWhoseNamesAreInGbk) {
  const Outcome outcome = RunArguments({"import", "-", "-o", Database(), "--map", "product=螺栓,date=d,quantity=q"},
                                       kBoltInGbk + ",d,q\nP1,2025-01-02,1\n");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
}

TEST_F(ImportText, ReadsTheEncodingThatIsGiven) {
  const Outcome outcome = Import("p,d,q\n" + kBoltInBig5 + ",2025-01-02,1\n", {"--encoding", "big5"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_TRUE(outcome.out.starts_with("The table is Big5 text.\n")) << outcome.out;
  const Outcome unknown = Import("p,d,q\n", {"--encoding", "klingon"});
  EXPECT_EQ(unknown.code, 2);
  EXPECT_NE(unknown.err.find("--encoding must be utf-8, gb18030"), std::string::npos) << unknown.err;
}

TEST_F(ImportText, ReadsUtf16ThatSpreadsheetsWrite) {
  std::string table = "\xFF\xFE";
  for (const char c : std::string("p\td\tq\nP1\t2025-01-02\t1\n")) table += std::string(1, c) + '\0';
  const Outcome outcome = Import(table, {"--delimiter", "tab"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), Lines{"P1"});
}

TEST_F(ImportText, ReadsNumbersAndDaysInTheSpellingsOfPeople) {
  const Outcome outcome =
      RunArguments({"import", "-", "-o", Database(), "--map", "product=p,date=d,quantity=q,price=m"},
                   "p,d,q,m\nA,20250102,\"1,234.5\",¥2\nB,2025年2月9日,１２,\"￥1,000.00\"\nC,2025.2.9,(3),2元\n");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(Query("SELECT d.BillDate, r.数量, r.除税单价 FROM 出库记录 r JOIN 出库目录 d ON r.BillID = d.BillID"),
            (Lines{"2025-01-02|1234.5|2", "2025-02-09|12|1000"}));
  EXPECT_EQ(Query("SELECT 数量 FROM 入库记录"), Lines{"3"}) << "brackets are a minus, and so a return";
}

TEST_F(ImportText, LeavesOutBlanksOfAnyWidthAroundATextAndACaption) {
  ASSERT_EQ(Import("p　,\u00A0d,q \n　P1\u00A0,2025-01-02,　1\nP1,2025-01-02,2\n").err, "");
  EXPECT_EQ(Query("SELECT 商品编号 FROM 商品设置"), Lines{"P1"});
}

TEST_F(ImportText, ReadsADecimalCommaWhereItSeparatesNoFields) {
  const std::string table = "p;d;q\nA;2025-01-02;3,5\nB;2025-01-02;1.234,56\n";
  EXPECT_EQ(Import(table, {"--delimiter", ";"}).code, 0);
  EXPECT_EQ(Query("SELECT 数量 FROM 出库记录"), (Lines{"3.5", "1234.56"}));
}

TEST_F(ImportText, DoesNotGuessWhatACommaBeforeThreeDigitsMeans) {
  const std::string table = "p;d;q\nA;2025-01-02;1,234\nB;2025-01-02;1\n";
  const Outcome outcome = Import(table, {"--delimiter", ";"});
  EXPECT_NE(outcome.err.find("the quantity '1,234' may have thousands or decimals behind its comma; say which by "
                             "--decimal point or comma"),
            std::string::npos)
      << outcome.err;
  ASSERT_EQ(Import(table, {"--delimiter", ";", "--decimal", "comma"}).err, "");
  EXPECT_EQ(Query("SELECT 数量 FROM 出库记录"), (Lines{"1.234", "1"}));
  ASSERT_EQ(Import(table, {"--delimiter", ";", "--decimal", "point"}).err, "");
  EXPECT_EQ(Query("SELECT 数量 FROM 出库记录"), (Lines{"1234", "1"}));
}

TEST_F(ImportText, SaysThatADayDoesNotExist) {
  const Outcome outcome = Import("p,d,q\nA,2025-02-30,1\nB,2025-01-02,1\n");
  EXPECT_EQ(outcome.err,
            "stockbook import: Line 2 cannot be imported: the date '2025-02-30' does not exist: that month has only 28 "
            "days; it is skipped.\n");
}

TEST_F(ImportText, SaysWhichDelimiterTheHeaderLineHas) {
  for (const auto& [text, name] : {std::pair{";", "';'"}, {"\t", "tab"}, {"|", "'|'"}}) {
    const std::string mark(text);
    const Outcome outcome = Import("p" + mark + "d" + mark + "q\n");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_NE(outcome.err.find("the delimiter is wrong, give --delimiter " + std::string(name) + "."),
              std::string::npos)
        << outcome.err;
  }
  EXPECT_NE(Import("p,d,q\n", {"--delimiter", ";"}).err.find("give --delimiter ','."), std::string::npos);
}

TEST_F(ImportText, SaysWhatIsNoTable) {
  for (const auto& [bytes, sentence] : {std::pair{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more"sv,
                                                  "a workbook of the old kind (.xls) or one with a password"sv},
                                        {"%PDF-1.7", "a PDF document"},
                                        {"\xFF\xFE\0\0p\0\0\0"sv, "UTF-32 text; save it as UTF-8"},
                                        {"\0\0\xFE\xFF\0\0\0p"sv, "UTF-32 text; save it as UTF-8"},
                                        {"SQLite format 3", "an inventory already"}}) {
    const Outcome outcome = Import(std::string(bytes));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.starts_with("stockbook import: Cannot import 'standard input': it is ")) << outcome.err;
    EXPECT_NE(outcome.err.find(sentence), std::string::npos) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
    EXPECT_TRUE(Files().empty());
  }
}

TEST_F(ImportText, RefusesASheetOfWhatIsText) {
  const Outcome outcome = Import("p,d,q\nA,2025-01-02,1\n", {"--sheet", "one"});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_NE(outcome.err.find("no workbook: leave --sheet out"), std::string::npos) << outcome.err;
}

TEST_F(ImportText, FilesLinesWithoutAPartnerUnderOneOfTheirOwn) {
  const std::string table = "p,d,q,c\nA,2025-01-02,1,K1\nA,2025-01-03,2,\nA,2025-01-04,-3,\n";
  const auto import = [&](const char* direction) {
    EXPECT_EQ(RunArguments({"import", "-", "-o", Database(), "--map", "product=p,date=d,quantity=q,partner=c",
                            "--direction", direction},
                           table)
                  .code,
              0);
  };
  import("issue");
  EXPECT_EQ(Query("SELECT KSID, 企业名称, ClassCode FROM 客户资料"), (Lines{"1|K1|01", "2|(无客户)|01"}));
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 厂商资料"), Lines{"2|(无客户)"}) << "it gave something back";
  EXPECT_EQ(Query("SELECT ksID, 数量 FROM 出库记录"), (Lines{"1|1", "2|2"}));
  import("receipt");
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 厂商资料"), (Lines{"1|K1", "2|(无供应商)"}));
}

TEST_F(ImportText, FilesAllLinesUnderOnePartnerWhereNoColumnNamesAny) {
  ASSERT_EQ(Import("p,d,q\nA,2025-01-02,1\n").code, 0);
  EXPECT_EQ(Query("SELECT KSID, 企业名称 FROM 客户资料"), Lines{"1|(无客户)"});
}

}  // namespace
}  // namespace stockbook::app
