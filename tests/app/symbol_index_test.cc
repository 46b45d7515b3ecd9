// SPDX-License-Identifier: MIT
#include "stockbook/find/symbol_index.h"

#include <gtest/gtest.h>

#include <string>

#include "app/shown_rows.h"

namespace stockbook::app {
namespace {

// 300 records of two texts each, numbers and bills; more than a word of bits, and not a whole number of words.
class TextsOfRecords : public ::testing::Test {
 protected:
  static constexpr size_t kRecords = 300;

  TextsOfRecords() : index_(kRecords, 2) {
    for (size_t record = 0; record < kRecords; ++record) {
      for (size_t column = 0; column < 2; ++column) index_.Add(record, column, TextOf(record, column));
    }
    index_.Finish();
  }

  static std::string TextOf(size_t record, size_t column) {
    const std::string number = std::to_string(record * 7919 % 1000);
    if (column == 1) return (record % 3 == 0 ? "销售单 XS-" : "入库单 RK-") + number;
    return (record % 2 == 0 ? "-" : "") + std::to_string(record % 9 + 1) + "," + std::string(3 - number.size(), '0') +
           number + "." + std::to_string(record % 10) + "5";
  }
  RowBits Narrowed(const std::string& part, SymbolIndex::Answer* answer = nullptr) const {
    RowBits rows = RowBits::All(kRecords);
    const SymbolIndex::Answer given = index_.Narrow(part, rows);
    if (answer != nullptr) *answer = given;
    return rows;
  }

  SymbolIndex index_;
};

TEST_F(TextsOfRecords, NarrowingNeverDropsARecordThatHasThePart) {
  for (const char* part : {"1", "12", "123", "1234", ".", "5.", ".5", "3.2", "0.05", "-", "-1", "-10", "1,0", "销",
                           "销售单", "单 x", "rk-1", "xs-99", "入库单 rk-7"}) {
    const RowBits rows = Narrowed(part);
    const uint32_t signature = SymbolIndex::SignatureOf(part);
    for (size_t record = 0; record < kRecords; ++record) {
      for (size_t column = 0; column < 2; ++column) {
        if (!ShowsWord(TextOf(record, column), part)) continue;
        EXPECT_TRUE(rows.Has(record)) << part << " in " << TextOf(record, column);
        EXPECT_NE(index_.ColumnsThatCanHold(record, signature) & (uint64_t{1} << column), 0U) << part;
      }
    }
  }
}

TEST_F(TextsOfRecords, WhatItKnowsExactlyItKnowsOfEveryRecord) {
  size_t exact = 0;
  for (const char* part : {"1", "7", ".", "-", "12", "90", "5.", ".5", "-1", "3.2", "9.9", "销", "库"}) {
    auto answer = SymbolIndex::Answer::kMayHoldIt;
    const RowBits rows = Narrowed(part, &answer);
    if (answer != SymbolIndex::Answer::kHoldIt) continue;
    ++exact;
    for (size_t record = 0; record < kRecords; ++record) {
      const bool has = ShowsWord(TextOf(record, 0), part) || ShowsWord(TextOf(record, 1), part);
      EXPECT_EQ(rows.Has(record), has) << part << " in " << TextOf(record, 0) << " and " << TextOf(record, 1);
    }
  }
  EXPECT_GE(exact, 11U) << "of all but perhaps a character that shares its class";
}

TEST_F(TextsOfRecords, ALongerPartIsNotKnownExactly) {
  for (const char* part : {"123", "销售", "1-2", "单 x"}) {
    auto answer = SymbolIndex::Answer::kHoldIt;
    Narrowed(part, &answer);
    EXPECT_EQ(answer, SymbolIndex::Answer::kMayHoldIt) << part;
  }
}

TEST_F(TextsOfRecords, WhatNoTextHasLeavesNothing) {
  EXPECT_EQ(Narrowed("%").Count(), 0U);
  EXPECT_EQ(Narrowed("..").Count(), 0U);
}

TEST_F(TextsOfRecords, ItSaysWhichTextsAreMoreThanNumbers) {
  SymbolIndex index(1, 3);
  EXPECT_FALSE(index.Add(0, 0, "-1,234.50"));
  EXPECT_TRUE(index.Add(0, 1, "12%"));
  EXPECT_TRUE(index.Add(0, 2, "单"));
}

TEST(RowBits, CountsAndCombinesSets) {
  RowBits all = RowBits::All(70);
  EXPECT_EQ(all.Count(), 70U);
  RowBits some(70);
  some.Add(0);
  some.Add(69);
  EXPECT_TRUE(some.Has(69));
  EXPECT_FALSE(some.Has(68));
  all.Drop(some);
  EXPECT_EQ(all.Count(), 68U);
  all.KeepOnly(some.words());
  EXPECT_EQ(all.Count(), 0U);
  all.Join(some);
  EXPECT_EQ(all.Count(), 2U);
  EXPECT_EQ(RowBits::All(0).Count(), 0U);
  EXPECT_EQ(RowBits::All(64).Count(), 64U);
}

}  // namespace
}  // namespace stockbook::app
