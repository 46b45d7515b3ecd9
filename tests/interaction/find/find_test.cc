// SPDX-License-Identifier: MIT
#include "interaction/find/finding.h"

namespace stockbook::interaction {
namespace {

TEST_F(Finding, TellsBeginEachHitEndAndTheCount) {
  Load(kParts);
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", "螺母 M3 |2", "垫片 |4", "#END#", Summary(3)}));
}

TEST_F(Finding, SaysTheHitsTextABlankABarAndTheRow) {
  std::vector<Lines> rows(14, Lines{"别的", "", ""});
  rows.push_back({" 螺丝 M3  ", "", ""});
  Load(rows);
  EXPECT_EQ(FindText("螺丝")[1], "螺丝 M3 |15");
}

TEST_F(Finding, WantsAllWordsEachInAnyColumn) {
  Load(kParts);
  for (const char* search : {"螺丝，M3", "螺丝 M3", "螺丝;M3", "螺丝；M3", "螺丝,M3", "M3|螺丝", "；螺丝 ，;M3,"}) {
    EXPECT_EQ(Hits(search), (Rows{1, 4})) << search;
  }
}

TEST_F(Finding, DropsTheSeparatorAtTheEnd) {
  Load(kParts);
  EXPECT_EQ(Hits("M3;"), (Rows{1, 2, 4}));
  EXPECT_EQ(Hits("M3;;;"), (Rows{1, 2, 4}));
}

TEST_F(Finding, ComparesCaseExactly) {
  Load(kParts);
  EXPECT_EQ(Hits("m3"), (Rows{3}));
  EXPECT_EQ(Hits("M3 m3"), Rows());
}

TEST_F(Finding, ReadsWildcardsInWords) {
  Load(kParts);
  EXPECT_EQ(Hits("1?"), (Rows{2}));
  EXPECT_EQ(Hits("M#"), (Rows{1, 2, 4}));
  EXPECT_EQ(Hits("[Mm]3"), (Rows{1, 2, 3, 4}));
  EXPECT_EQ(Hits("螺[!母]"), (Rows{1, 3, 4}));
  EXPECT_EQ(Hits("螺*M"), (Rows{1, 2}));
  EXPECT_EQ(Hits("一? M3"), Rows{1}) << "which ends in a character";
  EXPECT_EQ(Hits("[]M3"), (Rows{1, 2, 4}));
}

TEST_F(Finding, CountsNothingInHiddenColumns) {
  Load(kParts);
  sheet_.SetColHidden(2, true);
  EXPECT_EQ(Hits("螺丝"), (Rows{1, 4}));
  EXPECT_EQ(Hits("螺丝 M3"), (Rows{1}));
  sheet_.SetColHidden(1, true);
  EXPECT_EQ(FindText("配")[1], "垫片 |4") << "the name is told all the same";
}

TEST_F(Finding, CountsNothingInFixedColumnsAndRows) {
  Load(kParts);
  sheet_.SetTextMatrix(0, 2, "六角");
  sheet_.SetTextMatrix(1, 0, "六角");
  EXPECT_EQ(Hits("六角"), Rows());
  sheet_.SetFixedCols(0);
  EXPECT_EQ(Hits("六角"), (Rows{1}));
  sheet_.SetFixedRows(3);
  EXPECT_EQ(Hits("M3"), (Rows{4}));
}

TEST_F(Finding, CallsAHitWithoutTextNameless) {
  std::vector<Lines> rows(6, Lines{"别的", "", ""});
  rows.push_back({"   ", "螺丝", ""});
  Load(rows);
  EXPECT_EQ(FindText("螺丝"), (Lines{"#BEGIN#", "[无名称] |7", "#END#", Summary(1)}));
  sheet_.SetColKey(1, "Other");
  EXPECT_EQ(FindText("别的")[1], "[无名称] |1") << "no outline column";
}

TEST_F(Finding, IgnoresASearchWithoutWords) {
  Load(kParts);
  for (const char* search : {"", " ", ";;", "  ", "；，", "|", "||||", " ;,；，"})
    EXPECT_EQ(FindText(search), Lines()) << search;
}

TEST_F(Finding, TellsOfNothingInAGridWithoutRows) {
  EXPECT_EQ(FindText("螺丝"), (Lines{"#BEGIN#", "#END#", Summary(0)}));
  EXPECT_EQ(FindText("[螺丝"), (Lines{"#BEGIN#", "#END#", Summary(0)})) << "no text to compare with";
}

TEST_F(Finding, FindsNothingInBlankCells) {
  Load({{"   ", "", ""}, {"a", "", ""}});
  EXPECT_EQ(Hits("*"), (Rows{2}));
  EXPECT_EQ(Hits("?"), (Rows{2}));
  EXPECT_EQ(Hits("[!b]"), (Rows{2}));
  EXPECT_EQ(Hits("[]"), (Rows{2}));
}

TEST_F(Finding, SearchesRowsThatAreHiddenOrFolded) {
  Load(kParts);
  sheet_.SetRowHidden(1, true);
  sheet_.AddItem("\t期初", 2);
  sheet_.SetIsSubtotal(2, true);
  sheet_.SetRowOutlineLevel(2, 0);
  for (int row = 3; row <= 5; ++row) sheet_.SetRowOutlineLevel(row, 1);
  sheet_.SetIsCollapsed(2, true);
  EXPECT_EQ(Hits("M3"), (Rows{1, 3, 5}));
}

TEST_F(Finding, ReadsTheStoredTextNotTheShownOne) {
  columns::ColumnBuilder amounts;
  amounts.AppendMoney(*base::Money::Parse("1234.5"));
  amounts.AppendNull();
  std::vector<columns::Column> columns;
  columns.push_back(amounts.Finish());
  sheet_.LoadColumns(std::move(columns), 2);
  sheet_.SetColFormat(2, "#,##0.00");
  sheet_.SetColDataType(2, platform::DataType::kCurrency);
  EXPECT_EQ(sheet_.DisplayText(1, 2), "1,234.50");
  EXPECT_EQ(Hits("1234.5"), (Rows{1}));
  EXPECT_EQ(Hits("234.50"), Rows());
}

TEST_F(Finding, SwitchesRedrawOnAndTheMousePointerBack) {
  Load(kParts);
  sheet_.SetRedraw(false);
  sheet_.SetPointer(platform::MousePointer::kHourglass);
  FindText("螺丝");
  EXPECT_TRUE(sheet_.Redraw());
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
  sheet_.SetRedraw(false);
  sheet_.SetPointer(platform::MousePointer::kHourglass);
  FindText("[");
  EXPECT_TRUE(sheet_.Redraw());
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
  sheet_.SetRedraw(false);
  FindText(" ");
  EXPECT_FALSE(sheet_.Redraw()) << "nothing was searched";
}

TEST_F(Finding, NeitherMovesNorSelects) {
  Load(kParts);
  sheet_.SelectRange(2, 1, 3, 2);
  FindText("螺丝");
  EXPECT_EQ(sheet_.Row(), 2);
  EXPECT_EQ(sheet_.Col(), 1);
  EXPECT_EQ(sheet_.RowSel(), 3);
  EXPECT_EQ(sheet_.ColSel(), 2);
}

TEST_F(Finding, TellsTheErrorOfAWordThatIsNoPattern) {
  Load(kParts);
  const Lines lines = FindText("螺丝 [M");
  ASSERT_EQ(lines.size(), 2U) << "no hit, no end, no count";
  EXPECT_EQ(lines[0], "#BEGIN#");
  EXPECT_NE(lines[1].find("Notify 通配符“*[M*”"), std::string::npos) << lines[1];
  Load({{"", "", ""}, {" ", "", ""}});
  EXPECT_EQ(FindText("[M"), (Lines{"#BEGIN#", "#END#", Summary(0)})) << "no text was compared with it";
}

TEST_F(Finding, TellsWhatAListenerThrowsAndKeepsTheHitsSoFar) {
  Load(kParts);
  listener_.on_hearing = [](const std::string& line) {
    if (line == "FindMsg 螺母 M3 |2") throw std::runtime_error("主机出错");
  };
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", "螺母 M3 |2", "Notify 主机出错"}));
  listener_.on_hearing = [](const std::string& line) {
    if (line == "FindMsg #END#") throw platform::Error("host", "到此为止");
  };
  EXPECT_EQ(FindText("M3").back(), "Notify 到此为止");
}

TEST_F(Finding, LetsWhatIsNoErrorThrough) {
  struct NoError {};
  Load(kParts);
  sheet_.SetRedraw(false);
  listener_.on_hearing = [](const std::string& line) {
    if (line == "FindMsg 螺丝 M3 |1") throw NoError();
  };
  EXPECT_THROW(FindText("M3"), NoError);
  EXPECT_EQ(Told(), (Lines{"#BEGIN#", "螺丝 M3 |1"}));
  EXPECT_FALSE(sheet_.Redraw()) << "the grid is not touched any more";
}

TEST_F(Finding, TellsTheErrorOfTheGridWhereverItComes) {
  Load(kParts);
  sheet_.AddItem("\t合计 M3", 3);
  const Lines whole = FindText("M3");
  int refused = 0;
  for (int call = 1; call < 1000; ++call) {
    testing::FaultyGrid faulty(sheet_);
    faulty.RefuseCall(call);
    const Lines lines = FindIn(faulty, "M3");
    if (!faulty.HasRefused()) break;
    ++refused;
    ASSERT_FALSE(lines.empty());
    if (lines == whole) continue;  // the mouse pointer at the end
    EXPECT_EQ(lines.front(), "#BEGIN#");
    EXPECT_EQ(lines.back().rfind("Notify ", 0), 0U);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), Summary(4)), 0);
    EXPECT_TRUE(sheet_.Redraw());
  }
  EXPECT_GT(refused, 20);
  EXPECT_LT(refused, 900);
}

