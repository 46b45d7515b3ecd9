// SPDX-License-Identifier: MIT
#include "interaction/find/find.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"
#include "columns/column_builder.h"
#include "interaction/find/wildcard.h"
#include "platform/error.h"
#include "sheet/grid_sheet.h"
#include "support/event_recorder.h"
#include "support/faulty_grid.h"

namespace stockbook::interaction {
namespace {

using Lines = std::vector<std::string>;

columns::Column Texts(const Lines& texts) {
  columns::ColumnBuilder builder;
  for (const std::string& text : texts) builder.AppendText(text);
  return builder.Finish();
}

// A sheet of one caption row and one fixed column; the outline column is column 1, "Name".
class Finding : public ::testing::Test {
 protected:
  Finding() {
    events_.AddListener(&listener_);
    sheet_.SetCols(4);
    sheet_.SetColKey(1, "Name");
  }
  // Appends rows cell by cell: name, kind, remark.
  void Write(const std::vector<Lines>& rows) {
    for (const Lines& row : rows) {
      std::string tabbed;
      for (const std::string& cell : row) tabbed += "\t" + cell;
      sheet_.AddItem(tabbed, sheet_.Rows());
    }
  }
  // The same as loaded columns.
  void Load(const std::vector<Lines>& rows) {
    std::vector<columns::Column> columns;
    for (size_t column = 0; column < 3; ++column) {
      Lines texts;
      for (const Lines& row : rows) texts.push_back(row[column]);
      columns.push_back(Texts(texts));
    }
    sheet_.LoadColumns(std::move(columns), 1);
  }
  Lines FindIn(platform::Grid& grid, const std::string& search) {
    listener_.lines.clear();
    Find(grid, events_, "Name", search);
    return Told();
  }
  // The lines of FindMsg without the event's name, and those of Notify with it.
  Lines Told() const {
    Lines told = listener_.lines;
    for (std::string& line : told) {
      if (line.starts_with("FindMsg ")) line.erase(0, std::string_view("FindMsg ").size());
    }
    return told;
  }
  Lines FindText(const std::string& search) { return FindIn(sheet_, search); }
  // The row numbers of the hits alone.
  std::vector<int> Hits(const std::string& search) {
    std::vector<int> rows;
    for (const std::string& line : FindText(search)) {
      const size_t bar = line.rfind(" |");
      if (bar != std::string::npos) rows.push_back(std::stoi(line.substr(bar + 2)));
    }
    return rows;
  }
  static std::string Summary(int count) { return "Notify 找到记录共 " + std::to_string(count) + " 条。"; }

