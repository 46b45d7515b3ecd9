// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_writer.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"
#include "support/postgres_server.h"

namespace stockbook::databases {
namespace {

using base::Value;

std::vector<columns::Column> ColumnsHolding(const std::vector<std::vector<Value>>& columns) {
  std::vector<columns::Column> built;
  for (const std::vector<Value>& values : columns) {
    columns::ColumnBuilder builder;
    for (const Value& value : values) builder.Append(value);
    built.push_back(builder.Finish());
  }
  return built;
}

class WriterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (testing::SharedPostgresServer() == nullptr) GTEST_SKIP() << "no server to test with";
    DropTables();
  }
  void TearDown() override {
    if (testing::SharedPostgresServer() != nullptr) DropTables();
  }

  static testing::PostgresServer& server() { return *testing::SharedPostgresServer(); }
  static void DropTables() { server().Run("DROP TABLE IF EXISTS \"copied 'table\"; DROP TABLE IF EXISTS other"); }
  static std::string CountOfTables() {
    return server().Run("SELECT count(*) FROM pg_class WHERE relkind = 'r' AND relname IN ('copied ''table', 'other')");
  }
  static std::unique_ptr<TableWriter> Open(Existing existing = Existing::kRefused) {
    return OpenPostgresWriter(server().ConnectionString(), existing);
  }
  static std::string ErrorOfCall(const std::function<void()>& call) {
    try {
      call();
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "no error";
  }

  const StoredTable table_{"copied 'table",
                           {{"RecID", StoredType::kWhole},
                            {"数量", StoredType::kNumber},
                            {"除税 \"金额", StoredType::kMoney},
                            {"BillDate", StoredType::kDate},
                            {"说明", StoredType::kText}},
                           "RecID"};
  const std::vector<columns::Column> columns_ = ColumnsHolding(
      {{Value(std::numeric_limits<int64_t>::min()), Value(int64_t{0}), Value(int64_t{7}),
        Value(std::numeric_limits<int64_t>::max())},
       {Value(0.1), Value(1e300), Value(-std::numeric_limits<double>::infinity()), Value()},
       {Value(base::Money::FromUnits(std::numeric_limits<int64_t>::max())),
        Value(base::Money::FromUnits(std::numeric_limits<int64_t>::min())), Value(base::Money::FromUnits(-1)), Value()},
       {Value(*base::Date::Parse("0100-01-01")), Value(*base::Date::Parse("9999-12-31 23:59:59")), Value(base::Date()),
        Value()},
       {Value(std::string("a\tb\nc\\N\r\"';")), Value(std::string()), Value(std::string("螺栓\\.")), Value()}});
};

TEST_F(WriterTest, StoresValuesAsTheyAre) {
  const auto writer = Open();
  writer->Create(table_);
  writer->Write(table_, columns_, 0, 1);
  writer->Write(table_, columns_, 1, 3);
  writer->Seal({});
  const std::vector<columns::Column> stored = writer->ReadBack(table_);
  ASSERT_EQ(stored.size(), columns_.size());
  for (size_t index = 0; index < stored.size(); ++index) {
    ASSERT_EQ(stored[index].size(), 4U);
    for (size_t row = 0; row < 4; ++row)
      EXPECT_EQ(stored[index].At(row), columns_[index].At(row)) << table_.columns[index].name << " " << row;
  }
}

TEST_F(WriterTest, ShowsNothingToOthersUntilItIsCommitted) {
  const auto writer = Open();
  writer->Create(table_);
  writer->Write(table_, columns_, 0, 4);
  writer->Seal({});
  EXPECT_EQ(CountOfTables(), "0");
  writer->Commit();
  EXPECT_EQ(CountOfTables(), "1");
  EXPECT_EQ(server().Run("SELECT count(*) FROM \"copied 'table\""), "4");
}

TEST_F(WriterTest, LeavesNothingWithoutACommit) {
  {
    const auto writer = Open();
    writer->Create(table_);
    writer->Write(table_, columns_, 0, 4);
  }
  // The server notices that the writer went away a moment later, and holds its locks until then.
  Open(Existing::kReplaced)->Create(table_);
  EXPECT_EQ(CountOfTables(), "0");
}

TEST_F(WriterTest, ChoosesTypesKeysAndIndexes) {
  const auto writer = Open();
  writer->Create(table_);
  writer->Write(table_, columns_, 0, 4);
  const StoredIndex index{"other index", table_.name, {"说明", "数量"}};
  writer->Seal({&index, 1});
  writer->Commit();
  EXPECT_EQ(server().Run("SELECT string_agg(format_type(atttypid, atttypmod), ', ' ORDER BY attnum) FROM pg_attribute "
                         "WHERE attrelid = '\"copied ''table\"'::regclass AND attnum > 0"),
            "bigint, double precision, numeric(19,4), timestamp without time zone, text");
  EXPECT_EQ(server().Run("SELECT string_agg(pg_get_indexdef(indexrelid), ' ' ORDER BY indisprimary) FROM pg_index "
                         "WHERE indrelid = '\"copied ''table\"'::regclass"),
            "CREATE INDEX \"other index\" ON public.\"copied 'table\" USING btree (\"说明\", \"数量\") "
            "CREATE UNIQUE INDEX \"copied 'table_pkey\" ON public.\"copied 'table\" USING btree (\"RecID\")");
  EXPECT_NE(server().Run("SELECT reltuples FROM pg_class WHERE oid = '\"copied ''table\"'::regclass"), "-1");
}

TEST_F(WriterTest, KeepsRowsWithoutAKeyInTheirOrder) {
  const StoredTable table{"other", {{"说明", StoredType::kText}}, ""};
  const auto columns = ColumnsHolding({{Value(std::string("z")), Value(), Value(std::string("a"))}});
  const auto writer = Open();
  writer->Create(table);
  writer->Write(table, columns, 0, 3);
  writer->Seal({});
  const auto stored = writer->ReadBack(table);
  ASSERT_EQ(stored.size(), 1U);
  EXPECT_EQ(stored[0].Text(0) + "|" + stored[0].Text(1) + "|" + stored[0].Text(2), "z||a");
}

TEST_F(WriterTest, ReplacesTablesOnlyWhenToldTo) {
  server().Run("CREATE TABLE other(precious integer); INSERT INTO other VALUES (1)");
  const StoredTable table{"other", {{"说明", StoredType::kText}}, ""};
  EXPECT_EQ(ErrorOfCall([&] { Open()->Create(table); }), "目标库已有表“other”，没有写入任何内容；要替换请加 --replace");
  {
    const auto writer = Open(Existing::kReplaced);
    writer->Create(table);
  }
  EXPECT_EQ(server().Run("SELECT precious FROM other"), "1") << "what was not committed replaces nothing";
  const auto writer = Open(Existing::kReplaced);
  writer->Create(table);
  writer->Commit();
  EXPECT_EQ(server().Run("SELECT count(*) FROM other"), "0");
}

TEST_F(WriterTest, RefusesTextsAmongNumbers) {
  const StoredTable table{"other", {{"数量", StoredType::kNumber, true}}, ""};
  EXPECT_EQ(ErrorOfCall([&] { Open()->Create(table); }),
            "表“other”的列“数量”中混有数和文本，服务器无法保存，没有写入任何内容，请先用 stockbook doctor 检查并改正");
}

TEST_F(WriterTest, SaysWhatTheServerRefuses) {
  const std::vector<columns::Column> twice = ColumnsHolding({{Value(int64_t{1}), Value(int64_t{1})}});
  const StoredTable table{"other", {{"RecID", StoredType::kWhole}}, "RecID"};
  const auto writer = Open();
  writer->Create(table);
  const std::string error = ErrorOfCall([&] { writer->Write(table, twice, 0, 2); });
  EXPECT_TRUE(error.starts_with("目标服务器拒绝写入，没有写入任何内容：")) << error;
}

TEST_F(WriterTest, SaysThatTheServerWentAway) {
  const auto writer = Open();
  writer->Create(table_);
  server().Kill();
  EXPECT_EQ(ErrorOfCall([&] { writer->Write(table_, columns_, 0, 4); }),
            "与目标服务器的连接已断开，没有写入任何内容，请检查网络后重试");
  server().Start();
  EXPECT_EQ(CountOfTables(), "0");
}

TEST_F(WriterTest, SaysThatItCannotConnect) {
  const std::string error =
      ErrorOfCall([] { OpenPostgresWriter("Provider=Postgres;Host=127.0.0.1;Port=1;Database=x", Existing::kRefused); });
  EXPECT_NE(error.find("127.0.0.1:1/x"), std::string::npos) << error;
}

}  // namespace
}  // namespace stockbook::databases
