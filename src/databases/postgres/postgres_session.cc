// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_session.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "databases/dialect/typed_sql.h"
#include "databases/postgres/result_decoder.h"
#include "databases/postgres/wire_numbers.h"
#include "stockbook/base/scope_exit.h"

namespace stockbook::databases {
namespace {

// Rows a portion: as many as stay in the processor's cache while they are read.
constexpr int kPortionRows = 1000;
const std::string kFetch = "FETCH FORWARD " + std::to_string(kPortionRows) + " FROM stockbook_rows";

// What a session always has. Engines that speak the protocol but lack one of the last settings do not get it.
constexpr const char* kSetUp =
    "SET default_transaction_read_only = on;"
    "SET standard_conforming_strings = on;"
    "SET datestyle = 'ISO, YMD';"
    "SELECT pg_catalog.set_config(name, CASE name WHEN 'jit' THEN 'off' ELSE '1.0' END, false)"
    " FROM pg_catalog.pg_settings WHERE name IN ('jit', 'cursor_tuple_fraction')";

}  // namespace

PostgresSession::PostgresSession(PostgresSettings settings, Interruption& interruption)
    : settings_(std::move(settings)), interruption_(interruption) {
  Open();
}

PostgresSession::~PostgresSession() = default;

PostgresSession::Transaction::Transaction(PostgresSession& session) : session_(session) {
  if (session_.transactions_ == 0) session_.Begin();
  ++session_.transactions_;
}

PostgresSession::Transaction::~Transaction() {
  if (--session_.transactions_ == 0) session_.End();
}

void PostgresSession::Open() {
  link_.reset();
  auto link = std::make_unique<PostgresLink>(settings_, interruption_);
  link->Run(kSetUp);
  // Such a database may hold any bytes, and would refuse to give those that are no UTF-8; they are cleaned here.
  if (link->ServerParameter("server_encoding") == "SQL_ASCII") link->Run("SET client_encoding = SQL_ASCII");
  if (!settings_.schema.empty()) {
    const auto found = link->Ask(
        "SELECT 1 FROM pg_catalog.pg_namespace WHERE nspname = " + QuotedText(settings_.schema), WireFormat::kText);
    if (PQntuples(found.get()) == 0) {
      throw platform::Error(
          "Open", "数据库“" + settings_.server + "”中没有架构“" + settings_.schema + "”，请检查连接字符串的 Schema", 0,
          platform::ErrorKind::kInputOutput, "3F000");
    }
    link->Run("SET search_path = " + QuotedName(settings_.schema));
  }
  link_ = std::move(link);
}

// The server's own limit is a second line of defence, and therefore comes a little later.
std::string PostgresSession::TimeoutText() const {
  constexpr int64_t kGrace = 500;
  constexpr int64_t kMost = INT32_MAX - kGrace;
  const auto left = interruption_.Left();
  if (!left) return "SET LOCAL statement_timeout = 0";
  const int64_t milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(*left).count();
  return "SET LOCAL statement_timeout = " + std::to_string(std::min(milliseconds, kMost) + kGrace);
}

// A snapshot is taken by the first SELECT, not by BEGIN.
void PostgresSession::BeginOnLink() {
  link_->Run("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY;" + TimeoutText() + ";SELECT 1");
}

void PostgresSession::Begin() {
  interruption_.BeginMoment();
  ++moment_;
  if (link_ && !link_->IsLost()) {
    try {
      BeginOnLink();
      return;
    } catch (const platform::Error& error) {
      // The server may have been restarted meanwhile; nothing has been read yet.
      if (error.kind() == platform::ErrorKind::kInterrupted) throw;
    }
  }
  Open();
  BeginOnLink();
}

void PostgresSession::End() {
  if (!link_ || link_->IsLost()) return;
  try {
    link_->Post("COMMIT");
  } catch (const std::exception&) {
    link_.reset();  // the next moment connects anew
  }
}

PostgresResult PostgresSession::Ask(const std::string& sql) { return link_->Ask(sql, WireFormat::kText); }

size_t PostgresSession::Read(std::string_view sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks) {
  if (sql.find('\0') != std::string_view::npos) {
    throw platform::Error("Execute", "语句中含有空字符（NUL），请去掉它");
  }
  link_->Run("SAVEPOINT stockbook;" + TimeoutText());
  try {
    const size_t rows = ReadByCursor(std::string(sql), classes, sinks);
    link_->Post("CLOSE stockbook_rows;RELEASE SAVEPOINT stockbook");
    return rows;
  } catch (...) {
    const base::ScopeExit keep_transaction([&] {
      if (!link_->IsLost()) link_->Post("ROLLBACK TO SAVEPOINT stockbook;RELEASE SAVEPOINT stockbook");
    });
    throw;
  }
}

size_t PostgresSession::ReadByCursor(const std::string& sql, std::span<const ValueClass> classes,
                                     std::span<ColumnSink> sinks) {
  const std::string declaration = "DECLARE stockbook_rows NO SCROLL CURSOR FOR " + sql;
  link_->Ask(declaration, WireFormat::kText);
  if (const auto rows = ReadPortions(WireFormat::kBinary, classes, sinks)) return *rows;
  link_->Run("CLOSE stockbook_rows");
  link_->Ask(declaration, WireFormat::kText);
  if (const auto rows = ReadPortions(WireFormat::kText, classes, sinks)) return *rows;
  throw platform::Error("Execute", "服务器类型 money 的列不能与带时区的时间一起读取，请把它改为 numeric");
}

std::optional<size_t> PostgresSession::ReadPortions(WireFormat format, std::span<const ValueClass> classes,
                                                    std::span<ColumnSink> sinks) {
  PostgresResult portion = link_->Ask(kFetch, format);
  ResultDecoder decoder(portion.get(), classes, sinks);
  if (!decoder.CanRead()) return std::nullopt;
  if (decoder.NeedsCoinDecimals()) decoder.SetCoinDecimals(CoinDecimals());
  size_t rows = 0;
  for (;;) {
    const int count = PQntuples(portion.get());
    rows += static_cast<size_t>(count);
    interruption_.CountRows(static_cast<size_t>(count));
    const bool more = count == kPortionRows;
    if (more) link_->Send(kFetch, format);
    decoder.Take(portion.get());
    if (!more) break;
    portion = link_->Receive();
  }
  decoder.Finish();
  return rows;
}

// How many decimals an amount of the type money has is a setting of the server.
int PostgresSession::CoinDecimals() {
  if (!coin_decimals_) {
    const auto one = link_->Ask("SELECT CAST(1 AS pg_catalog.money)", WireFormat::kBinary);
    int decimals = 0;
    for (int64_t coins = WireSigned<int64_t>(PQgetvalue(one.get(), 0, 0)); coins >= 10; coins /= 10) ++decimals;
    coin_decimals_ = decimals;
  }
  return *coin_decimals_;
}

}  // namespace stockbook::databases
