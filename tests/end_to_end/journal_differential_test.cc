// SPDX-License-Identifier: MIT
// Random inventories of hostile values: every journal of them, by every plan and in both dialects, against one that is
// joined by hand-written SQL and recomputed. A failure names the seed. STOCKBOOK_DIFFERENTIAL_PAIRS asks for another
// number of pairs of inventory and journal, STOCKBOOK_DIFFERENTIAL_SEED for other inventories.
#include <cstdlib>
#include <filesystem>

#include "end_to_end/fixture.h"
#include "end_to_end/random_inventory.h"

namespace stockbook::end_to_end {
namespace {

using app::SqlDialect;
using databases::Strategy;

uint64_t NumberFrom(const char* variable, uint64_t otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

constexpr const char* kStrategies[] = {"fastest", "statement", "arms"};

class JournalDifferential : public EndToEnd {
 protected:
  static constexpr int kJournals = 8;

  void CompareInventory(uint64_t seed, Declared declared) {
    const std::string path = PathOf("random.db");
    RandomInventory inventory(seed, RandomInventory::Values::kHostile);
    inventory.Write(path, declared);
    const BaseTables tables(path);
    for (int journal = 0; journal < kJournals; ++journal) {
      const app::JournalOptions options = inventory.AnyJournal(journal % 4);
      for (const SqlDialect dialect : {SqlDialect::kDesktop, SqlDialect::kServer}) {
        const RecomputedJournal expected(tables, options, dialect);
        for (const Strategy strategy : {Strategy::kFastest, Strategy::kStatement, Strategy::kArms}) {
          EXPECT_TRUE(AgreesBy({dialect, strategy}, path, expected, options))
              << "of seed " << seed << ", plan " << kStrategies[static_cast<int>(strategy)]
              << (dialect == SqlDialect::kServer ? ", server" : "");
        }
      }
    }
    if (const char* kept = std::getenv("STOCKBOOK_DIFFERENTIAL_KEEP"); kept != nullptr && HasFailure())
      std::filesystem::copy_file(path, kept, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(path);
  }
};

TEST_F(JournalDifferential, FindsNoDifferenceByAnyPlanInAnyDialect) {
  constexpr Declared kDeclared[] = {Declared::kUsual,       Declared::kWithoutKeys,  Declared::kNothing,
                                    Declared::kRealMoney,   Declared::kIntegerMoney, Declared::kTextKeys,
                                    Declared::kTextMasters, Declared::kNumericMoney};
  const uint64_t pairs = NumberFrom("STOCKBOOK_DIFFERENTIAL_PAIRS", 420);
  const uint64_t first = NumberFrom("STOCKBOOK_DIFFERENTIAL_SEED", 1);
  const uint64_t inventories = (pairs + kJournals - 1) / kJournals;
  for (uint64_t seed = first; seed < first + inventories && !HasFailure(); ++seed)
    CompareInventory(seed, kDeclared[seed % std::size(kDeclared)]);
}

}  // namespace
}  // namespace stockbook::end_to_end
