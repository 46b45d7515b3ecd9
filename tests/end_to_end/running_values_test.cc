// SPDX-License-Identifier: MIT
// Every row of whole journals, recomputed from the base tables and compared text by text.
#include <algorithm>
#include <map>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/journal_comparison.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::end_to_end {
namespace {

class RunningValues : public EndToEnd {
 protected:
  BaseTables Sample(int64_t lines, int periods, uint64_t seed) {
    app::WriteSampleInventory(database_, {lines, periods, seed, app::SampleProductRange::Many});
    return BaseTables(database_);
  }
  // Every kind of second key that the type has, with and without a product.
  std::vector<app::JournalOptions> Choices(int type) const {
    std::vector<app::JournalOptions> choices;
    const std::vector<std::string> classes = type == 0   ? std::vector<std::string>{""}
                                             : type == 3 ? std::vector<std::string>{"", "0101", "99"}
                                                         : std::vector<std::string>{"", "01", "0102", "99"};
    for (const int product : {1, 2, 7, 0, 9999, -5}) {
      for (const std::string& code : classes) {
        for (const int second : {0, 1, 3, -1}) choices.push_back({type, product, second, code, false, false, false});
      }
    }
    return choices;
  }
  // The product and second key with the most lines; every product in the partner journals.
  app::JournalOptions BusiestOf(const BaseTables& tables, int type) const {
    const BaseTable& records = tables[type == 1 ? "入库记录" : "出库记录"];
    const char* second = type == 0 ? "dpID" : type == 3 ? "pjID" : "ksID";
    std::map<std::pair<int64_t, int64_t>, int> counts;
    for (size_t row = 0; row < records.size(); ++row) {
      const int64_t key = records.At(row, second).integer;
      if (key > 0) ++counts[{type == 1 || type == 2 ? 0 : records.At(row, "pdID").integer, key}];
    }
    const auto busiest = std::max_element(
        counts.begin(), counts.end(), [](const auto& left, const auto& right) { return left.second < right.second; });
    return {
        type, static_cast<int32_t>(busiest->first.first), static_cast<int32_t>(busiest->first.second), "", true, false,
        false};
  }
  void CompareAll(int type, uint64_t seed) {
    const BaseTables tables = Sample(2500, 5, seed);
    for (const app::JournalOptions& options : Choices(type))
      EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, options));
  }

  std::string database_ = PathOf("sample.db");
};

TEST_F(RunningValues, OfEveryMaterialJournalAgreeWithTheTables) { CompareAll(0, 11); }
TEST_F(RunningValues, OfEverySupplierJournalAgreeWithTheTables) { CompareAll(1, 12); }
TEST_F(RunningValues, OfEveryCustomerJournalAgreeWithTheTables) { CompareAll(2, 13); }
TEST_F(RunningValues, OfEveryProjectJournalAgreeWithTheTables) { CompareAll(3, 14); }

TEST_F(RunningValues, AgreeWithEveryPermission) {
  const BaseTables tables = Sample(1500, 4, 21);
  for (int type = 0; type < 4; ++type) {
    for (int permissions = 0; permissions < 8; ++permissions) {
      EXPECT_TRUE(ShowsWhatTheTablesGive(
          database_, tables, {type, 2, 1, "", (permissions & 1) != 0, (permissions & 2) != 0, (permissions & 4) != 0}));
    }
  }
}

TEST_F(RunningValues, AgreeOverManyPeriodsOfOneProduct) {
  app::WriteSampleInventory(database_, {4000, 300, 5, app::SampleProductRange::One});
  const BaseTables tables(database_);
  for (const int depot : {0, 2})
    EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {0, 1, depot, "", true, true, false}));
}

// Tests the comparison itself: it must notice every change of a shown text.
TEST_F(RunningValues, ThatAreChangedAnywhereAreFound) {
  const BaseTables tables = Sample(300, 2, 41);
  const app::JournalOptions options = BusiestOf(tables, 0);
  ASSERT_TRUE(Load(database_, options).loaded);
  const ShownJournal shown = FromGrid(desk().sheet());
  ASSERT_TRUE(IsTheJournalOf(tables, options, shown));
  for (size_t row = 0; row < shown.rows.size(); ++row) {
    for (size_t place = 0; place < kColumnCount; ++place) {
      ShownJournal changed = shown;
      changed.rows[row].text[place] += "1";
      EXPECT_FALSE(IsTheJournalOf(tables, options, changed)) << row << " " << place;
    }
    ShownJournal without = shown;
    without.rows.erase(without.rows.begin() + static_cast<std::ptrdiff_t>(row));
    EXPECT_FALSE(IsTheJournalOf(tables, options, without)) << row;
    ShownJournal elsewhere = shown;
    std::swap(elsewhere.rows[row], elsewhere.rows[(row + 1) % shown.rows.size()]);
    EXPECT_FALSE(IsTheJournalOf(tables, options, elsewhere)) << row;
  }
}

TEST_F(RunningValues, AgreeAsTheExportWritesThem) {
  const BaseTables tables = Sample(2500, 5, 31);
  for (int type = 0; type < 4; ++type) {
    const app::JournalOptions options = BusiestOf(tables, type);
    const app::LoadReport report = Load(database_, options);
    ASSERT_TRUE(report.loaded) << app::LoadError(report);
    std::ostringstream text;
    app::WriteNdjson(desk().sheet(), app::ExportColumns::kAll, desk().control().Caption(), report, text);
    const ShownJournal shown = FromNdjson(text.str());
    EXPECT_TRUE(IsTheJournalOf(tables, options, shown));
    EXPECT_GT(shown.rows.size(), 5U);
  }
}

}  // namespace
}  // namespace stockbook::end_to_end
