// SPDX-License-Identifier: MIT
#include "journal/issue_source.h"

#include <gtest/gtest.h>

#include "stockbook/platform/error.h"
#include "support/small_journal.h"

namespace stockbook::journal {
namespace {

TEST(IssueSource, IsAReceiptForAPositiveKeyAndTheOpeningStockForANegativeOne) {
  const auto connection = testing::SmallJournal();
  EXPECT_EQ(IssueSource(connection.get(), 83), "出库自“总库”：2005年03月08日采购入库第 12 号");
  EXPECT_EQ(IssueSource(connection.get(), -3), "出库自“总库”：2005年1月期初库存");
  EXPECT_TRUE(connection->Sent()[0].ends_with("Where r.RecID=83"));
  EXPECT_TRUE(connection->Sent()[1].ends_with("Where ID=3"));
}

TEST(IssueSource, IsEmptyAndAsksForNothingWhereThereIsNone) {
  testing::FakeConnection connection;
  EXPECT_EQ(IssueSource(&connection, 0), "");
  EXPECT_EQ(IssueSource(nullptr, 5), "");
  EXPECT_TRUE(connection.Sent().empty());
  EXPECT_THROW(IssueSource(&connection, 5), platform::Error) << "the query fails";
}

}  // namespace
}  // namespace stockbook::journal
