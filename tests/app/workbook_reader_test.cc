// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/inventory_fixture.h"
#include "app/zip_file.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_file.h"
#include "stockbook/import/workbook_styles.h"

namespace stockbook::app {
namespace {

using Lines = std::vector<std::string>;

class WorkbookTest : public InventoryTest {
 protected:
  void SetUp() override {
    if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  }

  // The rows of a sheet, fields joined by "|", with the numbers of the rows in front.
  static Lines Rows(const std::string& bytes, const std::string& sheet = {}) {
    WorkbookReader reader(ReadWorkbook(bytes, "t.xlsx"), sheet);
    Lines lines;
    CsvRecord record;
    while (reader.Next(record)) {
      std::string line = std::to_string(record.line) + ": ";
      for (size_t field = 0; field < record.fields.size(); ++field)
        line.append(field == 0 ? "" : "|").append(record.fields[field]);
      lines.push_back(line);
    }
    return lines;
  }
  static Lines SheetRows(const std::string& sheet) { return Rows(MakeWorkbook({sheet, {}, {}, {}, {}})); }
  static std::string Refusal(const std::string& bytes) {
    try {
      ReadWorkbook(bytes, "t.xlsx");
    } catch (const TableError& error) {
      EXPECT_NE(error.chinese().find("“t.xlsx”"), std::string::npos) << error.chinese();
      return error.what();
    }
    return "none";
  }
};

TEST_F(WorkbookTest, ReadsTextsWhereverTheyStand) {
  const std::string shared = "<si><t>共享</t></si><si><r><t>两</t></r><r><t>段</t></r><rPh><t>pinyin</t></rPh></si>";
  const std::string sheet =
      "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
      "<c r=\"C1\" t=\"inlineStr\"><is><t>在格中</t></is></c><c r=\"D1\" t=\"str\"><f>A1</f><v>result</v></c>"
      "<c r=\"E1\" t=\"b\"><v>1</v></c><c r=\"F1\" t=\"e\"><v>#N/A</v></c></row>";
  EXPECT_EQ(Rows(MakeWorkbook({sheet, shared, {}, {}, {}})), Lines{"1: 共享|两段|在格中|result|TRUE|#N/A"});
}

TEST_F(WorkbookTest, ReadsNumbersWithTheDigitsThatCount) {
  EXPECT_EQ(SheetRows("<row><c><v>0.10000000000000001</v></c><c><v>1E3</v></c><c><f>1/3</f><v>-2.5</v></c>"
                      "<c><v>6901234567890</v></c></row>"),
            Lines{"1: 0.1|1000|-2.5|6901234567890"});
}

TEST_F(WorkbookTest, KnowsDatesByTheFormatsOfTheirCells) {
  const std::string formats =
      "<numFmt numFmtId=\"164\" formatCode=\"yyyy&quot;年&quot;m&quot;月&quot;d&quot;日&quot;\"/>"
      "<numFmt numFmtId=\"165\" formatCode=\"0.00&quot;day&quot;[Red]\"/>";
  const std::string cell_formats =
      "<xf numFmtId=\"0\"/><xf numFmtId=\"164\"/><xf numFmtId=\"165\"/><xf numFmtId=\"22\"/>";
  const std::string sheet =
      "<row r=\"3\"><c r=\"A3\" s=\"0\"><v>45697</v></c><c r=\"B3\" s=\"1\"><v>45697</v></c>"
      "<c r=\"C3\" s=\"2\"><v>45697</v></c><c r=\"D3\" s=\"3\"><v>45697.351388888892</v></c>"
      "<c r=\"E3\" t=\"d\"><v>2025-02-09</v></c></row>";
  EXPECT_EQ(Rows(MakeWorkbook({sheet, {}, formats, cell_formats, {}})),
            Lines{"3: 45697|2025-02-09|45697|2025-02-09 08:26:00|2025-02-09"});
  EXPECT_EQ(Rows(MakeWorkbook(
                {"<row><c s=\"1\"><v>44235</v></c></row>", {}, formats, cell_formats, "<workbookPr date1904=\"1\"/>"})),
            Lines{"1: 2025-02-09"});
}

TEST_F(WorkbookTest, TellsDateFormatsFromOthers) {
  for (const char* code : {"yyyy-mm-dd", "d/m/yy", "[$-804]yyyy\"年\"m\"月\"", "m/d", "mmmm yyyy"})
    EXPECT_TRUE(IsDateFormat(170, code)) << code;
  for (const char* code : {"#,##0.00", "0.00\"yd\"", "[h]:mm", "\\d0", "General", "0_d", "@", "0;\"y\"d"})
    EXPECT_FALSE(IsDateFormat(170, code)) << code;
  EXPECT_TRUE(IsDateFormat(14, ""));
  EXPECT_TRUE(IsDateFormat(31, "")) << "a Chinese one";
  EXPECT_FALSE(IsDateFormat(4, ""));
}

TEST_F(WorkbookTest, LeavesOutEmptyRowsAndFillsUpShortOnes) {
  EXPECT_EQ(SheetRows("<row r=\"2\"><c r=\"A2\"><v>1</v></c><c r=\"C2\"><v>3</v></c></row><row r=\"4\"/>"
                      "<row r=\"7\"><c r=\"A7\"><v>7</v></c></row><row r=\"8\"><c r=\"E8\"><v>5</v></c></row>"),
            (Lines{"2: 1||3", "7: 7||", "8: ||||5"}));
}

TEST_F(WorkbookTest, PutsCellsInOrderOfWhichTheLastOneInAPlaceCounts) {
  EXPECT_EQ(SheetRows("<row r=\"2\"><c r=\"B2\"><v>22</v></c><c r=\"A2\"><v>21</v></c></row>"
                      "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"A1\"><v>11</v></c></row>"),
            (Lines{"1: 11", "2: 21|22"}));
}

TEST_F(WorkbookTest, ReadsTheFirstSheetThatIsNotEmptyOrTheNamedOne) {
  const std::string bytes = MakeWorkbook({"<row><c><v>1</v></c></row>", {}, {}, {}, {}});
  EXPECT_EQ(Rows(bytes), Lines{"1: 1"});
  EXPECT_EQ(Rows(bytes, "明细"), Lines{"1: 1"});
  EXPECT_EQ(Rows(bytes, "空"), Lines{});
  try {
    Rows(bytes, "another");
    FAIL();
  } catch (const TableError& error) {
    EXPECT_STREQ(error.what(), "The workbook has no sheet 'another'; it has 空, 明细.");
  }
}

TEST_F(WorkbookTest, SaysWhatIsNoWorkbook) {
  const std::string good = MakeWorkbook({"<row><c><v>1</v></c></row>", {}, {}, {}, {}});
  EXPECT_NE(Refusal(good.substr(0, good.size() / 2)).find("damaged or cut off"), std::string::npos);
  EXPECT_NE(Refusal(MakeZip({{"word/document.xml", "<a/>"}})).find("no workbook"), std::string::npos);
  EXPECT_NE(Refusal(MakeZip({{"xl/workbook.xml", "<a/>"}})).find("damaged"), std::string::npos);
  EXPECT_NE(Refusal(MakeWorkbook({"<row><c></row>", {}, {}, {}, {}})).find("damaged"), std::string::npos);
}

TEST_F(WorkbookTest, RefusesWhatUnpacksToTooMuch) {
  std::string bytes = MakeWorkbook({"<row><c><v>1</v></c></row>", {}, {}, {}, {}});
  // The size of the first part in the list at the end.
  const size_t list = bytes.find("PK\1\2");
  bytes.replace(list + 24, 4, std::string("\xFF\xFF\xFF\x7F"));
  EXPECT_NE(Refusal(bytes).find("more than 1 GiB"), std::string::npos);
}

TEST_F(WorkbookTest, RefusesATextWithoutEndInACell) {
  // A small file unpacks to it.
  const std::string endless(size_t{3} << 20, 'x');
  for (const WorkbookXml& xml :
       {WorkbookXml{"<row><c t=\"inlineStr\"><is><t>" + endless + "</t></is></c></row>", {}, {}, {}, {}},
        WorkbookXml{"<row><c t=\"s\"><v>0</v></c></row>", "<si><t>" + endless + "</t></si>", {}, {}, {}}}) {
    try {
      Rows(MakeWorkbook(xml));
      FAIL();
    } catch (const TableError& error) {
      EXPECT_NE(std::string(error.what()).find("a cell with more than 1 MiB of text"), std::string::npos);
    }
  }
}

TEST_F(WorkbookTest, SurvivesEveryCut) {
  const std::string good = MakeWorkbook({"<row><c t=\"inlineStr\"><is><t>x</t></is></c></row>", {}, {}, {}, {}});
  for (size_t size = 4; size < good.size(); size += 7) EXPECT_NE(Refusal(good.substr(0, size)), "none") << size;
}

TEST_F(WorkbookTest, ImportsASheetWhateverTheFileIsCalled) {
  const std::string sheet =
      "<row><c t=\"inlineStr\"><is><t>p</t></is></c><c t=\"inlineStr\"><is><t>d</t></is></c>"
      "<c t=\"inlineStr\"><is><t>q</t></is></c></row>"
      "<row><c><v>17850</v></c><c s=\"1\"><v>45697</v></c><c><v>1.5</v></c></row>"
      "<row><c><v>17850</v></c><c t=\"inlineStr\"><is><t>2025年2月10日</t></is></c>"
      "<c t=\"inlineStr\"><is><t>1,000</t></is></c></row>";
  const std::string table =
      Write("t.csv", MakeWorkbook({sheet, {}, {}, "<xf numFmtId=\"0\"/><xf numFmtId=\"14\"/>", {}}));
  const std::vector<std::string> base{"import", table, "-o", PathOf("new.db"), "--map", "product=p,date=d,quantity=q"};
  const Outcome outcome = RunArguments(base);
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_TRUE(outcome.out.starts_with("The table is sheet '明细' of a workbook.\nRead 2 lines: imported 2 "))
      << outcome.out;
  const OpenedInventory inventory(PathOf("new.db"));
  EXPECT_EQ(inventory.Lines("SELECT d.BillDate, r.数量 FROM 出库记录 r JOIN 出库目录 d ON r.BillID = d.BillID"),
            (Lines{"2025-02-09|1.5", "2025-02-10|1000"}));
  for (const std::vector<std::string>& option : {std::vector<std::string>{"--delimiter", ";"}, {"--encoding", "gbk"}}) {
    std::vector<std::string> arguments = base;
    arguments.insert(arguments.end(), option.begin(), option.end());
    const Outcome refused = RunArguments(arguments);
    EXPECT_EQ(refused.code, 2);
    EXPECT_TRUE(refused.err.starts_with("stockbook import: The table is a workbook (.xlsx), whatever its name"))
        << refused.err;
  }
}

}  // namespace
}  // namespace stockbook::app
