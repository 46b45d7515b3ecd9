// SPDX-License-Identifier: MIT
// Ranges of random journals, and the summaries of their periods, against what the whole journal's texts give. The whole
// one is first compared with the tables. STOCKBOOK_DIFFERENTIAL_SEED asks for other inventories.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <utility>

#include "end_to_end/fixture.h"
#include "end_to_end/journal_comparison.h"
#include "end_to_end/random_inventory.h"
#include "stockbook/range/period_summary.h"
#include "stockbook/range/range_view.h"

namespace stockbook::end_to_end {
namespace {

const char* const kStockKeys[] = {"StoPrice", "StoQty", "StoQty2", "StoAcc"};

std::string OfRow(const ShownRow& row, const char* key) { return row.text[PlaceOf(key)]; }
bool IsLineRow(const ShownRow& row) { return !row.node && row.level == 1; }

// An end of a range as the test understands it: a month or a day, "" for an open one. Both compare as texts.
struct End {
  std::string text;

  bool IsDay() const { return text.size() > std::string_view("2025-01").size(); }
};

// The lines are those of the whole journal in its order.
class RangeOracle {
 public:
  RangeOracle(ShownJournal whole, End from, End to)
      : whole_(std::move(whole)), from_(std::move(from)), to_(std::move(to)) {}

  bool IsInside(const ShownRow& line) const { return IsAfterBegin(line) && IsBeforeEnd(line); }
  bool IsAll() const { return from_.text.empty() && to_.text.empty(); }

  // The rows of the whole journal with those outside hidden, and the opening row telling what is brought forward.
  ShownJournal Expected() const {
    ShownJournal shown = whole_;
    if (IsAll()) return shown;
    for (size_t row = 1; row < shown.rows.size(); ++row) shown.rows[row].hidden = !IsShown(row);
    const ShownRow* before = LineBefore();
    if (before == nullptr) return shown;
    for (const char* key : kStockKeys) {
      shown.rows[0].text[PlaceOf(key)] = before->text[PlaceOf(key)];
      shown.rows[0].display[PlaceOf(key)] = before->display[PlaceOf(key)];
    }
    return shown;
  }

  // The rows of each run of a period of which some line is shown: from the first shown line to after the last one.
  std::vector<std::pair<size_t, size_t>> ShownRuns() const {
    std::vector<std::pair<size_t, size_t>> runs;
    bool is_new = true;
    for (size_t row = 0; row < whole_.rows.size(); ++row) {
      if (whole_.rows[row].node) is_new = true;
      if (!IsLineRow(whole_.rows[row]) || !IsInside(whole_.rows[row])) continue;
      if (is_new) runs.emplace_back(row, row);
      is_new = false;
      runs.back().second = row + 1;
    }
    return runs;
  }
  // The line before that of a row, or the opening row.
  const ShownRow& RowBefore(size_t row) const {
    do --row;
    while (row > 0 && !IsLineRow(whole_.rows[row]));
    return whole_.rows[row];
  }
  // Whether no line between the first and the last one inside is outside.
  bool HasNoGap() const {
    const auto runs = ShownRuns();
    for (size_t row = runs.front().first; row < runs.back().second; ++row) {
      if (IsLineRow(whole_.rows[row]) && !IsInside(whole_.rows[row])) return false;
    }
    return true;
  }
  const ShownJournal& whole() const { return whole_; }

 private:
  static std::string MonthOrDay(const ShownRow& line, const End& end) {
    const std::string date = OfRow(line, "BillDate").empty() ? "1899-12-30" : OfRow(line, "BillDate").substr(0, 10);
    if (end.IsDay()) return date;
    const std::string period = OfRow(line, "Period");
    return period.empty() ? date.substr(0, 7) : period;
  }
  bool IsAfterBegin(const ShownRow& line) const { return from_.text.empty() || MonthOrDay(line, from_) >= from_.text; }
  bool IsBeforeEnd(const ShownRow& line) const { return to_.text.empty() || MonthOrDay(line, to_) <= to_.text; }

  // A node is shown with any line of its own, a total with all of them.
  bool IsShown(size_t row) const {
    const auto& rows = whole_.rows;
    if (IsLineRow(rows[row])) return IsInside(rows[row]);
    const bool is_total = IsLineRow(rows[row - 1]);
    const auto is_line = [&](size_t at) { return at < rows.size() && IsLineRow(rows[at]); };
    size_t lines = 0;
    size_t inside = 0;
    for (size_t at = is_total ? row - 1 : row + 1; is_line(at); is_total ? --at : ++at) {
      ++lines;
      if (IsInside(rows[at])) ++inside;
    }
    return is_total ? inside == lines : inside > 0;
  }

