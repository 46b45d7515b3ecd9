// SPDX-License-Identifier: MIT
// Find over a stock journal with 14 columns shown, as ratios of processor time measured in
// one run: compared with a plain loop of std::string::find over the same texts held as std::string, which looks for
// every word of a row up to the first column with it, as the rule for a row says; with the same loop when it leaves a
// row at the first missing word; and with itself on a tenth of the hits. Every hit's message is produced and passed to
// a listener. `find_bench [LINES [ROUNDS]]`, by default 1,000,000 and 5; the least of the rounds counts.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "child_process.h"
#include "interaction/find/find.h"
#include "searched_journal.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;

using bench::kOutlineKey;
using bench::kShown;

// A host that counts its messages.
class Host : public interaction::EventListener {
 public:
  void FindMsg(const std::string& /*message*/) override { ++messages; }
  int64_t messages = 0;
};

// The stored texts of the shown columns as vectors of std::string, and the straightforward search over them: rows from
// first to last, words in order, columns up to the first with the word; a message for each hit.
class PlainTexts {
 public:
  enum class Stop { kAfterAllWords, kAtMissingWord };

  explicit PlainTexts(const sheet::GridSheet& sheet) : first_row_(sheet.FixedRows()) {
    for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
      if (sheet.ColHidden(column)) continue;
      if (sheet.ColKey(column) == kOutlineKey) outline_ = columns_.size();
      std::vector<std::string>& texts = columns_.emplace_back();
      for (int row = first_row_; row < sheet.Rows(); ++row) texts.push_back(sheet.TextMatrix(row, column));
    }
  }
  size_t columns() const { return columns_.size(); }

  void Find(const std::vector<std::string>& words, Stop stop, interaction::EventListener& listener) const {
    for (size_t row = 0; row < columns_.front().size(); ++row) {
      if (!RowMatches(row, words, stop)) continue;
      const std::string_view name = base::TrimBlanks(columns_[outline_][row]);
      listener.FindMsg(std::string(name.empty() ? std::string_view("[无名称]") : name) + " |" +
                       std::to_string(row + static_cast<size_t>(first_row_)));
    }
  }

 private:
  bool RowMatches(size_t row, const std::vector<std::string>& words, Stop stop) const {
    size_t found = 0;
    for (const std::string& word : words) {
      if (RowHolds(row, word))
        ++found;
      else if (stop == Stop::kAtMissingWord)
        return false;
    }
    return found == words.size();
  }
  bool RowHolds(size_t row, const std::string& word) const {
    for (const std::vector<std::string>& texts : columns_) {
      if (texts[row].find(word) != std::string::npos) return true;
    }
    return false;
  }

  int first_row_ = 0;
  size_t outline_ = 0;
  std::vector<std::vector<std::string>> columns_;
};

struct Measured {
  double seconds = 1e9;
  int64_t hits = 0;
};

Measured MeasureFind(sheet::GridSheet& sheet, const std::string& search, int rounds) {
  Measured measured;
  for (int round = 0; round < rounds; ++round) {
    Host host;
    interaction::Events events;
    events.AddListener(&host);
    const double start = CpuSeconds();
    interaction::Find(sheet, sheet, events, kOutlineKey, search);
    measured.seconds = std::min(measured.seconds, CpuSeconds() - start);
    measured.hits = host.messages - 2;  // the begin and the end
  }
  return measured;
}

Measured MeasurePlain(const PlainTexts& texts, const std::vector<std::string>& words, PlainTexts::Stop stop,
                      int rounds) {
  Measured measured;
  for (int round = 0; round < rounds; ++round) {
    Host host;
    const double start = CpuSeconds();
    texts.Find(words, stop, host);
    measured.seconds = std::min(measured.seconds, CpuSeconds() - start);
    measured.hits = host.messages;
  }
  return measured;
}

void AgainstPlain(sheet::GridSheet& sheet, const PlainTexts& texts, int rounds) {
  static const std::vector<std::vector<std::string>> kSearches{{"销售单", "急用"}, {"随车", "0123"}, {"急用", "12"},
                                                               {"12", "98"},       {"出库", "2.5"},  {"2026-03", "77"},
                                                               {"螺栓", "单"},     {"垫片", "急用"}};
  for (const std::vector<std::string>& words : kSearches) {
    const std::string search = words[0] + " " + words[1];
    const Measured find = MeasureFind(sheet, search, rounds);
    const Measured plain = MeasurePlain(texts, words, PlainTexts::Stop::kAfterAllWords, rounds);
    const Measured stopping = MeasurePlain(texts, words, PlainTexts::Stop::kAtMissingWord, rounds);
    if (find.hits != plain.hits || find.hits != stopping.hits) {
      std::fprintf(stderr, "%s: %lld hits and %lld\n", search.c_str(), static_cast<long long>(find.hits),
                   static_cast<long long>(plain.hits));
      std::exit(1);
    }
    std::printf(
        "%-16s %8lld hits   Find %8.3f ms   std::string::find %8.3f ms   ratio %.4f (at most 0.15)   "
        "stopping at a missing word %8.3f ms   ratio %.4f\n",
        search.c_str(), static_cast<long long>(find.hits), find.seconds * 1e3, plain.seconds * 1e3,
        find.seconds / plain.seconds, stopping.seconds * 1e3, find.seconds / stopping.seconds);
    std::fflush(stdout);
  }
}

// Gives that many rows a distinct mark in a newly written column.
void MarkRows(sheet::GridSheet& sheet, size_t few, size_t many) {
  const int column = sheet.ColIndex("Explain");
  columns::ColumnBuilder texts;
  const size_t records = sheet.RecordCount();
  for (size_t record = 0; record < records; ++record) {
    const bool is_few = record % (records / few) == 0;
    const bool is_many = record % (records / many) == 0;
    texts.AppendText(is_few ? "甲乙" : is_many ? "乙" : "");
  }
  sheet.ReplaceLoadedText(column, texts.Finish());
}

void GrowthWithHits(sheet::GridSheet& sheet, int rounds) {
  const size_t many = std::max<size_t>(sheet.RecordCount() / 10, 10);
  MarkRows(sheet, many / 10, many);
  const Measured few = MeasureFind(sheet, "甲", rounds);
  const Measured more = MeasureFind(sheet, "乙", rounds);
  std::printf("%lld hits %.3f ms, %lld hits %.3f ms: ratio %.2f   (at most 11)\n", static_cast<long long>(more.hits),
              more.seconds * 1e3, static_cast<long long>(few.hits), few.seconds * 1e3, more.seconds / few.seconds);
}

}  // namespace

int main(int argc, char** argv) {
  const int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1'000'000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  sheet::GridSheet sheet;
  bench::SearchedJournal().Fill(sheet, lines);
  {
    const PlainTexts texts(sheet);
    if (texts.columns() != kShown) std::exit(1);
    AgainstPlain(sheet, texts, rounds);
  }
  GrowthWithHits(sheet, rounds);
}
