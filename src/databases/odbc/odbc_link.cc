// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_link.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "databases/odbc/driver_manager.h"
#include "databases/odbc/odbc_text.h"

namespace stockbook::databases {
namespace {

// ODBC passes whole numbers of attributes as pointers.
SQLPOINTER AttributeValue(uintptr_t number) {
  return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

// A text for a driver, by both kinds of its functions.
class OdbcArgument {
 public:
  explicit OdbcArgument(std::string_view text) : narrow_(base::CleanUtf8(text)), wide_(Widened(text)) {}
  SQLWCHAR* wide() { return wide_.data(); }
  SQLCHAR* narrow() { return reinterpret_cast<SQLCHAR*>(narrow_.data()); }
  // An empty name means any.
  SQLWCHAR* WideOrAny() { return narrow_.empty() ? nullptr : wide(); }
  SQLCHAR* NarrowOrAny() { return narrow_.empty() ? nullptr : narrow(); }

 private:
  std::string narrow_;
  OdbcWideText wide_;
};

SQLRETURN ExecuteOn(SQLHSTMT statement, std::string_view sql, OdbcLetters letters) {
  OdbcArgument text(sql);
  return letters == OdbcLetters::kWide ? SQLExecDirectW(statement, text.wide(), SQL_NTS)
                                       : SQLExecDirect(statement, text.narrow(), SQL_NTS);
}

// Freed whatever happens; the link itself must outlive it.
struct PlainStatement {
  explicit PlainStatement(SQLHDBC connection) { SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle); }
  ~PlainStatement() {
    if (handle != nullptr) SQLFreeHandle(SQL_HANDLE_STMT, handle);
  }
  PlainStatement(const PlainStatement&) = delete;
  PlainStatement& operator=(const PlainStatement&) = delete;
  SQLHSTMT handle = nullptr;
};

bool IsPlainAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

OdbcEngine EngineOf(std::string_view name) {
  if (name == "PostgreSQL") return OdbcEngine::kPostgres;
  if (name == "Microsoft SQL Server") return OdbcEngine::kSqlServer;
  return name.starts_with("SQLite") ? OdbcEngine::kSqlite : OdbcEngine::kOther;
}

}  // namespace

OdbcLink::OdbcLink(const OdbcSettings& settings) {
  try {
    Allocate();
    Connect(settings);
    ReadInfo();
    ForbidChanges();
    ChooseIsolation();
  } catch (OdbcFailure& failure) {
    failure.opening = true;
    Free();
    throw;
  } catch (...) {
    Free();
    throw;
  }
}

OdbcLink::~OdbcLink() { Free(); }

void OdbcLink::Free() {
  if (in_transaction_) SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
  Disconnect();
  if (connection_ != nullptr) SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  if (environment_ != nullptr) SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

void OdbcLink::Allocate() {
  SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_);
  if (environment_ == nullptr) throw OdbcFailure{{"HY001", 0, ""}, true};
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, AttributeValue(SQL_OV_ODBC3), 0);
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_)))
    throw Failure(SQL_HANDLE_ENV, environment_);
}

void OdbcLink::Connect(const OdbcSettings& settings) {
  SQLSetConnectAttrW(connection_, SQL_ATTR_ACCESS_MODE, AttributeValue(SQL_MODE_READ_ONLY), 0);
  if (settings.time_limit) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(*settings.time_limit).count();
    SQLSetConnectAttrW(connection_, SQL_ATTR_LOGIN_TIMEOUT, AttributeValue(static_cast<uintptr_t>(seconds)), 0);
  }
  // Only a connected driver tells which letters it takes; for plain ones it makes no difference.
  if (IsPlainAscii(settings.for_driver)) {
    ConnectBy(OdbcLetters::kWide, settings);
    info_.letters = LettersOfDriver();
    return;
  }
  try {
    ConnectBy(OdbcLetters::kNarrow, settings);
    if (LettersOfDriver() == OdbcLetters::kNarrow) return;
    Disconnect();
  } catch (const OdbcFailure&) {
    // A driver for wide text got something else than the text.
  }
  ConnectBy(OdbcLetters::kWide, settings);
}