TEST_F(Finding, TakesAnyNumberOfWords) {
  for (const int words : {8, 9, 16, 64, 65, 200}) {
    std::string all;
    std::string search;
    for (int word = 0; word < words; ++word) {
      all += "<" + std::to_string(word) + ">";
      search += "<" + std::to_string(word) + "> ";
    }
    Load({{all, "", ""}, {all.substr(0, all.size() - 1), "", ""}, {"x", all, ""}, {all.substr(3), "<0>", ""}});
    sheet_.AddItem("\ty\t\t" + all, 2);
    EXPECT_EQ(Hits(search), (Rows{1, 2, 4, 5})) << words;
  }
}

TEST_F(Finding, FindsTheSameWordTwiceInOneCell) {
  Load(kParts);
  EXPECT_EQ(Hits("螺母 螺母"), (Rows{2}));
}

TEST_F(Finding, ReadsCellsThatWereWrittenOverLoadedOnes) {
  Load(kParts);
  sheet_.SetTextMatrix(1, 1, "改了");
  sheet_.SetTextMatrix(2, 3, "螺丝");
  EXPECT_EQ(FindText("螺丝 M3"), (Lines{"#BEGIN#", "螺母 M3 |2", "垫片 |4", "#END#", Summary(2)}));
}

TEST_F(Finding, TakesBrokenUtf8ForTheSignOfIt) {
  Load({{"a\xEF\xBF\xBD", "", ""}, {"螺", "", ""}});
  EXPECT_EQ(Hits("\xE8"), (Rows{1}));
  EXPECT_EQ(Hits("\x9E\xBA"), Rows());
}

}  // namespace
}  // namespace stockbook::interaction
