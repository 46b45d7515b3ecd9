// SPDX-License-Identifier: MIT
// The window's find over a stock journal with 14 columns shown as the control formats them, in processor time measured
// in one run: two words as a ratio of a plain loop of std::string::find over the shown texts, without grouping commas,
// held as std::string; and what every further letter of a word takes. What the columns hold is looked up once before,
// which is told apart. `window_find_bench [LINES [ROUNDS]]`, by default 1,000,000 and 5; the least of the rounds
// counts.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "child_process.h"
#include "searched_journal.h"
#include "stockbook/find/journal_search.h"
#include "stockbook/sheet/grid_sheet.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;

constexpr double kMostRatio = 0.15;
constexpr double kMostLetterMs = 50;

// The shown texts of the columns without grouping commas, and the straightforward search over them: rows from first to
// last, words in order, columns up to the first with the word.
class ShownTexts {
 public:
  explicit ShownTexts(const sheet::GridSheet& sheet) : first_row_(sheet.FixedRows()) {
    for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
      if (sheet.ColHidden(column)) continue;
      std::vector<std::string>& texts = columns_.emplace_back();
      for (int row = first_row_; row < sheet.Rows(); ++row)
        texts.push_back(app::WithoutGrouping(sheet.DisplayText(row, column)));
    }
  }

  std::vector<int> Find(const std::vector<std::string>& words) const {
    std::vector<int> rows;
    for (size_t row = 0; row < columns_.front().size(); ++row) {
      size_t found = 0;
      for (const std::string& word : words) found += static_cast<size_t>(RowHolds(row, word));
      if (found == words.size()) rows.push_back(first_row_ + static_cast<int>(row));
    }
    return rows;
  }

 private:
  bool RowHolds(size_t row, const std::string& word) const {
    for (const std::vector<std::string>& texts : columns_) {
      if (texts[row].find(word) != std::string::npos) return true;
    }
    return false;
  }

  int first_row_ = 0;
  std::vector<std::vector<std::string>> columns_;
};

void SetFormats(sheet::GridSheet& sheet) {
  for (const char* key : {"Price", "StoPrice"}) sheet.SetColFormat(sheet.ColIndex(key), "#,##0.00");
  for (const char* key : {"Quantity", "RevQty", "IssQty", "StoQty", "Account", "RevAcc", "IssAcc", "StoAcc"})
    sheet.SetColFormat(sheet.ColIndex(key), "#,##0.00");
  for (const char* key :
       {"Price", "StoPrice", "Quantity", "RevQty", "IssQty", "StoQty", "Account", "RevAcc", "IssAcc", "StoAcc"})
    sheet.SetColDataType(sheet.ColIndex(key), platform::DataType::kDouble);
}

// The seconds of one search; the rest of the words is remembered as far as they were searched before.
double SecondsOf(app::JournalSearch& search, const std::string& text, std::vector<int>& rows) {
  const double start = CpuSeconds();
  rows = search.Find({text, {}});
  return CpuSeconds() - start;
}

void Fail(const std::string& text, size_t hits, size_t expected) {
  std::fprintf(stderr, "%s: %zu hits instead of %zu\n", text.c_str(), hits, expected);
  std::exit(1);
}

// Two words that were never searched before.
void AgainstPlain(app::JournalSearch& search, const ShownTexts& texts, int rounds) {
  static const std::vector<std::vector<std::string>> kSearches{
      {"销售单", "急用"}, {"随车", "0123"}, {"急用", "12"}, {"12", "98"},    {"出库", "2.5"}, {"2026-03", "77"},
      {"螺栓", "单"},     {"垫片", "急用"}, {"000", "111"}, {"1.5", "8.85"}, {"7", "9"},      {"123", "销售"}};
  for (const std::vector<std::string>& words : kSearches) {
    const std::string text = words[0] + " " + words[1];
    double own = 1e9;
    double plain = 1e9;
    std::vector<int> rows;
    std::vector<int> expected;
    for (int round = 0; round < rounds; ++round) {
      search.ForgetWords();
      own = std::min(own, SecondsOf(search, text, rows));
      const double start = CpuSeconds();
      expected = texts.Find(words);
      plain = std::min(plain, CpuSeconds() - start);
    }
    if (rows != expected) Fail(text, rows.size(), expected.size());
    std::printf("%-16s %8zu hits   window %8.3f ms   std::string::find %8.3f ms   ratio %.4f (at most %.2f)\n",
                text.c_str(), rows.size(), own * 1e3, plain * 1e3, own / plain, kMostRatio);
    std::fflush(stdout);
  }
}

void LetterByLetter(app::JournalSearch& search, const ShownTexts& texts, int rounds) {
  static const std::vector<std::vector<std::string>> kLetters{
      {"1", "2", "3", "4", "5"},         {"0", "0", "0", "1"},
      {"2", "0", "2", "6", "-"},         {"8", ".", "8", "5"},
      {"销", "售", "单", " ", "7", "7"}, {"1", "2", " ", "9", "8", "7"},
      {"出", "库", " ", "2", "."},       {"M", "8", "x"}};
  for (const std::vector<std::string>& letters : kLetters) {
    std::vector<double> seconds(letters.size(), 1e9);
    std::vector<int> rows;
    std::string text;
    for (int round = 0; round < rounds; ++round) {
      search.ForgetWords();
      text.clear();
      for (size_t at = 0; at < letters.size(); ++at) {
        text += letters[at];
        seconds[at] = std::min(seconds[at], SecondsOf(search, text, rows));
      }
    }
    const std::vector<int> expected = texts.Find(app::SplitWords(text));
    if (rows != expected) Fail(text, rows.size(), expected.size());
    std::printf("%-12s letter by letter, ms:", text.c_str());
    for (const double each : seconds) std::printf(" %.2f", each * 1e3);
    std::printf("   (at most %.0f each)\n", kMostLetterMs);
    std::fflush(stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1'000'000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  sheet::GridSheet sheet;
  bench::SearchedJournal().Fill(sheet, lines);
  SetFormats(sheet);
  app::JournalSearch search(sheet);
  std::vector<int> rows;
  std::printf("looked up once: %.0f ms, ", SecondsOf(search, "x", rows) * 1e3);
  std::printf("%.1f bytes a line\n", static_cast<double>(search.MemoryBytes()) / static_cast<double>(lines));
  const ShownTexts texts(sheet);
  AgainstPlain(search, texts, rounds);
  LetterByLetter(search, texts, rounds);
}
