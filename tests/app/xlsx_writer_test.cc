// SPDX-License-Identifier: MIT
#include "stockbook/export/xlsx_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "app/inventory_fixture.h"
#include "app/zip_file.h"
#include "base/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/value.h"
#include "stockbook/command/plain_desk.h"
#include "stockbook/import/workbook_cells.h"
#include "stockbook/import/workbook_file.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;
using Row = std::vector<std::string>;

class XlsxTest : public InventoryTest {
 protected:
  void SetUp() override {
    if (!CanWriteXlsx()) GTEST_SKIP() << "built without libxlsxwriter";
    WriteSampleInventory(PathOf("sample.db"), {});
    JournalOptions options;
    options.key_id = 1;
    ASSERT_TRUE(LoadJournal(desk_.control(), OpenInventory(PathOf("sample.db")), options).loaded);
  }

  sheet::GridSheet& grid() { return const_cast<sheet::GridSheet&>(desk_.sheet()); }
  std::string Written(const XlsxOptions& options = {}) {
    std::ostringstream out;
    EXPECT_TRUE(WriteXlsx(grid(), options, out));
    return out.str();
  }
  std::string SheetXml(const std::string& number = "1") {
    return ZipPart(Written(), "xl/worksheets/sheet" + number + ".xml");
  }
  // The cells of a sheet as texts, by row.
  static std::vector<Row> Cells(const std::string& bytes, size_t sheet = 0) {
    const Workbook workbook = ReadWorkbook(bytes, "t.xlsx");
    EXPECT_LT(sheet, workbook.sheets.size());
    std::vector<Row> rows;
    for (const WorkbookCell& cell : workbook.sheets.at(sheet).cells) {
      rows.resize(static_cast<size_t>(cell.row) + 1);
      rows.back().resize(static_cast<size_t>(cell.column) + 1);
      rows.back().back() = workbook.texts.At(cell.text);
    }
    return rows;
  }
  // The grid's row of the bill column's text.
  int RowOf(const std::string& bill) {
    const int column = grid().ColIndex(keys::kBillNo);
    for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
      if (grid().TextMatrix(row, column) == bill) return row;
    }
    ADD_FAILURE() << "no row " << bill;
    return -1;
  }
  // A number or text of the grid as a workbook has it.
  std::string Stored(int row, const char* key) {
    const std::string text = grid().TextMatrix(row, grid().ColIndex(key));
    const auto number = base::Value(text).Number();
    return number ? base::Value(*number).Text() : text;
  }

  PlainDesk desk_;
};

std::string At(const Row& row, size_t column) { return column < row.size() ? row[column] : std::string(); }

TEST_F(XlsxTest, WritesEveryLineWithItsDayItsBillAndItsNumbers) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const std::vector<Row> rows = Cells(Written());
  EXPECT_EQ(rows.front(), (Row{"期间", "日期", "单据", "单据编号", "类型", "摘要", "单价", "入库/出库数量",
                               "入库/出库金额", "库存单价", "库存数量", "库存金额"}));
  size_t at = 1;
  int lines = 0;
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    const bool is_total = Stored(row, keys::kBillNo).ends_with("合计");
    if (is_total) {
      at += 2;
      continue;
    }
    const Row& written = rows.at(at++);
    if (grid().RowOutlineLevel(row) == 0) continue;
    ++lines;
    const std::string bill = At(written, 1) + " " + At(written, 2) + " " + At(written, 3);
    EXPECT_EQ(bill, Stored(row, keys::kBillNo)) << row;
    EXPECT_EQ(At(written, 0), Stored(row, keys::kPeriod)) << row;
    const char* const numbers[] = {keys::kPrice,    keys::kQuantity, keys::kAccount,
                                   keys::kStoPrice, keys::kStoQty,   keys::kStoAcc};
    for (size_t number = 0; number < std::size(numbers); ++number)
      EXPECT_EQ(At(written, 6 + number), Stored(row, numbers[number])) << row << numbers[number];
  }
  EXPECT_GT(lines, 100);
  EXPECT_EQ(at, rows.size());
}

TEST_F(XlsxTest, MakesOneRowOfEachSumOfATotal) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const int total = RowOf("2025年02月合计");
  const std::string sums = grid().TextMatrix(total, grid().ColIndex(keys::kQuantity));
  const size_t end = sums.find('\n');
  const std::vector<Row> rows = Cells(Written());
  const auto found =
      std::find_if(rows.begin(), rows.end(), [](const Row& row) { return At(row, 0) == "2025年02月合计（本期）"; });
  ASSERT_NE(found, rows.end());
  const auto bare = [](const std::string& text) {
    return base::Value(*base::Value(base::ReplaceAll(text, ",", "")).Number()).Text();
  };
  EXPECT_EQ(At(*found, 7), bare(sums.substr(0, end)));
  EXPECT_EQ(At(*(found + 1), 0), "2025年02月合计（累计）");
  EXPECT_EQ(At(*(found + 1), 7), bare(sums.substr(end + 1)));
}

TEST_F(XlsxTest, KeepsNumbersAndDaysAsNumbersInTheirFormats) {
  const std::string book = Written();
  const std::string styles = ZipPart(book, "xl/styles.xml");
  EXPECT_NE(styles.find("formatCode=\"#,##0.00\""), std::string::npos);
  EXPECT_NE(styles.find("formatCode=\"yyyy-mm-dd\""), std::string::npos);
  const std::string sheet = ZipPart(book, "xl/worksheets/sheet1.xml");
  // The first line: its day, and its price.
  const size_t line = sheet.find("<row r=\"4\"");
  const std::string cells = sheet.substr(line, sheet.find("</row>", line) - line);
  EXPECT_NE(cells.find("<v>45658</v>"), std::string::npos) << cells;
  EXPECT_NE(cells.find("<v>7.42</v>"), std::string::npos) << cells;
}