  // The last line before all that is shown; without one that is shown, the last one before the range.
  const ShownRow* LineBefore() const {
    const bool any = !ShownRuns().empty();
    const ShownRow* before = nullptr;
    for (const ShownRow& row : whole_.rows) {
      if (!IsLineRow(row)) continue;
      if (any ? IsInside(row) : IsAfterBegin(row)) break;
      before = &row;
    }
    return before;
  }

  ShownJournal whole_;
  End from_;
  End to_;
};

::testing::AssertionResult AreSameRows(const ShownJournal& expected, const ShownJournal& shown) {
  if (expected.rows.size() != shown.rows.size()) return ::testing::AssertionFailure() << "other rows";
  for (size_t row = 0; row < expected.rows.size(); ++row) {
    const ShownRow& wanted = expected.rows[row];
    const ShownRow& got = shown.rows[row];
    if (wanted.hidden != got.hidden)
      return ::testing::AssertionFailure() << "row " << row << (got.hidden ? " is hidden" : " is shown");
    for (size_t place = 0; place < kColumnCount; ++place) {
      if (row == 0 && place == PlaceOf("BillNo")) continue;
      if (wanted.text[place] != got.text[place] || wanted.display[place] != got.display[place]) {
        return ::testing::AssertionFailure()
               << "row " << row << ", column " << place << ": expected " << wanted.text[place] << " ("
               << wanted.display[place] << "), shown " << got.text[place] << " (" << got.display[place] << ")";
      }
    }
  }
  return ::testing::AssertionSuccess();
}

std::string QuantityIn(const app::StockFigures& figures) { return NumberText(figures.quantity); }
std::string AmountIn(const app::StockFigures& figures) {
  return figures.amount ? AmountText(figures.amount->units()) : std::string("-");
}

class RangeDifferential : public EndToEnd {
 protected:
  static constexpr int kJournals = 8;
  static constexpr int kRanges = 6;

  int Below(int end) { return static_cast<int>(random_() % static_cast<uint64_t>(end)); }

  End AnyEnd() {
    const std::string month = "2025-0" + std::to_string(1 + Below(5));
    switch (Below(5)) {
      case 0:
        return {};
      case 1:
        return {month + "-" + std::to_string(9 + Below(6) == 9 ? 10 : 10 + Below(5))};
      default:
        return {month};
    }
  }
  static std::optional<app::RangeBound> BoundOf(const End& end) {
    const auto bounds = app::ReadBounds(end.text);
    return bounds ? std::optional(bounds->first) : std::nullopt;
  }

  void CompareJournal(const app::JournalOptions& options) {
    const ShownJournal whole = FromGrid(desk().sheet());
    app::RangeView view(desk().control());
    view.JournalLoaded();
    for (int range = 0; range < kRanges && !HasFailure(); ++range) {
      const End from = AnyEnd();
      const End to = AnyEnd();
      SCOPED_TRACE(Describe(options) + " from " + from.text + " to " + to.text);
      view.Show({BoundOf(from), BoundOf(to)});
      const RangeOracle oracle(whole, from, to);
      EXPECT_TRUE(AreSameRows(oracle.Expected(), FromGrid(desk().sheet())));
      CompareSummary(oracle, view, options);
    }
    view.Show({});
    EXPECT_TRUE(AreSameRows(whole, FromGrid(desk().sheet()))) << Describe(options);
    EXPECT_EQ(FromGrid(desk().sheet()).rows.front().text, whole.rows.front().text) << Describe(options);
  }

