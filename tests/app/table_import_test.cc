// SPDX-License-Identifier: MIT
#include "stockbook/import/table_import.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/inventory_fixture.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/open_table.h"

namespace stockbook::app {
namespace {

// Ends an import after some records.
class Impatient : public ImportObserver {
 public:
  explicit Impatient(int64_t most) : most_(most) {}
  bool GoesOn(int64_t lines) override { return lines < most_; }

 private:
  int64_t most_;
};

class TableImport : public InventoryTest {
 protected:
  static ImportResult Import(const std::string& text, const std::string& output, ImportObserver& observer) {
    std::istringstream in(text);
    const auto table = OpenTable("-", in, {});
    ImportPlan plan{ImportMapping(ImportMapping::Positions{0, {}, {}, 1, 2, {}, {}, {}}), Direction::Issue,
                    table->decimal(), output};
    return ImportTable(*table, plan, observer);
  }
};

const std::string kThreeLines = "p,d,q\nA,2025-01-02,1\nB,2025-01-02,2\nC,2025-01-02,3\n";

TEST_F(TableImport, TakesColumnsByTheirPlaces) {
  ImportObserver observer;
  const ImportResult result = Import(kThreeLines, PathOf("new.db"), observer);
  EXPECT_TRUE(result.is_written);
  EXPECT_EQ(result.tally.imported, 3);
  EXPECT_EQ(OpenedInventory(PathOf("new.db")).One("SELECT sum(数量) FROM 出库记录"), "6");
}

TEST_F(TableImport, LeavesNothingBehindWhenItIsEnded) {
  Write("old.db", "old");
  for (const int64_t most : {0, 1, 2}) {
    Impatient observer(most);
    for (const char* name : {"new.db", "old.db"}) {
      const ImportResult result = Import(kThreeLines, PathOf(name), observer);
      EXPECT_FALSE(result.is_written);
      EXPECT_FALSE(result.tally.is_whole);
      EXPECT_EQ(result.tally.imported, most);
    }
  }
  EXPECT_EQ(Files(), std::vector<std::string>{"old.db"});
  EXPECT_EQ(ReadAll(PathOf("old.db")), "old");
}

TEST_F(TableImport, RefusesPlacesThatATableDoesNotHave) {
  ImportObserver observer;
  EXPECT_THROW(Import("p,d\nA,2025-01-02\n", PathOf("new.db"), observer), TableError);
  EXPECT_TRUE(Files().empty());
}

TEST_F(TableImport, FindsTheDelimiterWhereNoneIsGiven) {
  ImportObserver observer;
  const ImportResult result = Import("p;d;q\nA;2025-01-02;1,5\n", PathOf("new.db"), observer);
  EXPECT_TRUE(result.is_written);
  EXPECT_EQ(OpenedInventory(PathOf("new.db")).One("SELECT 数量 FROM 出库记录"), "1.5");
}

}  // namespace
}  // namespace stockbook::app
