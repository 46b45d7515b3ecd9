// SPDX-License-Identifier: MIT
#include "stockbook/range/journal_range.h"

#include <gtest/gtest.h>

#include "stockbook/base/date.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/range/range_presets.h"

namespace stockbook::app {
namespace {

int64_t DayCalled(const char* text) { return base::Date::Parse(text).value().days(); }
std::string Spelled(const char* text) {
  const auto bounds = ReadBounds(text);
  return bounds ? bounds->first.Text() + ".." + bounds->last.Text() : "nothing";
}
JournalRange RangeBetween(const char* from, const char* to) {
  JournalRange range;
  if (const auto bounds = ReadBounds(from)) range.from = bounds->first;
  if (const auto bounds = ReadBounds(to)) range.to = bounds->last;
  return range;
}

TEST(RangeBound, ReadsPeriodsInEverySpelling) {
  for (const char* text : {"2025-03", "2025/3", "202503", "2025年3月", "2025年03月", " 2025-03 ", "2025.03"})
    EXPECT_EQ(Spelled(text), "2025-03..2025-03") << text;
}

TEST(RangeBound, ReadsDaysInEverySpelling) {
  for (const char* text : {"2025-03-15", "2025/3/15", "20250315", "2025年3月15日", "2025.03.15"})
    EXPECT_EQ(Spelled(text), "2025-03-15..2025-03-15") << text;
}

TEST(RangeBound, TakesAQuarterOrAYearFromItsFirstPeriodToItsLast) {
  EXPECT_EQ(Spelled("2025Q1"), "2025-01..2025-03");
  EXPECT_EQ(Spelled("2025-q4"), "2025-10..2025-12");
  EXPECT_EQ(Spelled("2025"), "2025-01..2025-12");
  EXPECT_EQ(Spelled("2025年"), "2025-01..2025-12");
}

TEST(RangeBound, RefusesWhatIsNoPeriodAndNoDay) {
  for (const char* text :
       {"", " ", "2025-13", "2025-00", "2025Q5", "2025Q", "Q1", "25-03", "2025-02-30", "2025-03-15-1", "march", "20253",
        "2025--3", "-2025", "0001-01", "2025-3x", "99999999999", "日", "2025-003-1x"})
    EXPECT_EQ(Spelled(text), "nothing") << text;
}

TEST(PeriodKey, IsReadFromWhatInventoriesCallAPeriod) {
  for (const char* period : {"202503", "2025-03", "2025.03"})
    EXPECT_EQ(PeriodKey::Of(period), (PeriodKey{2025, 3})) << period;
  for (const char* period : {"", "2503", "2025年03月", "abcdef", "202513"})
    EXPECT_FALSE(PeriodKey::Of(period)) << period;
}

TEST(PeriodKey, CountsMonthsBeyondTheYear) {
  EXPECT_EQ((PeriodKey{2025, 1}.Plus(-1)), (PeriodKey{2024, 12}));
  EXPECT_EQ((PeriodKey{2025, 12}.Plus(1)), (PeriodKey{2026, 1}));
  EXPECT_EQ((PeriodKey{2025, 3}.Plus(-15)), (PeriodKey{2023, 12}));
}

TEST(JournalRange, ContainsItsEnds) {
  const JournalRange periods = RangeBetween("2025-02", "2025-03");
  EXPECT_TRUE(periods.Contains(PeriodKey{2025, 2}, 0));
  EXPECT_TRUE(periods.Contains(PeriodKey{2025, 3}, 0));
  EXPECT_FALSE(periods.Contains(PeriodKey{2025, 1}, 0));
  EXPECT_FALSE(periods.Contains(PeriodKey{2025, 4}, 0));
  const JournalRange days = RangeBetween("2025-02-10", "2025-02-20");
  EXPECT_TRUE(days.Contains(PeriodKey{2025, 2}, DayCalled("2025-02-10")));
  EXPECT_TRUE(days.Contains(PeriodKey{2025, 2}, DayCalled("2025-02-20")));
  EXPECT_FALSE(days.Contains(PeriodKey{2025, 2}, DayCalled("2025-02-09")));
  EXPECT_FALSE(days.Contains(PeriodKey{2025, 2}, DayCalled("2025-02-21")));
}

TEST(JournalRange, FollowsThePeriodOfALineAndNotItsDay) {
  // A period that was closed on the 25th has the bills of the last days of the month before.
  EXPECT_TRUE(RangeBetween("2025-03", "2025-03").Contains(PeriodKey{2025, 3}, DayCalled("2025-02-27")));
  EXPECT_FALSE(RangeBetween("2025-03", "2025-03").Contains(PeriodKey{2025, 4}, DayCalled("2025-03-27")));
}

TEST(JournalRange, CountsALineWithoutAPeriodToTheMonthOfItsDay) {
  EXPECT_TRUE(RangeBetween("2025-03", "2025-03").Contains(std::nullopt, DayCalled("2025-03-31")));
  EXPECT_FALSE(RangeBetween("2025-03", "2025-03").Contains(std::nullopt, DayCalled("2025-04-01")));
}

TEST(JournalRange, IsOpenWhereAnEndIsMissing) {
  EXPECT_TRUE(RangeBetween("2025-03", "").Contains(PeriodKey{2099, 1}, 0));
  EXPECT_FALSE(RangeBetween("2025-03", "").Contains(PeriodKey{2025, 2}, 0));
  EXPECT_TRUE(RangeBetween("", "2025-03").Contains(PeriodKey{1990, 1}, 0));
  EXPECT_TRUE(JournalRange().IsAll());
}

TEST(JournalRange, NoticesThatItsEndsAreExchanged) {
  EXPECT_TRUE(RangeBetween("2025-03", "2025-02").IsBackward());
  EXPECT_TRUE(RangeBetween("2025-03-02", "2025-03-01").IsBackward());
  EXPECT_FALSE(RangeBetween("2025-03", "2025-03").IsBackward());
  EXPECT_FALSE(RangeBetween("2025-03", "2025-02-10").IsBackward()) << "March may begin in February";
}

TEST(JournalRange, SaysWhatItIs) {
  EXPECT_EQ(RangeBetween("2025-03", "2025-03").Caption(), "2025年03月");
  EXPECT_EQ(RangeBetween("2025Q1", "2025Q1").Caption(), "2025年01月至2025年03月");
  EXPECT_EQ(RangeBetween("2025-03-15", "").Caption(), "2025-03-15起");
  EXPECT_EQ(RangeBetween("", "2025-03").Caption(), "至2025年03月");
  EXPECT_EQ(JournalRange().Caption(), "全部");
}

TEST(JournalRange, StepsToItsNeighboursByItsOwnLength) {
  EXPECT_EQ(RangeBetween("2025-01", "2025-01").Neighbour(-1), RangeBetween("2024-12", "2024-12"));
  EXPECT_EQ(RangeBetween("2025Q4", "2025Q4").Neighbour(1), RangeBetween("2026Q1", "2026Q1"));
  EXPECT_EQ(RangeBetween("2025", "2025").Neighbour(-2), RangeBetween("2023", "2023"));
  EXPECT_FALSE(RangeBetween("2025-03-01", "2025-03-02").Neighbour(1));
  EXPECT_FALSE(RangeBetween("2025-03", "").Neighbour(1));
  EXPECT_FALSE(RangeBetween("9999", "9999").Neighbour(1));
}

TEST(RangePreset, IsAsOfTheDay) {
  const int64_t today = DayCalled("2025-02-14");
  EXPECT_EQ(RangeOf(RangePreset::kThisMonth, today, {}), RangeBetween("2025-02", "2025-02"));
  EXPECT_EQ(RangeOf(RangePreset::kLastMonth, today, {}), RangeBetween("2025-01", "2025-01"));
  EXPECT_EQ(RangeOf(RangePreset::kLastMonth, DayCalled("2025-01-31"), {}), RangeBetween("2024-12", "2024-12"));
  EXPECT_EQ(RangeOf(RangePreset::kThisQuarter, today, {}), RangeBetween("2025Q1", "2025Q1"));
  EXPECT_EQ(RangeOf(RangePreset::kThisYear, today, {}), RangeBetween("2025", "2025"));
  EXPECT_EQ(RangeOf(RangePreset::kNewestPeriod, today, PeriodKey{2024, 11}), RangeBetween("2024-11", "2024-11"));
  EXPECT_TRUE(RangeOf(RangePreset::kNewestPeriod, today, {}).IsAll());
  EXPECT_TRUE(RangeOf(RangePreset::kAll, today, {}).IsAll());
}

std::optional<JournalOptions> OptionsWith(std::vector<std::string> words) {
  words.insert(words.begin(), {"--journal", "material", "--product", "1"});
  return ReadJournalOptions(CommandLine(words, JournalOptionList()));
}

TEST(JournalOptionsOfARange, TakeItsEnds) {
  EXPECT_EQ(OptionsWith({"--from", "2025Q2", "--to", "2025Q3"})->range, RangeBetween("2025-04", "2025-09"));
  EXPECT_EQ(OptionsWith({"--from", "2025-03-15"})->range, RangeBetween("2025-03-15", ""));
  EXPECT_TRUE(OptionsWith({})->range.IsAll());
}

TEST(JournalOptionsOfARange, RefuseWhatIsNoRange) {
  EXPECT_THROW(OptionsWith({"--from", "2025-13"}), UsageError);
  EXPECT_THROW(OptionsWith({"--to", ""}), UsageError);
  EXPECT_THROW(OptionsWith({"--from", "2025-05", "--to", "2025-04"}), UsageError);
}

}  // namespace
}  // namespace stockbook::app
