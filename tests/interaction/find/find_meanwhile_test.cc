// SPDX-License-Identifier: MIT
// What listeners change while a search runs, and searches compared with reading every cell.
#include "interaction/find/finding.h"

namespace stockbook::interaction {
namespace {

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
  OnFirstHit([&] { Find(sheet_, sheet_, events_, "Name", "垫"); });
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
