// SPDX-License-Identifier: MIT
// Small random inventories, every journal of them recomputed. A failure names the seed.
#include <filesystem>

#include "end_to_end/fixture.h"
#include "end_to_end/random_inventory.h"

namespace stockbook::end_to_end {
namespace {

class RandomInventories : public EndToEnd {
 protected:
  void CompareRounds(uint64_t first_seed, int rounds, Declared declared) {
    for (uint64_t seed = first_seed; seed < first_seed + static_cast<uint64_t>(rounds) && !HasFailure(); ++seed) {
      const std::string path = PathOf("random.db");
      RandomInventory inventory(seed);
      inventory.Write(path, declared);
      const BaseTables tables(path);
      for (int journal = 0; journal < 8; ++journal) {
        EXPECT_TRUE(ShowsWhatTheTablesGive(path, tables, inventory.AnyJournal(journal % 4))) << "of seed " << seed;
      }
      std::filesystem::remove(path);
    }
  }
};

TEST_F(RandomInventories, AreShownAsTheirTablesGiveThem) { CompareRounds(1, 100, Declared::kUsual); }
TEST_F(RandomInventories, AreShownTheSameWithoutPrimaryKeys) { CompareRounds(1001, 30, Declared::kWithoutKeys); }
TEST_F(RandomInventories, AreShownTheSameWithoutDeclaredTypes) { CompareRounds(2001, 30, Declared::kNothing); }
TEST_F(RandomInventories, AreShownTheSameWithMoneyInRealColumns) { CompareRounds(3001, 30, Declared::kRealMoney); }
TEST_F(RandomInventories, AreShownTheSameWithMoneyInIntegerColumns) {
  CompareRounds(4001, 30, Declared::kIntegerMoney);
}

}  // namespace
}  // namespace stockbook::end_to_end
