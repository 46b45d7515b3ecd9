// SPDX-License-Identifier: MIT
#include "stockbook/find/journal_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "app/shown_rows.h"
#include "stockbook/platform/error.h"
#include "support/sample_ledger.h"

namespace stockbook::app {
namespace {

using testing::SampleLedger;

// The sample ledger with so many lines that its bill numbers are too many to be searched one by one.
class SearchedLedger : public ::testing::Test {
 protected:
  SearchedLedger() {
    SampleLedger({12, 400}).Fill(sheet_);
    search_ = std::make_unique<JournalSearch>(sheet_);
  }

  std::vector<int> Found(const std::string& text, FindOptions options = {}) { return search_->Find({text, options}); }
  std::vector<int> Expected(const std::string& text) const { return RowsThatShow(sheet_, SplitWords(text)); }

  sheet::GridSheet sheet_;
  std::unique_ptr<JournalSearch> search_;
};

TEST_F(SearchedLedger, FindsWhatAPlainLoopFinds) {
  for (const char* text :
       {"1",           "12",      "123",       "98",    "0.0", "5,0",      "R-0",    "r-01",      "入库单",
        "出库单 c-00", "合计",    "新华",      "1,",    "-",   ".5",       "1.2",    "2004-03",   "仓",
        "12 98",       "入库 12", "露天 0.00", "00 11", "7 9", "123 新华", "不存在", "12 不存在", "项目部 2004-1"}) {
    search_->Forget();
    EXPECT_EQ(Found(text), Expected(text)) << text;
  }
}

TEST_F(SearchedLedger, FindsAsManyLetterByLetterAsAtOnce) {
  for (const std::string& text : {std::string("12,345"), std::string("2004-1"), std::string("1.21 5.0"),
                                  std::string("c-012 新华"), std::string("00.0")}) {
    for (size_t length = 1; length <= text.size(); ++length) {
      const std::string typed = text.substr(0, length);
      // A Chinese character is typed as a whole.
      if (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) continue;
      EXPECT_EQ(Found(typed), Expected(typed)) << typed;
    }
    // And back again.
    EXPECT_EQ(Found(text.substr(0, 2)), Expected(text.substr(0, 2)));
  }
}

TEST_F(SearchedLedger, AnAmountThatIsHiddenIsNotFound) {
  const std::string amount = sheet_.DisplayText(sheet_.RowOfRecord(5), testing::kLedgerStoAcc);
  ASSERT_FALSE(Found(amount).empty());
  sheet_.ReplaceLoadedText(testing::kLedgerStoAcc,
                           columns::Column::Constant(base::Value(std::string("-")), sheet_.RecordCount()));
  search_->Forget();
  EXPECT_EQ(Found(amount), Expected(amount));
  EXPECT_LT(Found(amount).size(), sheet_.RecordCount());
  EXPECT_GE(Found("-").size(), sheet_.RecordCount());
}

TEST_F(SearchedLedger, ANumberIsFoundAsItsColumnShowsIt) {
  const int column = testing::kLedgerStoAcc;
  const int row = sheet_.RowOfRecord(2000);
  const std::string shown = sheet_.DisplayText(row, column);
  ASSERT_NE(shown.find(','), std::string::npos);
  const std::vector<int> rows = Found(shown);
  EXPECT_NE(std::find(rows.begin(), rows.end(), row), rows.end());
  EXPECT_EQ(Found(WithoutCommas(shown)), Expected(WithoutCommas(shown)));
  sheet_.SetColFormat(column, "0.0000");
  search_->Forget();
  const std::string longer = sheet_.DisplayText(row, column);
  EXPECT_NE(longer, shown);
  EXPECT_EQ(Found(longer), Expected(longer));
  EXPECT_FALSE(Found(longer).empty());
}

TEST_F(SearchedLedger, ColumnsThatAreHiddenAreNotSearched) {
  EXPECT_FALSE(Found("露天").empty());
  sheet_.SetColHidden(testing::kLedgerDepot, true);
  EXPECT_TRUE(Found("露天").empty());
  sheet_.SetColHidden(testing::kLedgerDepot, false);
  EXPECT_EQ(Found("露天"), Expected("露天"));
}

TEST_F(SearchedLedger, ClosedPeriodsAreSearchedAndHiddenRowsAreNot) {
  const std::vector<int> open = Found("新华");
  ASSERT_GT(open.size(), 2U);
  sheet_.CollapseAll();
  EXPECT_EQ(Found("新华"), open);
  sheet_.SetRowHidden(open[1], true);
  std::vector<int> rest = open;
  rest.erase(rest.begin() + 1);
  EXPECT_EQ(Found("新华"), rest);
}

TEST_F(SearchedLedger, NodesAndTotalsAreFoundToo) {
  const std::vector<int> totals = Found("合计");
  EXPECT_EQ(totals.size(), 12U);
  for (const int row : totals) EXPECT_LT(sheet_.RecordOfRow(row), 0);
  const std::string sum = base::OneLine(sheet_.DisplayText(totals[5], testing::kLedgerRevAcc), " ");
  EXPECT_EQ(Found(sum), Expected(sum));
  EXPECT_FALSE(Found(sum).empty());
}

TEST_F(SearchedLedger, CellsThatWereWrittenAreFoundAsTheyAreNow) {
  const int row = sheet_.RowOfRecord(777);
  Found("12");
  sheet_.SetTextMatrix(row, testing::kLedgerDepot, "特别 Φ20");
  EXPECT_EQ(Found("特别 φ20"), std::vector<int>{row});
  sheet_.SetTextMatrix(row, testing::kLedgerPrice, "98765.4321");
  EXPECT_EQ(Found("98,765.4321"), std::vector<int>{row});
  sheet_.AddItem("\t\t插入的行", row);
  EXPECT_EQ(Found("插入的行"), std::vector<int>{row});
  EXPECT_EQ(Found("特别"), std::vector<int>{row + 1}) << "the rows below have moved";
}

TEST_F(SearchedLedger, AnotherJournalIsSearchedAnew) {
  ASSERT_FALSE(Found("2004-12").empty());
  sheet_.SetRows(sheet_.FixedRows());
  EXPECT_TRUE(Found("2004-12").empty());
  SampleLedger({1, 20}).Fill(sheet_);
  EXPECT_EQ(Found("12"), Expected("12"));
  EXPECT_FALSE(Found("12").empty());
}

TEST_F(SearchedLedger, OptionsNarrowWhatIsFound) {
  EXPECT_FALSE(Found("c-00").empty());
  EXPECT_TRUE(Found("c-00", {true, false, false}).empty());
  const std::vector<int> line = Found("00042", {false, true, false});
  ASSERT_EQ(line.size(), 1U);
  EXPECT_TRUE(Found("0042", {false, true, false}).empty());
  EXPECT_FALSE(Found("0042").empty());
  EXPECT_TRUE(Found("R-0*42").empty());
  for (const int row : Found("r-0*42", {false, false, true}))
    EXPECT_TRUE(ShowsWord(sheet_.DisplayText(row, testing::kLedgerBill), "42"));
  EXPECT_FALSE(Found("r-0*42", {false, false, true}).empty());
}

TEST_F(SearchedLedger, AShorterWholeWordIsLookedForEverywhereAgain) {
  ASSERT_EQ(Found("00042", {false, true, false}).size(), 1U);
  ASSERT_EQ(Found("000421", {false, true, false}).size(), 0U);
  EXPECT_EQ(Found("00421", {false, true, false}).size(), 1U);
}

TEST_F(SearchedLedger, AMalformedPatternFindsNothingAndSaysWhy) {
  EXPECT_THROW(search_->Find({"12 [", {false, false, true}}), platform::Error);
  EXPECT_FALSE(search_->HasWords());
  EXPECT_EQ(Found("12"), Expected("12"));
}

TEST_F(SearchedLedger, NoWordsFindNothing) {
  EXPECT_TRUE(Found("").empty());
  EXPECT_TRUE(Found(" 　").empty());
  EXPECT_FALSE(search_->HasWords());
}

TEST_F(SearchedLedger, TheIndexMayGoAndWhatWasFoundStays) {
  const std::vector<int> rows = Found("12");
  EXPECT_TRUE(search_->IsIndexed());
  search_->DropIndex();
  EXPECT_FALSE(search_->IsIndexed());
  EXPECT_EQ(search_->MemoryBytes(), 0U);
  EXPECT_EQ(Found("12"), rows);
  EXPECT_FALSE(search_->IsIndexed()) << "the same words need none";
  EXPECT_EQ(Found("123"), Expected("123"));
}

TEST(JournalSearch, FindsNothingInAnEmptySheet) {
  sheet::GridSheet sheet;
  JournalSearch search(sheet);
  EXPECT_TRUE(search.Find({"12", {}}).empty());
  sheet.SetRows(3);
  sheet.SetCols(2);
  sheet.SetTextMatrix(2, 1, "写在空表里");
  EXPECT_EQ(search.Find({"空表", {}}), std::vector<int>{2});
}

}  // namespace
}  // namespace stockbook::app
