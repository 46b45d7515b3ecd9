// SPDX-License-Identifier: MIT
// Random inventories and the sample one as a host's own objects: every journal is the one of their file.
#include <filesystem>
#include <memory>

#include "contract/plain_inventory.h"
#include "databases/sqlite/embedded_connection.h"
#include "end_to_end/fixture.h"
#include "end_to_end/journal_comparison.h"
#include "end_to_end/random_inventory.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::end_to_end {
namespace {

using Gives = testing::PlainSource::Gives;

// What a load says and shows, as texts.
struct LoadShown {
  app::LoadReport report;
  ShownJournal journal;
};

std::string OwnObjectsDifference(const LoadShown& shown, const LoadShown& expected) {
  if (shown.report.loaded != expected.report.loaded) return shown.report.loaded ? "it loaded" : "it did not load";
  if (shown.report.notify != expected.report.notify) return "it says something else";
  if (shown.report.process != expected.report.process) return "it went on otherwise";
  if (shown.journal.caption != expected.journal.caption) return "it is called " + shown.journal.caption;
  if (shown.journal.rows.size() != expected.journal.rows.size()) {
    return std::to_string(shown.journal.rows.size()) + " rows instead of " +
           std::to_string(expected.journal.rows.size());
  }
  for (size_t row = 0; row < shown.journal.rows.size(); ++row) {
    const ShownRow& got = shown.journal.rows[row];
    const ShownRow& wanted = expected.journal.rows[row];
    const bool same_row = got.node == wanted.node && got.level == wanted.level && got.hidden == wanted.hidden &&
                          got.height_twips == wanted.height_twips;
    if (!same_row) return "row " + std::to_string(row) + " is of another kind";
    for (size_t place = 0; place < kColumnCount; ++place) {
      if (got.text[place] != wanted.text[place] || got.display[place] != wanted.display[place]) {
        return "row " + std::to_string(row) + ", column " + std::to_string(place) + ": " + got.text[place] + " (" +
               got.display[place] + ") instead of " + wanted.text[place] + " (" + wanted.display[place] + ")";
      }
    }
  }
  return {};
}

class OwnObjectsDifferential : public EndToEnd {
 protected:
  LoadShown ShownBy(std::shared_ptr<platform::Connection> connection, const app::JournalOptions& options) {
    LoadShown shown;
    shown.report = app::LoadJournal(desk().control(), std::move(connection), options);
    if (shown.report.loaded) shown.journal = FromGrid(desk().sheet());
    shown.journal.caption = desk().control().Caption();
    return shown;
  }
  // How many rows the file shows.
  size_t Compare(const std::string& path, const std::shared_ptr<const testing::PlainInventory>& objects,
                 const app::JournalOptions& options, const std::string& settings, Gives gives) {
    const std::string more = settings.empty() ? "" : ";" + settings;
    const LoadShown expected = ShownBy(
        std::make_shared<databases::EmbeddedConnection>("Provider=Stockbook.Embedded;Data Source=" + path + more),
        options);
    LoadShown shown =
        ShownBy(databases::OpenRowSource(std::make_shared<testing::PlainSource>(objects, gives), settings), options);
    left_out_ += std::erase_if(shown.report.notify, testing::PlainSource::IsOfWhatIsNotListed);
    EXPECT_EQ(OwnObjectsDifference(shown, expected), "") << Describe(options) << " " << settings;
    return expected.journal.rows.size();
  }
  static std::shared_ptr<const testing::PlainInventory> Objects(const std::string& path) {
    return std::make_shared<testing::PlainInventory>(testing::ReadPlainInventory(path));
  }

  size_t left_out_ = 0;  // how often a load said that bills are not listed
};

TEST_F(OwnObjectsDifferential, RandomInventoriesAreShownAsTheirFilesAre) {
  size_t rows = 0;
  for (uint64_t seed = 7001; seed < 7061 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string path = PathOf("random.db");
    RandomInventory inventory(seed);
    inventory.Write(path, Declared::kUsual);
    testing::LetItSayWhatObjectsSay(path);
    const auto objects = Objects(path);
    const auto shuffled =
        std::make_shared<testing::PlainInventory>(testing::Shuffled(*objects, static_cast<unsigned>(seed)));
    for (int journal = 0; journal < 8; ++journal) {
      const app::JournalOptions options = inventory.AnyJournal(journal % 4);
      rows += Compare(path, objects, options, "", Gives::kWhatIsAsked);
      rows += Compare(path, journal < 4 ? objects : shuffled, options, journal % 3 == 0 ? "Dialect=SQL" : "",
                      journal < 4 ? Gives::kAll : Gives::kWhatIsAsked);
    }
    std::filesystem::remove(path);
  }
  EXPECT_GT(rows, 2000U) << "there was something to compare";
  EXPECT_GT(left_out_, 0U) << "some bills are in no period";
}

TEST_F(OwnObjectsDifferential, TheSampleInventoryIsShownAsItsFileIs) {
  const std::string path = PathOf("sample.db");
  app::WriteSampleInventory(path, {.lines = 5000});
  testing::LetItSayWhatObjectsSay(path);
  const auto objects = Objects(path);
  size_t rows = 0;
  for (int type = 0; type < 4; ++type) {
    for (const int32_t product : {0, 1, 2, 7}) {
      for (const int32_t second : {0, 1, 3})
        rows += Compare(path, objects, {type, product, second, {}, true, true, false}, "", Gives::kWhatIsAsked);
      rows += Compare(path, objects, {type, product, 0, "01", false, false, true}, "", Gives::kAll);
    }
  }
  EXPECT_GT(rows, 5000U);
  EXPECT_EQ(left_out_, 0U) << "all of it is listed";
}

}  // namespace
}  // namespace stockbook::end_to_end
