// SPDX-License-Identifier: MIT
#include "stockbook/qt/dates.h"

#include <gtest/gtest.h>

namespace stockbook::qt {
namespace {

TEST(Dates, AreTheSameDayInTheToolkit) {
  EXPECT_EQ(FromQDate(QDate(2024, 2, 29)).Text(), "2024-02-29");
  EXPECT_EQ(ToQDate(FromQDate(QDate(2024, 2, 29))), QDate(2024, 2, 29));
  EXPECT_EQ(ToQDate(base::Date::Parse("2025-03-15 23:59:59").value()), QDate(2025, 3, 15));
  EXPECT_EQ(ToQDate(FromQDate(QDate(100, 1, 1))), QDate(100, 1, 1));
}

TEST(Dates, AreNoneWhereThereIsNone) {
  EXPECT_TRUE(FromQDate(QDate()).IsZero());
  EXPECT_TRUE(FromQDate(QDate(-5, 3, 1)).IsZero());
  EXPECT_TRUE(FromQDate(QDate(12000, 3, 1)).IsZero());
  EXPECT_FALSE(ToQDate(base::Date()).isValid());
}

}  // namespace
}  // namespace stockbook::qt