  sheet::GridSheet sheet_;
  Events events_;
  testing::EventRecorder listener_;
};

using Rows = std::vector<int>;

const std::vector<Lines> kParts = {
    {"螺丝 M3", "螺丝", "一级"}, {"螺母 M3", "螺母", "备注 12"}, {"", "螺丝", "m3 小写"}, {"垫片", "M3", "配螺丝用"}};

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

// What a listener does on the first hit, and the messages that follow.
class FindingMeanwhile : public Finding {
 protected:
  void OnFirstHit(std::function<void()> action) {
    listener_.on_hearing = [action = std::move(action), done = false](const std::string& line) mutable {
      if (done || line.find(" |") == std::string::npos) return;
      done = true;
      action();
    };
  }
};

TEST_F(FindingMeanwhile, GoesOnWithTheNextRowWhenRowsComeAndGo) {
  Load({{"a1", "", ""}, {"b", "", ""}, {"a2", "", ""}, {"a3", "", ""}, {"b", "", ""}, {"a4", "", ""}});
  OnFirstHit([&] { sheet_.RemoveItem(2); });
  EXPECT_EQ(FindText("a"), (Lines{"#BEGIN#", "a1 |1", "a2 |2", "a3 |3", "a4 |5", "#END#", Summary(4)}));
  OnFirstHit([&] { sheet_.AddItem("\ta new", 1); });
  EXPECT_EQ(FindText("a"), (Lines{"#BEGIN#", "a1 |1", "a1 |2", "a2 |3", "a3 |4", "a4 |6", "#END#", Summary(5)}));
}

TEST_F(FindingMeanwhile, EndsWhereAllRowsWent) {
  Load(kParts);
  OnFirstHit([&] { sheet_.SetRows(1); });
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", "#END#", Summary(1)}));
  Load(kParts);
  OnFirstHit([&] { sheet_.SetRows(0); });
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", "#END#", Summary(1)}));
}

TEST_F(FindingMeanwhile, GoesOnInWhatWasLoaded) {
  Load(kParts);
  OnFirstHit([&] { Load({{"M3 x", "", ""}, {"y", "", "M3"}, {"z", "", ""}}); });
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", "y |2", "#END#", Summary(2)}));
}

TEST_F(FindingMeanwhile, SearchesColumnsThatWereReplacedAsTheyAre) {
  Load(kParts);
  OnFirstHit([&] {
    sheet_.ReplaceLoadedText(2, Texts({"", "", "", ""}));
    sheet_.ReplaceLoadedText(1, Texts({"M3", "x", "M3", "M3"}));
    sheet_.ReplaceLoaded(3, columns::Column::Constant(base::Value(int64_t{5}), 4));
  });
  EXPECT_EQ(Hits("M3"), (Rows{1, 3, 4}));
}

TEST_F(FindingMeanwhile, SeesCellsThatAreWritten) {
  Load(kParts);
  OnFirstHit([&] {
    sheet_.SetTextMatrix(3, 1, "M3");
    sheet_.SetTextMatrix(4, 2, "");
  });
  EXPECT_EQ(Hits("M3"), (Rows{1, 2, 3}));
}

TEST_F(FindingMeanwhile, SeesColumnsThatAreHiddenShownMovedAndDropped) {
  Load(kParts);
  OnFirstHit([&] { sheet_.SetColHidden(2, true); });
  EXPECT_EQ(Hits("M3"), (Rows{1, 2}));
  OnFirstHit([&] { sheet_.SetColHidden(2, false); });
  EXPECT_EQ(Hits("M3"), (Rows{1, 2, 4}));
  OnFirstHit([&] { sheet_.SetColPosition(1, 0); });
  EXPECT_EQ(Hits("M3"), (Rows{1, 4})) << "the names have become the fixed column";
  sheet_.SetColPosition(0, 1);
  OnFirstHit([&] { sheet_.SetCols(2); });
  EXPECT_EQ(Hits("M3"), (Rows{1, 2}));
}

TEST_F(FindingMeanwhile, NamesHitsByTheColumnThatHasTheKeyThen) {
  Load(kParts);
  OnFirstHit([&] {
    sheet_.SetColKey(1, "Other");
    sheet_.SetColKey(2, "Name");
  });
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1", sheet_.TextMatrix(2, 2) + " |2",
                                   sheet_.TextMatrix(4, 2) + " |4", "#END#", Summary(3)}));
}

TEST_F(FindingMeanwhile, SearchesWithinASearch) {
  Load(kParts);
  OnFirstHit([&] { Find(sheet_, events_, "Name", "垫"); });
  EXPECT_EQ(FindText("螺母"),
            (Lines{"#BEGIN#", "螺母 M3 |2", "#BEGIN#", "垫片 |4", "#END#", Summary(1), "#END#", Summary(1)}));
}

TEST_F(FindingMeanwhile, StopsTellingAListenerThatLeaves) {
  Load(kParts);
  OnFirstHit([&] { events_.RemoveListener(&listener_); });
  EXPECT_EQ(FindText("M3"), (Lines{"#BEGIN#", "螺丝 M3 |1"}));
}

// The rows that a search must find, by reading every cell according to the rule.
std::vector<int> SlowHits(const sheet::GridSheet& sheet, const std::string& search) {
  std::vector<int> rows;
  for (int row = sheet.FixedRows(); row < sheet.Rows(); ++row) {
    bool all = true;
    for (const std::string_view term : base::Split(search, ' ')) {
      if (term.empty()) continue;
      bool found = false;
      const Wildcard pattern("*" + std::string(term) + "*");
      for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
        const std::string text = sheet.TextMatrix(row, column);
        found = found || (!sheet.ColHidden(column) && !base::TrimBlanks(text).empty() && pattern.Matches(text));
      }
      all = all && found;
    }
    if (all) rows.push_back(row);
  }
  return rows;
}

