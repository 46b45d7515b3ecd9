// SPDX-License-Identifier: MIT
#include "postgres/session_fixture.h"

#include "base/number.h"

namespace stockbook::databases {
namespace {

std::string TypedText(const base::Value& value) {
  if (value.IsNull()) return "null";
  if (value.As<int64_t>() != nullptr) return "int:" + value.Text();
  if (value.As<base::Money>() != nullptr) return "money:" + value.Text();
  if (value.As<base::Date>() != nullptr) return "date:" + value.Text();
  if (const auto* real = value.As<double>()) return "real:" + std::to_string(*real);
  return "text:" + value.Text();
}

}  // namespace

platform::Error ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const platform::Error& error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return {"", ""};
}

void PostgresTest::SetUp() {
  server_ = testing::SharedPostgresServer();
  if (server_ == nullptr) GTEST_SKIP() << "no server to test with: install the package postgresql";
  server_->Run("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
  Connect();
}

void PostgresTest::TearDown() { session_.reset(); }

void PostgresTest::Connect(const std::string& more) {
  session_.reset();
  PostgresSettings settings = ReadPostgresSettings(server().ConnectionString(more));
  interruption_.emplace(settings.time_limit);
  const Interruption::Running running(*interruption_);
  session_ = std::make_unique<PostgresSession>(std::move(settings), *interruption_);
}

std::vector<columns::Column> PostgresTest::Columns(std::string_view sql, const std::vector<ValueClass>& classes) {
  const Interruption::Running running(interruption());
  const PostgresSession::Transaction transaction(session());
  std::vector<ColumnSink> sinks(classes.size());
  const size_t rows = session().Read(sql, classes, sinks);
  std::vector<columns::Column> columns;
  for (ColumnSink& sink : sinks) {
    EXPECT_EQ(sink.builder.size(), rows);
    columns.push_back(sink.builder.Finish());
  }
  return columns;
}

std::vector<std::string> PostgresTest::Rows(std::string_view sql, const std::vector<ValueClass>& classes) {
  const std::vector<columns::Column> columns = Columns(sql, classes);
  std::vector<std::string> rows(columns.at(0).size());
  for (size_t row = 0; row < rows.size(); ++row) {
    for (const columns::Column& column : columns) {
      rows[row] += (&column == columns.data() ? "" : "|") + TypedText(column.At(row));
    }
  }
  return rows;
}

}  // namespace stockbook::databases
