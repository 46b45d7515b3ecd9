// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "databases/execution/interruption.h"
#include "databases/execution/row_reader.h"
#include "databases/postgres/postgres_link.h"
#include "databases/postgres/postgres_settings.h"

namespace stockbook::databases {

// A session at a server, read only, which connects again by itself when its server was restarted between two moments.
// Rows come by a cursor in binary portions, the next of which the server makes while one is read. One thread at a time,
// and everything while a statement of the interruption runs.
class PostgresSession : public RowReader {
 public:
  // Connects; throws platform::Error with one sentence for the user.
  PostgresSession(PostgresSettings settings, Interruption& interruption);
  ~PostgresSession() override;

  // Everything read during its lifetime comes from one state of the database, that of the outermost one's beginning.
  class Transaction {
   public:
    // Throws platform::Error when no connection can be had. The outermost one begins a moment of the interruption.
    explicit Transaction(PostgresSession& session);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

   private:
    PostgresSession& session_;
  };

  // Within a Transaction. A statement that fails leaves the transaction as it was.
  size_t Read(std::string_view sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks) override;
  // Runs a statement of the program's own and gives its rows in text; within a Transaction.
  PostgresResult Ask(const std::string& sql);

  const PostgresSettings& settings() const { return settings_; }
  // Counts the transactions: what was read from the catalogue holds as long as it stays the same.
  unsigned long long moment() const { return moment_; }

 private:
  void Open();
  void Begin();
  void End();
  void BeginOnLink();
  std::string TimeoutText() const;
  size_t ReadByCursor(const std::string& sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks);
  // Nothing where the rows cannot be read in the format.
  std::optional<size_t> ReadPortions(WireFormat format, std::span<const ValueClass> classes,
                                     std::span<ColumnSink> sinks);
  int CoinDecimals();

  const PostgresSettings settings_;
  Interruption& interruption_;
  std::unique_ptr<PostgresLink> link_;
  int transactions_ = 0;
  unsigned long long moment_ = 0;
  std::optional<int> coin_decimals_;
};

}  // namespace stockbook::databases
