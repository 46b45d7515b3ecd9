// SPDX-License-Identifier: MIT
#include "databases/sqlite/row_visitor.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>

#include "databases/database_file.h"
#include "databases/sqlite/functions.h"
#include "databases/sqlite/known_texts.h"

namespace stockbook::testing {
namespace {

using databases::Database;
using databases::KnownTexts;
using databases::RowQuery;
using databases::VisitRows;

class CallingVisitor : public databases::RowVisitor {
 public:
  using Call = std::function<void(std::span<sqlite3_value* const>)>;
  explicit CallingVisitor(Call call) : call_(std::move(call)) {}
  void Visit(std::span<sqlite3_value* const> values) override { call_(values); }

 private:
  Call call_;
};

class RowVisits : public ::testing::Test {
 protected:
  RowVisits() {
    CreateInventory(file_);
    FillInventory(file_);
    database_.emplace(file_.path());
    RegisterFunctions(*database_);
  }

  DatabaseFile file_;
  std::optional<Database> database_;
};

TEST_F(RowVisits, HandOverTheRowsInTheirOrderWithTheirTypes) {
  std::string seen;
  CallingVisitor visitor([&](std::span<sqlite3_value* const> values) {
    ASSERT_EQ(values.size(), 4U);
    EXPECT_EQ(sqlite3_value_type(values[1]), SQLITE_FLOAT);
    EXPECT_EQ(sqlite3_value_type(values[3]), SQLITE_NULL);
    seen +=
        std::to_string(sqlite3_value_int64(values[0])) + "=" + std::to_string(sqlite3_value_double(values[1])) + " ";
  });
  const int64_t numbers[] = {100, 102};
  VisitRows(*database_, {{"RecID", "数量", "除税金额", "NULL"}, " FROM 入库记录 WHERE RecID BETWEEN ?2 AND ?3"},
            visitor, numbers);
  EXPECT_EQ(seen, "100=10.000000 101=4.000000 102=3.000000 ");
}

TEST_F(RowVisits, HandOverMoreColumnsThanAFunctionHasArguments) {
  RowQuery query{std::vector<std::string>(300, "RecID"), " FROM 入库记录"};
  int rows = 0;
  CallingVisitor visitor([&](std::span<sqlite3_value* const> values) {
    ASSERT_EQ(values.size(), 300U);
    EXPECT_EQ(sqlite3_value_int64(values[299]), 100 + rows++);
  });
  VisitRows(*database_, query, visitor, {});
  EXPECT_EQ(rows, 5);
}

TEST_F(RowVisits, EndWithWhatTheVisitorThrows) {
  int rows = 0;
  CallingVisitor visitor([&](std::span<sqlite3_value* const>) {
    if (++rows == 2) throw std::runtime_error("enough");
  });
  for (const size_t columns : {1U, 300U}) {
    rows = 0;
    try {
      VisitRows(*database_, {std::vector<std::string>(columns, "RecID"), " FROM 入库记录"}, visitor, {});
      FAIL();
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "enough");
    }
    EXPECT_EQ(rows, 2);
  }
}

TEST_F(RowVisits, AreNotForTheTextsOfStatements) {
  EXPECT_THROW(databases::Statement(*database_, "SELECT sb_visit(NULL, 1)").Step(), platform::Error);
  EXPECT_THROW(databases::Statement(*database_, "SELECT sb_visit('stockbook visit', 1)").Step(), platform::Error);
}

TEST(KnownTexts, RemembersTheCodesOfTheLastTexts) {
  KnownTexts known;
  EXPECT_TRUE(known.CodesOf("").empty());
  const std::vector<uint32_t> codes = {7, 8};
  for (const char* text : {"", "a", "ab", "abcd", "abcdefgh", "一个比较长的中文名称"}) {
    EXPECT_TRUE(known.CodesOf(text).empty()) << text;
    known.Remember(text, codes);
    ASSERT_EQ(known.CodesOf(text).size(), 2U) << text;
    EXPECT_EQ(known.CodesOf(text)[1], 8U);
  }
  EXPECT_FALSE(known.IsUseful(std::string(65, 'x')));
  EXPECT_TRUE(known.CodesOf(std::string(65, 'x')).empty());
}

TEST(KnownTexts, GivesUpWhereTextsHardlyEverComeAgain) {
  KnownTexts known;
  const std::vector<uint32_t> codes = {1};
  for (int text = 0; text < 10000; ++text) {
    EXPECT_TRUE(known.CodesOf(std::to_string(text)).empty());
    known.Remember(std::to_string(text), codes);
  }
  EXPECT_FALSE(known.IsUseful("1"));
}

}  // namespace
}  // namespace stockbook::testing
