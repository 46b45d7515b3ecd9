// SPDX-License-Identifier: MIT
// What the window shows after a load that it asked for: whole names, no amounts that are hidden, and the journal that
// was there when the load fails.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QCheckBox>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Reloads : public WindowTest {
 protected:
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  int FirstLine() {
    int row = grid().FixedRows();
    while (row < grid().Rows() && Cell(row, keys::kPdID).empty()) ++row;
    return row;
  }
  QCheckBox& Box(const QString& text) {
    for (QCheckBox* box : window_->bar().findChildren<QCheckBox*>())
      if (box->text().startsWith(text)) return *box;
    throw std::out_of_range("there is no such box");
  }
  static JournalOptions Supplier(int32_t supplier) {
    JournalOptions options;
    options.journal_type = 1;
    options.dp_id = supplier;
    return options;
  }
  // A journal whose statement fails: a class without members leaves it without its condition.
  static JournalOptions Failing() {
    JournalOptions options;
    options.journal_type = 1;
    options.key_id = 1;
    options.dp_code = "no such";
    return options;
  }
};

TEST_F(Reloads, TellsProductsApartByWhatIsHidden) {
  Open();
  ASSERT_TRUE(window_->LoadJournal(Supplier(1)).loaded);
  const int row = FirstLine();
  ASSERT_LT(row, grid().Rows());
  const std::string parts =
      Cell(row, keys::kModel) + "[" + Cell(row, keys::kStandard) + "](" + Cell(row, keys::kMeasure) + ")";
  EXPECT_TRUE(Cell(row, keys::kProductName).ends_with(" " + parts)) << Cell(row, keys::kProductName);
}

TEST_F(Reloads, LeavesOutOfTheNameWhatTheUserHasShown) {
  Open();
  window_->LoadJournal(Supplier(1));
  grid().SetColHidden(grid().ColIndex(keys::kModel), false);
  ASSERT_TRUE(window_->LoadJournal(Supplier(1)).loaded);
  const int row = FirstLine();
  ASSERT_FALSE(grid().ColHidden(grid().ColIndex(keys::kModel)));
  const std::string parts = "[" + Cell(row, keys::kStandard) + "](" + Cell(row, keys::kMeasure) + ")";
  EXPECT_TRUE(Cell(row, keys::kProductName).ends_with(" " + parts)) << Cell(row, keys::kProductName);
  EXPECT_EQ(Cell(row, keys::kProductName).find(Cell(row, keys::kModel)), std::string::npos);
}

TEST_F(Reloads, NeverOffersTaxColumnsWithHiddenAmounts) {
  Open();
  window_->LoadFirstJournal();
  QCheckBox& tax = Box(QStringLiteral("税额"));
  QCheckBox& hide = Box(QStringLiteral("隐藏金额"));
  tax.click();
  EXPECT_FALSE(grid().ColHidden(grid().ColIndex(keys::kTax)));
  hide.click();
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex(keys::kTax)));
  EXPECT_FALSE(tax.isChecked() || tax.isEnabled());
  EXPECT_FALSE(window_->bar().Options().allow_inv);
  hide.click();
  EXPECT_TRUE(tax.isEnabled());
  JournalOptions both;
  both.key_id = 1;
  both.allow_inv = both.acc_restrict = true;
  window_->bar().SetOptions(both);
  EXPECT_TRUE(window_->bar().Options().acc_restrict);
  EXPECT_FALSE(window_->bar().Options().allow_inv);
}

TEST_F(Reloads, PutTheOldJournalBackWhenTheNewOneFails) {
  Open();
  window_->LoadFirstJournal();
  const std::string title = Title();
  const int rows = grid().Rows();
  const std::string stock = Cell(rows - 2, keys::kStoQty);
  grid().Select(5, grid().ColIndex(keys::kStoAcc));
  const LoadReport report = window_->LoadJournal(Failing());
  EXPECT_FALSE(report.loaded);
  EXPECT_EQ(window_->message().Text().toStdString(), LoadError(report));
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Rows(), rows);
  EXPECT_EQ(Cell(rows - 2, keys::kStoQty), stock);
  EXPECT_EQ(grid().Row(), 5) << "the place in it, too";
  EXPECT_EQ(stockbook().control().JournalType(), base::MaterialJournal);
  EXPECT_EQ(stockbook().control().KeyID(), 1);
  EXPECT_EQ(stockbook().control().dpCode(), "");
}

TEST_F(Reloads, PutTheOldRangeBackWithTheOldJournal) {
  Open();
  JournalOptions part;
  part.key_id = 1;
  part.range.from = RangeBound::OfPeriod({2025, 3});
  ASSERT_TRUE(window_->LoadJournal(part).loaded);
  const std::string title = Title();
  const std::string brought_forward = Cell(grid().FixedRows(), keys::kStoQty);
  EXPECT_FALSE(window_->LoadJournal(Failing()).loaded);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(window_->views().range(), part.range);
  EXPECT_EQ(Cell(grid().FixedRows(), keys::kBillNo), "2025年03月承前");
  EXPECT_EQ(Cell(grid().FixedRows(), keys::kStoQty), brought_forward);
  EXPECT_TRUE(grid().RowHidden(FirstLine())) << "of January";
}

TEST_F(Reloads, KeepTheJournalOfADatabaseThatIsBusy) {
  Open();
  window_->LoadJournal(Supplier(2));
  const std::string title = Title();
  const std::string caption = stockbook().control().Caption();
  const int rows = grid().Rows();
  const std::string total = Cell(rows - 1, keys::kRevQty);
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("sample.db").c_str(), &writer), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(writer, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  emit window_->bar().LoadWanted();
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(stockbook().control().Caption(), caption);
  EXPECT_EQ(grid().Rows(), rows);
  EXPECT_EQ(Cell(rows - 1, keys::kRevQty), total);
  EXPECT_NE(window_->message().Text().toStdString(), "已读入：" + caption) << "the error is told";
  EXPECT_EQ(sqlite3_exec(writer, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(writer);
  emit window_->bar().LoadWanted();
  EXPECT_EQ(window_->message().Text().toStdString(), "已读入：" + caption);
  EXPECT_EQ(grid().Rows(), rows);
}

TEST_F(Reloads, NameNoJournalInTheTitleWhenNoneIsShown) {
  Open();
  EXPECT_FALSE(window_->LoadJournal(Failing()).loaded);
  EXPECT_EQ(Title(), "sample.db");
  EXPECT_EQ(stockbook().control().Caption(), "");
}

}  // namespace
}  // namespace stockbook::app
