// SPDX-License-Identifier: MIT
// Hosts give columns the widths that their texts need.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "qt/application.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::FakeConnection;
using testing::JournalLine;

// A journal whose last bill has a long number, far below what is in view.
class FittedColumns : public WithApplication {
 protected:
  FittedColumns() : connection_(std::make_shared<FakeConnection>()) {
    std::vector<JournalLine> lines(300);
    lines.back().bill_no = "2004-03-05 销售出库单 XS20040305-000117-A";
    AnswerJournal(*connection_, lines);
    widget_.resize(1200, 600);
    widget_.SetConn(connection_);
    widget_.show();
  }

  int WidthOf(const char* key) const { return widget_.Grid().ColWidth(widget_.Grid().ColIndex(key)); }

  std::shared_ptr<FakeConnection> connection_;
  StockbookWidget widget_;
};

TEST_F(FittedColumns, HaveRoomForTextsOutOfView) {
  ASSERT_TRUE(widget_.Load(7, 0));
  const int usual = WidthOf("BillNo");
  const int hidden = WidthOf("RecID");
  widget_.FitColumns();
  EXPECT_GT(WidthOf("BillNo"), usual);
  EXPECT_EQ(WidthOf("RecID"), hidden) << "hidden columns stay";
  ASSERT_TRUE(widget_.Load(7, 0));
  EXPECT_EQ(WidthOf("BillNo"), usual) << "a layout has its own widths";
}

TEST_F(FittedColumns, AreFittedWithinALoadAsAfterIt) {
  ASSERT_TRUE(widget_.Load(7, 0));
  widget_.FitColumns();
  const int fitted = WidthOf("BillNo");
  QObject::connect(&widget_, &StockbookWidget::AfterFormatted, &widget_, &StockbookWidget::FitColumns);
  QObject::connect(&widget_, &StockbookWidget::AfterLoaded, &widget_, &StockbookWidget::FitColumns);
  ASSERT_TRUE(widget_.Load(7, 0));
  EXPECT_EQ(WidthOf("BillNo"), fitted);
  widget_.DefaultFormat();
  EXPECT_EQ(WidthOf("BillNo"), fitted);
}

TEST_F(FittedColumns, AreLeftAloneOnAnotherThread) {
  ASSERT_TRUE(widget_.Load(7, 0));
  const int usual = WidthOf("BillNo");
  std::thread([this] { widget_.FitColumns(); }).join();
  EXPECT_EQ(WidthOf("BillNo"), usual);
}

TEST_F(FittedColumns, AreThoseOfAGridAloneToo) {
  SheetWidget grid;
  grid.resize(900, 300);
  grid.grid().SetRows(500);
  grid.grid().SetCols(3);
  grid.grid().SetColWidth(2, 600);
  grid.grid().SetTextMatrix(499, 2, std::string(40, 'x'));
  grid.FitColumns();
  const int fitted = grid.grid().ColWidth(2);
  EXPECT_GT(fitted, 600);
  grid.grid().SetTextMatrix(499, 2, std::string(2000, 'x'));
  grid.FitColumns();
  EXPECT_GT(grid.grid().ColWidth(2), fitted);
  EXPECT_LE(grid.grid().ColWidth(2), 900 * 15) << "at most the width of the view";
}

}  // namespace
}  // namespace stockbook::qt
