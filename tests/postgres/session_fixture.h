// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/execution/interruption.h"
#include "databases/postgres/postgres_session.h"
#include "stockbook/platform/error.h"
#include "support/postgres_server.h"

namespace stockbook::databases {

// The error that a call throws; the test fails when it throws none.
platform::Error ErrorOf(const std::function<void()>& call);

// A session at the server that the tests share.
class PostgresTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  testing::PostgresServer& server() { return *server_; }
  // Connects anew, with these settings behind those of the server.
  void Connect(const std::string& more = {});
  PostgresSession& session() { return *session_; }
  Interruption& interruption() { return *interruption_; }

  // The columns of a statement in the server's own language, read in a transaction of its own.
  std::vector<columns::Column> Columns(std::string_view sql, const std::vector<ValueClass>& classes);
  // Values with their types, rows joined by "|": "int:5", "money:1.25", "real:…", "date:…", "text:…", "null".
  std::vector<std::string> Rows(std::string_view sql, const std::vector<ValueClass>& classes);
  // The one value of a statement.
  std::string One(std::string_view sql, ValueClass cls) { return Rows(sql, {cls}).at(0); }

 private:
  testing::PostgresServer* server_ = nullptr;
  std::optional<Interruption> interruption_;
  std::unique_ptr<PostgresSession> session_;
};

}  // namespace stockbook::databases
