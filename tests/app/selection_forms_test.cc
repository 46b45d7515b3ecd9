// SPDX-License-Identifier: MIT
#include "stockbook/selection/selection_forms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

// Two lines of a text, a number and a date, a total of two lines below them, and captions of two lines.
class CopiedForms : public ::testing::Test {
 protected:
  CopiedForms() {
    columns::ColumnBuilder texts;
    texts.AppendText("0042 \"急\" <b>&");
    texts.AppendText("=1+1");
    columns::ColumnBuilder numbers;
    numbers.AppendMoney(base::Money::FromUnits(100'326'789));
    numbers.AppendNull();
    columns::ColumnBuilder dates;
    dates.AppendDate(*base::Date::Parse("2025-02-09"));
    dates.AppendNull();
    std::vector<columns::Column> columns;
    columns.push_back(texts.Finish());
    columns.push_back(numbers.Finish());
    columns.push_back(dates.Finish());
    sheet_.SetCols(4);
    sheet_.LoadColumns(std::move(columns), 1);
    sheet_.SetTextMatrix(0, 1, "单据");
    sheet_.SetTextMatrix(0, 2, "收入\n金额");
    sheet_.SetTextMatrix(0, 3, "日期");
    sheet_.SetColDataType(2, platform::DataType::kCurrency);
    sheet_.SetColFormat(2, "#,##0.00");
    sheet_.AddItem("", 3);
    sheet_.SetTextMatrix(3, 1, "合计");
    sheet_.SetTextMatrix(3, 2, "-10,032.68\n20,000.00");
  }

  SelectionForms Of(int row1, int column1, int row2, int column2) const {
    return SelectionForms::Of(sheet_, {{row1, column1}, {row2, column2}});
  }
  SelectionForms OfAll() const { return Of(1, 1, 3, 3); }
  static size_t Count(const std::string& text, const std::string& what) {
    size_t count = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
    return count;
  }

  sheet::GridSheet sheet_;
};

TEST_F(CopiedForms, TheQuotedFormsHaveNumbersAsNumbersAndATotalInOneCell) {
  EXPECT_EQ(OfAll().csv,
            "\"单据\",\"收入金额\",\"日期\"\r\n"
            "\"0042 \"\"急\"\" <b>&\",10032.6789,\"2025-02-09\"\r\n"
            "\"'=1+1\",,\r\n"
            "\"合计\",\"-10,032.68\n20,000.00\",\r\n");
  EXPECT_EQ(OfAll().tab_separated,
            "\"单据\"\t\"收入金额\"\t\"日期\"\r\n"
            "\"0042 \"\"急\"\" <b>&\"\t10032.6789\t\"2025-02-09\"\r\n"
            "\"'=1+1\"\t\t\r\n"
            "\"合计\"\t\"-10,032.68\n20,000.00\"\t\r\n");
}

TEST_F(CopiedForms, TheTableHasARowForEachRowAndACellForEachCell) {
  const std::string html = OfAll().html;
  EXPECT_EQ(Count(html, "<tr>"), 4U);
  EXPECT_EQ(Count(html, "</tr>"), 4U);
  EXPECT_EQ(Count(html, "<td"), 12U);
  EXPECT_EQ(Count(html, "</td>"), 12U);
}

TEST_F(CopiedForms, TheTableTellsNumbersWithAllDecimalsAndTheirFormat) {
  const std::string html = OfAll().html;
  EXPECT_NE(html.find("sdval=\"10032.6789\" sdnum=\"2052;0;#,##0.00\""), std::string::npos) << html;
  EXPECT_NE(html.find("x:num=\"10032.6789\""), std::string::npos) << html;
  EXPECT_NE(html.find("mso-number-format:'\\#\\,\\#\\#0\\.00'"), std::string::npos) << html;
  EXPECT_NE(html.find(">10,032.68</td>"), std::string::npos) << html;
}

TEST_F(CopiedForms, TheTableKeepsTextsAsTexts) {
  const std::string html = OfAll().html;
  EXPECT_NE(html.find("sdnum=\"2052;0;@\" style=\"mso-number-format:'\\@'\">0042 &quot;急&quot; &lt;b&gt;&amp;</td>"),
            std::string::npos)
      << html;
  EXPECT_NE(html.find(">-10,032.68<br>20,000.00</td>"), std::string::npos) << html;
  EXPECT_NE(html.find("<td>2025-02-09</td>"), std::string::npos) << "a spreadsheet makes a date of it: " << html;
  EXPECT_NE(html.find("br{mso-data-placement:same-cell}"), std::string::npos);
  EXPECT_NE(html.find("charset=utf-8"), std::string::npos);
}

TEST_F(CopiedForms, HiddenRowsAndColumnsAreLeftOut) {
  sheet_.SetColHidden(2, true);
  sheet_.SetRowHidden(2, true);
  EXPECT_EQ(OfAll().csv,
            "\"单据\",\"日期\"\r\n"
            "\"0042 \"\"急\"\" <b>&\",\"2025-02-09\"\r\n"
            "\"合计\",\r\n");
}

TEST_F(CopiedForms, AWrittenNumberIsANumberAndAWrittenTextIsNot) {
  sheet_.SetTextMatrix(1, 2, "1234.5");
  sheet_.SetTextMatrix(2, 2, "-");
  EXPECT_EQ(Of(1, 2, 2, 2).csv, "\"收入金额\"\r\n1234.5\r\n\"-\"\r\n");
}

TEST_F(CopiedForms, OneCellHasItsCaptionToo) { EXPECT_EQ(Of(1, 2, 1, 2).csv, "\"收入金额\"\r\n10032.6789\r\n"); }

TEST_F(CopiedForms, WithoutACurrentCellThereIsNothing) {
  const SelectionForms none = SelectionForms::Of(sheet_, {});
  EXPECT_EQ(none.html + none.csv + none.tab_separated, "");
}

}  // namespace
}  // namespace stockbook::app
