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
#include "columns/column_builder.h"
#include "interaction/find/find.h"
#include "sheet/grid_sheet.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;

constexpr int kShown = 14;
constexpr int kPeriods = 36;
constexpr const char* kOutlineKey = "BillNo";

// A host that counts its messages.
class Host : public interaction::EventListener {
 public:
  void FindMsg(const std::string& /*message*/) override { ++messages; }
  int64_t messages = 0;
};

std::string Padded(int64_t number, size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// A journal as after a load, the same at every call: distinct bill numbers, a few kinds and remarks, quantities with
// two decimals, money, average prices of 15 digits, zeros where a line has no value; a node for each period.
class Journal {
 public:
  void Fill(sheet::GridSheet& sheet, int64_t lines) {
    for (int64_t line = 0; line < lines; ++line) AddLine(line, lines);
    static const char* const kKeys[] = {"BillNo",   "BillKind", "Explain", "ProductName", "Price",
                                        "Quantity", "Account",  "RevQty",  "RevAcc",      "IssQty",
                                        "IssAcc",   "StoPrice", "StoQty",  "StoAcc",      "Period"};
    sheet.SetCols(kShown + 2);
    for (int column = 0; column <= kShown; ++column) sheet.SetColKey(column + 1, kKeys[column]);
    std::vector<columns::Column> columns;
    for (columns::ColumnBuilder& column : columns_) columns.push_back(column.Finish());
    sheet.LoadColumns(std::move(columns), 1);
    sheet.SetColHidden(kShown + 1, true);
    sheet.GroupBy(kShown + 1, 1, "%s");
  }

 private:
  int64_t Random(int64_t below) {
    seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<int64_t>((seed_ >> 33) % static_cast<uint64_t>(below));
  }

  void AddLine(int64_t line, int64_t lines) {
    static const std::vector<std::string> kReceipts{"入库单", "采购单"};
    static const std::vector<std::string> kIssues{"出库单", "销售单", "调拨单"};
    static const std::vector<std::string> kExplains{"急用", "补上月欠货", "随车送货", "自提", "样品", "月末集中开单"};
    const bool receipt = stock_ < 100000 || Random(2) == 0;
    const std::string& kind =
        receipt ? kReceipts[static_cast<size_t>(Random(2))] : kIssues[static_cast<size_t>(Random(3))];
    const int64_t month = line * kPeriods / lines;
    const std::string period = std::to_string(2025 + month / 12) + "-" + Padded(month % 12 + 1, 2);
    const int64_t day = line * kPeriods % lines * 28 / lines + 1;
    const int64_t quantity = 100 * (1 + Random(400)) + (Random(4) == 0 ? 25 : 0);  // hundredths
    const int64_t price = 78500 + 10 * Random(2000);                               // ten-thousandths
    const int64_t amount = quantity * price / 100;
    const int64_t sign = receipt ? 1 : -1;
    stock_ += sign * quantity;
    value_ += sign * amount;
    columns_[0].AppendText(period + "-" + Padded(day, 2) + " " + kind + " " + Padded(line * 7919 % 10000019, 7));
    columns_[1].AppendText(receipt ? "入" : "出");
    columns_[2].AppendText(Random(5) == 0 ? kExplains[static_cast<size_t>(Random(6))] : "");
    columns_[3].AppendText("六角螺栓 M8x30[GB/T 5783](千克)");
    columns_[4].AppendMoney(base::Money::FromUnits(price));
    columns_[5].AppendDouble(static_cast<double>(sign * quantity) / 100);
    columns_[6].AppendMoney(base::Money::FromUnits(sign * amount));
    AppendSide(7, receipt, quantity, amount);
    AppendSide(9, !receipt, quantity, amount);
    columns_[11].AppendDouble(stock_ != 0 ? static_cast<double>(value_) / static_cast<double>(stock_) / 100 : 0);
    columns_[12].AppendDouble(static_cast<double>(stock_) / 100);
    columns_[13].AppendMoney(base::Money::FromUnits(value_));
    columns_[14].AppendText(period);
  }

  void AppendSide(size_t column, bool filled, int64_t quantity, int64_t amount) {
    columns_[column].AppendDouble(filled ? static_cast<double>(quantity) / 100 : 0);
    columns_[column + 1].AppendMoney(base::Money::FromUnits(filled ? amount : 0));
  }

  std::vector<columns::ColumnBuilder> columns_{kShown + 1};
  uint64_t seed_ = 20250101;
  int64_t stock_ = 0;  // hundredths
  int64_t value_ = 0;  // ten-thousandths
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
  Journal().Fill(sheet, lines);
  {
    const PlainTexts texts(sheet);
    if (texts.columns() != kShown) std::exit(1);
    AgainstPlain(sheet, texts, rounds);
  }
  GrowthWithHits(sheet, rounds);
}