TEST_F(XlsxTest, FoldsWhatTheGridHasFolded) {
  const std::string open = SheetXml();
  EXPECT_NE(open.find("outlineLevel=\"1\""), std::string::npos);
  EXPECT_NE(open.find("summaryBelow=\"0\""), std::string::npos) << "a period stands above its lines";
  EXPECT_EQ(open.find("hidden=\"1\""), std::string::npos);
  grid().SetIsCollapsed(RowOf("2025-02"), true);
  const std::string folded = SheetXml();
  EXPECT_NE(folded.find("collapsed=\"1\""), std::string::npos);
  EXPECT_NE(folded.find("hidden=\"1\""), std::string::npos);
  const auto rows = [](const std::string& xml) {
    size_t count = 0;
    for (size_t at = xml.find("<row "); at != std::string::npos; at = xml.find("<row ", at + 1)) ++count;
    return count;
  };
  EXPECT_EQ(rows(folded), rows(open)) << "nothing is lost";
}

TEST_F(XlsxTest, LeavesOutHiddenLinesOfClosedPeriodsAsWell) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const size_t before = Cells(Written()).size();
  const int node = RowOf("2025-02");
  grid().SetRowHidden(node + 1, true);
  grid().SetIsCollapsed(node, true);
  EXPECT_EQ(Cells(Written()).size(), before - 1);
}

TEST_F(XlsxTest, LeavesOutRowsAndColumnsThatAreHidden) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const size_t before = Cells(Written()).size();
  grid().SetRowHidden(RowOf("2025-02"), true);
  grid().SetColHidden(grid().ColIndex(keys::kExplain), true);
  const std::vector<Row> rows = Cells(Written());
  EXPECT_EQ(rows.size(), before - 1);
  EXPECT_EQ(std::count(rows.front().begin(), rows.front().end(), "摘要"), 0);
  EXPECT_EQ(rows.front().size(), 11U);
}

TEST_F(XlsxTest, KeepsTheCaptionsAndTheFrozenColumnsInView) {
  EXPECT_NE(SheetXml().find("<pane ySplit=\"1\" topLeftCell=\"A2\""), std::string::npos);
  grid().SetFrozenCols(grid().ColIndex(keys::kBillNo));
  EXPECT_NE(SheetXml().find("xSplit=\"4\" ySplit=\"1\""), std::string::npos) << "the four parts of the bill";
}

TEST_F(XlsxTest, GoesOnOnFurtherSheetsWhereOneIsFull) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const size_t all = Cells(Written()).size();
  XlsxOptions options;
  options.most_rows = 100;
  const std::string book = Written(options);
  const Workbook workbook = ReadWorkbook(book, "t.xlsx");
  size_t rows = 0;
  for (size_t sheet = 0; sheet < workbook.sheets.size(); ++sheet) {
    const std::vector<Row> cells = Cells(book, sheet);
    EXPECT_LE(cells.size(), 100U);
    EXPECT_EQ(cells.front().front(), "期间");
    rows += cells.size() - 1;
  }
  EXPECT_GT(workbook.sheets.size(), 1U);
  EXPECT_EQ(rows, all - 1);
}

TEST_F(XlsxTest, WritesTextsAsTextsWhateverTheyBeginWith) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const int row = grid().FixedRows() + 2;
  grid().SetTextMatrix(row, grid().ColIndex(keys::kExplain), "=1+1 & <b>\"");
  const std::string book = Written();
  EXPECT_EQ(At(Cells(book).at(3), 5), "=1+1 & <b>\"");
  EXPECT_EQ(ZipPart(book, "xl/worksheets/sheet1.xml").find("<f>"), std::string::npos);
}

TEST_F(XlsxTest, ShowsADashWhereAmountsAreRestricted) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  JournalOptions options;
  options.key_id = 1;
  options.acc_restrict = true;
  ASSERT_TRUE(LoadJournal(desk_.control(), OpenInventory(PathOf("sample.db")), options).loaded);
  EXPECT_EQ(At(Cells(Written()).at(3), 8), "-");
}

TEST_F(XlsxTest, WritesNothingWhenItIsEnded) {
  XlsxOptions options;
  options.goes_on = [](int /*row*/) { return false; };
  std::ostringstream none;
  JournalOptions all;
  all.journal_type = 2;
  ASSERT_TRUE(LoadJournal(desk_.control(), OpenInventory(PathOf("sample.db")), all).loaded);
  ASSERT_GT(grid().Rows(), 1001) << "it is asked every thousand rows";
  EXPECT_FALSE(WriteXlsx(grid(), options, none));
  EXPECT_EQ(none.str(), "");
}

TEST_F(XlsxTest, NamesTheJournalInItsPropertiesAndAboveEachPage) {
  XlsxOptions options;
  options.title = "六角螺栓 M8 & Co.";
  const std::string book = Written(options);
  EXPECT_NE(ZipPart(book, "docProps/core.xml").find("<dc:title>六角螺栓 M8 &amp; Co.</dc:title>"), std::string::npos);
  EXPECT_NE(ZipPart(book, "xl/worksheets/sheet1.xml").find("<oddHeader>&amp;C六角螺栓 M8 &amp;&amp; Co.</oddHeader>"),
            std::string::npos);
}

TEST_F(XlsxTest, LeavesNoTemporaryFile) {
  setenv("TMPDIR", PathOf("").c_str(), 1);
  const auto before = Files();
  Written();
  unsetenv("TMPDIR");
  EXPECT_EQ(Files(), before);
}

}  // namespace
}  // namespace stockbook::app
