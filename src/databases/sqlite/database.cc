// SPDX-License-Identifier: MIT
#include "databases/sqlite/database.h"

#include <filesystem>

namespace stockbook::databases {
namespace {

constexpr int kBusyTimeoutMs = 2000;

// Counting every allocation costs a tenth of a load. SQLite accepts the setting only before its first use in the
// process; later it refuses, and everything still works, only slower.
void TurnOffMemoryStatistics() {
  static const int result = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  static_cast<void>(result);
}

// The parser of the dialects already refuses everything but reading; this is a second line of defence.
int Authorize(void*, int action, const char*, const char*, const char*, const char*) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_FUNCTION:
    case SQLITE_PRAGMA:
    case SQLITE_TRANSACTION:
      return SQLITE_OK;
    default:
      return SQLITE_DENY;
  }
}

std::string Explain(int code, const std::string& file, const char* detail) {
  switch (code & 0xFF) {
    case SQLITE_NOTADB:
      return "文件“" + file + "”不是 SQLite 数据库";
    case SQLITE_CORRUPT:
      return "数据库文件“" + file + "”已损坏：" + detail;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "数据库“" + file + "”正被其他程序独占，请稍后再试";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return "无法打开数据库文件“" + file + "”，请检查文件及其权限：" + detail;
    case SQLITE_NOMEM:
      return "内存不足，无法读取数据库“" + file + "”";
    case SQLITE_IOERR:
      return "读取数据库文件“" + file + "”时出错：" + detail;
    default:
      return detail;
  }
}

platform::ErrorKind KindOf(int code) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return platform::ErrorKind::kBusy;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return platform::ErrorKind::kDamaged;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_IOERR:
    case SQLITE_PROTOCOL:
    case SQLITE_FULL:
      return platform::ErrorKind::kInputOutput;
    case SQLITE_NOMEM:
      return platform::ErrorKind::kMemory;
    case SQLITE_INTERRUPT:
      return platform::ErrorKind::kInterrupted;
    default:
      return platform::ErrorKind::kStatement;
  }
}

}  // namespace

Database::Database(const std::string& file) : file_(file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status))
    throw platform::Error("Open", "找不到数据库文件“" + file + "”", SQLITE_CANTOPEN, platform::ErrorKind::kInputOutput);
  if (std::filesystem::is_directory(status))
    throw platform::Error("Open", "“" + file + "”是文件夹，不是数据库文件", SQLITE_CANTOPEN,
                          platform::ErrorKind::kInputOutput);
  TurnOffMemoryStatistics();
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) {
    throw platform::Error("Open",
                          Explain(code, file, opened != nullptr ? sqlite3_errmsg(opened) : sqlite3_errstr(code)), code,
                          KindOf(code));
  }
  sqlite3_busy_timeout(opened, kBusyTimeoutMs);
  sqlite3_limit(opened, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  // The first read shows whether the file is a database at all.
  for (const char* sql : {"PRAGMA query_only=1", "PRAGMA temp_store=MEMORY", "SELECT count(*) FROM sqlite_master"}) {
    if (sqlite3_exec(opened, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw ErrorOf("Open");
  }
  sqlite3_set_authorizer(opened, Authorize, nullptr);
}

platform::Error Database::ErrorOf(const char* operation) const {
  const int code = sqlite3_extended_errcode(handle());
  return {operation, Explain(code, file_, sqlite3_errmsg(handle())), code, KindOf(code)};
}

Statement::Statement(const Database& database, std::string_view sql) : database_(database) {
  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v2(database.handle(), sql.data(), static_cast<int>(sql.size()), &prepared, nullptr);
  handle_.reset(prepared);
  if (code != SQLITE_OK) throw database.ErrorOf("Execute");
}

bool Statement::Step() {
  const int code = sqlite3_step(handle_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  throw database_.ErrorOf("Execute");
}

std::string_view Statement::Text(int column) const {
  const auto* text = sqlite3_column_blob(handle_.get(), column);
  const int bytes = sqlite3_column_bytes(handle_.get(), column);
  return text == nullptr ? std::string_view()
                         : std::string_view(static_cast<const char*>(text), static_cast<size_t>(bytes));
}

ReadTransaction::ReadTransaction(const Database& database)
    : database_(database), outermost_(sqlite3_get_autocommit(database.handle()) != 0) {
  if (!outermost_) return;
  // BEGIN alone takes no lock; the first read does.
  for (const char* sql : {"BEGIN", "SELECT count(*) FROM sqlite_master"}) {
    if (sqlite3_exec(database.handle(), sql, nullptr, nullptr, nullptr) == SQLITE_OK) continue;
    const platform::Error error = database.ErrorOf("Execute");
    sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    throw error;
  }
}

ReadTransaction::~ReadTransaction() {
  if (outermost_) sqlite3_exec(database_.handle(), "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace stockbook::databases
