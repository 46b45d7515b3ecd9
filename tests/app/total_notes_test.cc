// SPDX-License-Identifier: MIT
// What stands beside the two numbers of a total row.
#include <gtest/gtest.h>

#include <string>

#include "app/window_fixture.h"

namespace stockbook::app {
namespace {

class TotalNotes : public WindowTest {
 protected:
  void SetUp() override {
    Open();
    window_->LoadFirstJournal();
  }
  std::string Text(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
};

TEST_F(TotalNotes, StandBesideTheTwoNumbersOfATotal) {
  int totals = 0;
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    const bool is_total = grid().IsSubtotal(row) && !Text(row, "Quantity").empty();
    EXPECT_EQ(Text(row, "Explain") == "本期合计\n累计", is_total) << row;
    totals += is_total ? 1 : 0;
  }
  EXPECT_EQ(totals, 12);
}

TEST_F(TotalNotes, MoveWhereTheirColumnIsHidden) {
  int total = grid().NextSubtotal(grid().FixedRows());
  while (Text(total, "Quantity").empty()) total = grid().NextSubtotal(total + 1);
  grid().SetColHidden(grid().ColIndex("Explain"), true);
  Settle();
  EXPECT_EQ(Text(total, "BillKind"), "本期合计\n累计");
  EXPECT_EQ(Text(total, "Explain"), "");
  grid().SetColHidden(grid().ColIndex("Explain"), false);
  Settle();
  EXPECT_EQ(Text(total, "BillKind"), "");
  EXPECT_EQ(Text(total, "Explain"), "本期合计\n累计");
}

}  // namespace
}  // namespace stockbook::app