void OdbcLink::ConnectBy(OdbcLetters letters, const OdbcSettings& settings) {
  info_.letters = letters;
  OdbcArgument text(settings.for_driver);
  const SQLRETURN code =
      letters == OdbcLetters::kWide
          ? SQLDriverConnectW(connection_, nullptr, text.wide(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)
          : SQLDriverConnect(connection_, nullptr, text.narrow(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  connected_ = SQL_SUCCEEDED(code);
  if (connected_) return;
  OdbcFailure failure = Failure(SQL_HANDLE_DBC, connection_);
  if (!settings.password.empty())
    failure.diagnosis.text = base::ReplaceAll(failure.diagnosis.text, settings.password, "***");
  throw failure;
}

void OdbcLink::Disconnect() {
  if (std::exchange(connected_, false)) SQLDisconnect(connection_);
}

OdbcFailure OdbcLink::Failure(SQLSMALLINT handle_type, SQLHANDLE handle) const {
  OdbcFailure failure{DiagnosisOf(handle_type, handle, info_.letters)};
  SQLUINTEGER dead = SQL_CD_FALSE;
  if (connected_) SQLGetConnectAttrW(connection_, SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
  failure.lost = connected_ && (dead == SQL_CD_TRUE || IsConnectionLost(failure.diagnosis.state));
  return failure;
}

// A Chinese letter goes through the driver and comes back, or half of it does.
OdbcLetters OdbcLink::LettersOfDriver() const {
  constexpr std::string_view kLetter = "仓";
  OdbcArgument text(kLetter);
  OdbcWideText answer(16);
  SQLINTEGER length = 0;
  const SQLRETURN code =
      SQLNativeSqlW(connection_, text.wide(), SQL_NTS, answer.data(), static_cast<SQLINTEGER>(answer.size()), &length);
  return SQL_SUCCEEDED(code) && answer.front() == *text.wide() ? OdbcLetters::kWide : OdbcLetters::kNarrow;
}

std::string OdbcLink::InfoText(SQLUSMALLINT which) const {
  OdbcWideText text(256);
  SQLSMALLINT bytes = 0;
  if (!SQL_SUCCEEDED(SQLGetInfoW(connection_, which, text.data(),
                                 static_cast<SQLSMALLINT>(text.size() * sizeof(SQLWCHAR)), &bytes)))
    return "";
  std::string utf8;
  size_t length = 0;
  while (length + 1 < text.size() && text[length] != 0) ++length;
  AppendUtf8(text.data(), length, utf8);
  return utf8;
}

void OdbcLink::ReadInfo() {
  info_.engine_name = InfoText(SQL_DBMS_NAME);
  info_.engine = EngineOf(info_.engine_name);
  info_.quote = base::TrimBlanks(InfoText(SQL_IDENTIFIER_QUOTE_CHAR));
  if (info_.engine == OdbcEngine::kPostgres) info_.schema = FirstText("SELECT current_schema()");
  if (info_.engine == OdbcEngine::kSqlServer) info_.schema = FirstText("SELECT SCHEMA_NAME()");
}

void OdbcLink::Run(std::string_view sql) {
  const PlainStatement statement(connection_);
  const SQLRETURN code = ExecuteOn(statement.handle, sql, info_.letters);
  if (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA) throw Failure(SQL_HANDLE_STMT, statement.handle);
  while (SQL_SUCCEEDED(SQLMoreResults(statement.handle))) {
  }
}

std::string OdbcLink::FirstText(std::string_view sql) {
  const PlainStatement statement(connection_);
  if (!SQL_SUCCEEDED(ExecuteOn(statement.handle, sql, info_.letters)) || !SQL_SUCCEEDED(SQLFetch(statement.handle)))
    return "";
  std::array<SQLWCHAR, 256> text{};
  SQLLEN bytes = 0;
  const SQLRETURN code = SQLGetData(statement.handle, 1, SQL_C_WCHAR, text.data(), sizeof text, &bytes);
  std::string utf8;
  if (code == SQL_SUCCESS && bytes > 0) AppendUtf8(text.data(), static_cast<size_t>(bytes) / sizeof(SQLWCHAR), utf8);
  return utf8;
}

// What the driver's read-only mode promises is little: most drivers take it for a hint.
void OdbcLink::ForbidChanges() {
  if (info_.engine == OdbcEngine::kPostgres) Run("SET default_transaction_read_only = on");
  if (info_.engine == OdbcEngine::kSqlite) Run("PRAGMA query_only=1");
}

bool OdbcLink::SetIsolation(SQLUINTEGER level) {
  SQLUINTEGER offered = 0;
  SQLGetInfoW(connection_, SQL_TXN_ISOLATION_OPTION, &offered, sizeof offered, nullptr);
  return (offered & level) != 0 &&
         SQL_SUCCEEDED(SQLSetConnectAttrW(connection_, SQL_ATTR_TXN_ISOLATION, AttributeValue(level), 0));
}

// A snapshot where the engine has one under some name, and locks on all that was read where it has none.
void OdbcLink::ChooseIsolation() {
  SQLUSMALLINT capable = SQL_TC_NONE;
  SQLGetInfoW(connection_, SQL_TXN_CAPABLE, &capable, sizeof capable, nullptr);
  if (capable == SQL_TC_NONE) return;
  if (info_.engine == OdbcEngine::kPostgres) {
    info_.reads_moments = SetIsolation(SQL_TXN_REPEATABLE_READ);
    return;
  }
  if (info_.engine == OdbcEngine::kSqlServer &&
      FirstText("SELECT CAST(snapshot_isolation_state AS varchar(1)) FROM sys.databases WHERE database_id = DB_ID()") ==
          "1") {
    Run("SET TRANSACTION ISOLATION LEVEL SNAPSHOT");
    info_.reads_moments = true;
    return;
  }
  info_.reads_moments = SetIsolation(SQL_TXN_SERIALIZABLE);
}

void OdbcLink::Begin() {
  if (!info_.reads_moments) return;
  const SQLRETURN code =
      SQLSetConnectAttrW(connection_, SQL_ATTR_AUTOCOMMIT, AttributeValue(SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
  if (!SQL_SUCCEEDED(code)) throw Failure(SQL_HANDLE_DBC, connection_);
  in_transaction_ = true;
  // The first read is what takes the snapshot or the lock; what every other engine can read, nobody knows.
  if (info_.engine == OdbcEngine::kOther) return;
  Run(info_.engine == OdbcEngine::kSqlite ? "SELECT count(*) FROM sqlite_master" : "SELECT 1");
}

void OdbcLink::Rollback() {
  if (!std::exchange(in_transaction_, false)) return;
  const SQLRETURN ended = SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
  const SQLRETURN restored =
      SQLSetConnectAttrW(connection_, SQL_ATTR_AUTOCOMMIT, AttributeValue(SQL_AUTOCOMMIT_ON), SQL_IS_UINTEGER);
  if (!SQL_SUCCEEDED(ended) || !SQL_SUCCEEDED(restored)) {
    OdbcFailure failure = Failure(SQL_HANDLE_DBC, connection_);
    failure.lost = true;
    throw failure;
  }
}

OdbcStatement::OdbcStatement(std::shared_ptr<OdbcLink> link) : link_(std::move(link)) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, link_->handle(), &handle_)))
    throw link_->Failure(SQL_HANDLE_DBC, link_->handle());
}

OdbcStatement::~OdbcStatement() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }

SQLRETURN OdbcStatement::Execute(std::string_view sql) const { return ExecuteOn(handle_, sql, link_->info().letters); }

SQLRETURN OdbcStatement::Tables(std::string_view schema) const {
  OdbcArgument name(schema);
  return link_->info().letters == OdbcLetters::kWide
             ? SQLTablesW(handle_, nullptr, 0, name.WideOrAny(), SQL_NTS, nullptr, 0, nullptr, 0)
             : SQLTables(handle_, nullptr, 0, name.NarrowOrAny(), SQL_NTS, nullptr, 0, nullptr, 0);
}

SQLRETURN OdbcStatement::Columns(std::string_view schema, std::string_view table) const {
  OdbcArgument of(schema);
  OdbcArgument name(table);
  return link_->info().letters == OdbcLetters::kWide
             ? SQLColumnsW(handle_, nullptr, 0, of.WideOrAny(), SQL_NTS, name.wide(), SQL_NTS, nullptr, 0)
             : SQLColumns(handle_, nullptr, 0, of.NarrowOrAny(), SQL_NTS, name.narrow(), SQL_NTS, nullptr, 0);
}

SQLRETURN OdbcStatement::PrimaryKeys(std::string_view schema, std::string_view table) const {
  OdbcArgument of(schema);
  OdbcArgument name(table);
  return link_->info().letters == OdbcLetters::kWide
             ? SQLPrimaryKeysW(handle_, nullptr, 0, of.WideOrAny(), SQL_NTS, name.wide(), SQL_NTS)
             : SQLPrimaryKeys(handle_, nullptr, 0, of.NarrowOrAny(), SQL_NTS, name.narrow(), SQL_NTS);
}

void OdbcStatement::Check(SQLRETURN code) const {
  if (SQL_SUCCEEDED(code) || code == SQL_NO_DATA) return;
  throw link_->Failure(SQL_HANDLE_STMT, handle_);
}

}  // namespace stockbook::databases