class FindingAnything : public Finding {
 protected:
  double Double() {
    switch (random_() % 8) {
      case 0:
        return static_cast<double>(random_() % 1000);
      case 1:
        return static_cast<double>(random_() % 100000) / 100;
      case 2:
        return -static_cast<double>(random_() % 100000) / 1000;
      case 3:
        return static_cast<double>(random_()) / 7;
      case 4:
        return static_cast<double>(random_()) * 1e12;
      case 5:
        return 1 / (1.0 + static_cast<double>(random_() % 100000000));
      case 6:
        return -0.0;
      default:
        return std::numeric_limits<double>::quiet_NaN();
    }
  }
  void Append(columns::ColumnBuilder& column, int kind) {
    if (random_() % 9 == 0) return column.AppendNull();
    switch (kind == 7 ? static_cast<int>(random_() % 7) : kind) {
      case 0:
        return column.AppendText("第" + std::to_string(random_() % 20) + "号" + (random_() % 3 == 0 ? "丝" : "母"));
      case 1:
        return column.AppendText("2004-" + std::to_string(random_()));
      case 2:
        return column.AppendInteger(static_cast<int64_t>(random_() % 2000) - 1000);
      case 3:
        return column.AppendMoney(base::Money::FromUnits(static_cast<int64_t>(random_() % 100000000) * 100 - 50000));
      case 4:
        return column.AppendDouble(Double());
      case 5:
        return column.AppendDate(base::Date::FromSeconds(static_cast<int64_t>(random_() % 4000) * 43200));
      default:
        return column.AppendInteger(static_cast<int64_t>(uint64_t{random_()} * uint64_t{random_()} * 977));
    }
  }
  std::string Word() {
    static const Lines kWords{"1",   "12",      "0",    "-1",      ".5",  "号",   "母",  "第1",       "#号",
                              "1?3", "[1-3]号", "2004", "E",       "E+",  "00:",  "-0",  "[!0-9]",    "*",
                              "9",   "99",      "1*1",  "1900-01", "x",   ".",    "3.1", "00.",       "1.",
                              ".25", "0.0",     "05.5", "-3.",     "123", "1234", "1.#", "7.14285714"};
    return kWords[random_() % kWords.size()];
  }
  void Shuffle() {
    for (int step = 0; step < 12; ++step) {
      const int row = 1 + static_cast<int>(random_() % static_cast<unsigned>(sheet_.Rows() - 1));
      if (random_() % 2 == 0) {
        sheet_.AddItem("\t第3号\t12\t丝", row);
      } else {
        sheet_.RemoveItem(row);
      }
    }
    sheet_.SetColHidden(1 + static_cast<int>(random_() % 9), true);
    if (random_() % 2 == 0) sheet_.SetTextMatrix(5, 3, "第12号 E");
  }
  std::mt19937 random_{31};
};

TEST_F(FindingAnything, AgreesWithReadingEveryCell) {
  sheet_.SetCols(10);
  size_t hits = 0;
  for (int round = 0; round < 30; ++round) {
    std::vector<columns::Column> columns;
    // One run with more rows than a chunk holds.
    const int rows = round == 0 ? 70000 : 300;
    for (int kind = 0; kind < 8; ++kind) {
      columns::ColumnBuilder column;
      for (int row = 0; row < rows; ++row) Append(column, kind);
      columns.push_back(column.Finish());
    }
    sheet_.LoadColumns(std::move(columns), 1);
    for (int column = 1; column < 10; ++column) sheet_.SetColHidden(column, false);
    Shuffle();
    for (int search = 0; search < (round == 0 ? 4 : 25); ++search) {
      std::string words = Word();
      for (auto more = random_() % 4; more > 0; --more) words += " " + Word();
      const std::vector<int> found = Hits(words);
      ASSERT_EQ(found, SlowHits(sheet_, words)) << words;
      hits += found.size();
    }
  }
  EXPECT_GT(hits, 5000U);
}

}  // namespace
}  // namespace stockbook::interaction