  void CompareSummary(const RangeOracle& oracle, const app::RangeView& view, const app::JournalOptions& options) {
    const auto lines = app::SummarizePeriods(desk().sheet(), view);
    const auto runs = oracle.ShownRuns();
    ASSERT_EQ(lines.size(), runs.size() + (runs.size() > 1 ? 1 : 0));
    for (size_t at = 0; at < runs.size(); ++at)
      ComparePeriod(oracle, runs[at].first, runs[at].second, lines[at], options.acc_restrict);
    if (runs.size() < 2) return;
    const app::PeriodLine& total = lines.back();
    app::PeriodLine sums;
    Amount in = 0;
    Amount out = 0;
    for (size_t at = 0; at < runs.size(); ++at) {
      sums.in.quantity += lines[at].in.quantity;
      sums.out.quantity += lines[at].out.quantity;
      in += lines[at].in.amount ? lines[at].in.amount->units() : 0;
      out += lines[at].out.amount ? lines[at].out.amount->units() : 0;
    }
    EXPECT_EQ(QuantityIn(total.in), QuantityIn(sums.in));
    EXPECT_EQ(QuantityIn(total.out), QuantityIn(sums.out));
    EXPECT_EQ(AmountIn(total.in), options.acc_restrict ? "-" : AmountText(in));
    EXPECT_EQ(AmountIn(total.out), options.acc_restrict ? "-" : AmountText(out));
    EXPECT_EQ(QuantityIn(total.opening), QuantityIn(lines.front().opening));
    EXPECT_EQ(QuantityIn(total.closing), QuantityIn(lines[runs.size() - 1].closing));
    EXPECT_EQ(total.is_whole, oracle.HasNoGap());
    if (!total.is_whole) {
      ++gaps_;
    } else if (!options.acc_restrict) {
      const Amount moved = (options.journal_type == kCustomer ? 0 : in) + (options.journal_type == kSupplier   ? 0
                                                                           : options.journal_type == kCustomer ? out
                                                                                                               : -out);
      EXPECT_EQ(AmountIn(total.closing), AmountText(total.opening.amount->units() + moved));
    }
  }

  static void ComparePeriod(const RangeOracle& oracle, size_t first, size_t end, const app::PeriodLine& line,
                            bool restricted) {
    Amount amounts[2] = {0, 0};
    double quantities[2] = {0, 0};
    const char* const quantity_keys[2] = {"RevQty", "IssQty"};
    const char* const amount_keys[2] = {"RevAcc", "IssAcc"};
    for (size_t row = first; row < end; ++row) {
      const ShownRow& each = oracle.whole().rows[row];
      if (!oracle.IsInside(each)) continue;
      for (size_t side = 0; side < 2; ++side) {
        quantities[side] += NumberOf(OfRow(each, quantity_keys[side])).value_or(0);
        amounts[side] += AmountOf(OfRow(each, amount_keys[side])).value_or(0);
      }
    }
    EXPECT_EQ(QuantityIn(line.in), NumberText(quantities[0]));
    EXPECT_EQ(QuantityIn(line.out), NumberText(quantities[1]));
    EXPECT_EQ(AmountIn(line.in), restricted ? "-" : AmountText(amounts[0]));
    EXPECT_EQ(AmountIn(line.out), restricted ? "-" : AmountText(amounts[1]));
    const ShownRow& before = oracle.RowBefore(first);
    const ShownRow& last = oracle.whole().rows[end - 1];
    EXPECT_EQ(QuantityIn(line.opening), OfRow(before, "StoQty"));
    EXPECT_EQ(AmountIn(line.opening), restricted ? "-" : OfRow(before, "StoAcc"));
    EXPECT_EQ(QuantityIn(line.closing), OfRow(last, "StoQty"));
    EXPECT_EQ(AmountIn(line.closing), OfRow(last, "StoAcc"));
    EXPECT_EQ(line.price ? NumberText(*line.price) : "-", OfRow(last, "StoPrice"));
  }

  std::mt19937_64 random_;
  size_t gaps_ = 0;
};

TEST_F(RangeDifferential, ShowsEveryLineInsideAndWhatWasBroughtForward) {
  const char* asked = std::getenv("STOCKBOOK_DIFFERENTIAL_SEED");
  const uint64_t first_seed = asked == nullptr ? 1 : std::strtoull(asked, nullptr, 10);
  constexpr uint64_t kInventories = 20;
  size_t compared = 0;
  for (uint64_t seed = first_seed; seed < first_seed + kInventories && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    random_.seed(seed);
    const std::string path = PathOf("random.db");
    RandomInventory inventory(seed);
    inventory.Write(path, Declared::kUsual);
    const BaseTables tables(path);
    for (int journal = 0; journal < kJournals && !HasFailure(); ++journal) {
      app::JournalOptions options = inventory.AnyJournal(journal % 4);
      if (journal < 4) options.dp_id = 0;  // the most lines
      const RecomputedJournal expected(tables, options);
      EXPECT_TRUE(AgreesBy({}, path, expected, options));
      if (expected.cannot_run() || desk().sheet().RecordCount() == 0) continue;
      CompareJournal(options);
      ++compared;
    }
    std::filesystem::remove(path);
  }
  EXPECT_GT(compared, kInventories);
  EXPECT_GT(gaps_, 0U) << "of periods whose bills lie between those of others";
}

}  // namespace
}  // namespace stockbook::end_to_end
