// SPDX-License-Identifier: MIT
#include "databases/sqlite/database.h"

#include <filesystem>
#include <utility>

#include "base/text.h"
#include "databases/sqlite/error_codes.h"
#include "databases/sqlite/memory_database.h"

namespace stockbook::databases {
namespace {

int OnProgress(void* interruption) { return static_cast<Interruption*>(interruption)->IsDue() ? 1 : 0; }

int OnLock(void* interruption, int tries) {
  return static_cast<Interruption*>(interruption)->WaitForLock(tries) ? 1 : 0;
}

// SQLite's own tables, and its functions that make tables, which a view could call; it makes pragmas up as such
// functions.
bool IsOfSqlite(std::string_view table) {
  const std::string name = base::AsciiLower(table);
  return name.starts_with("sqlite_") || name.starts_with("pragma_") || name == "json_each" || name == "json_tree";
}

// Opening a pipe or a device may wait forever, or start something.
void CheckIsFile(const std::string& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  const auto refuse = [](const std::string& reason) {
    throw platform::Error("Open", reason, SQLITE_CANTOPEN, platform::ErrorKind::kInputOutput);
  };
  if (!std::filesystem::exists(status)) refuse("找不到数据库文件“" + file + "”");
  if (std::filesystem::is_directory(status)) refuse("“" + file + "”是文件夹，不是数据库文件");
  if (!std::filesystem::is_regular_file(status)) refuse("“" + file + "”是管道、设备或套接字，不是数据库文件");
}

}  // namespace

Database::Database(const std::string& file, ReadableTables tables,
                   std::optional<Interruption::Clock::duration> time_limit)
    : Database(file, std::move(tables), std::make_unique<Interruption>(time_limit)) {}

Database::Database(Leader leader)
    : Database(leader.database.file_, leader.database.tables(),
               std::make_unique<Interruption>(Interruption::Leader{leader.database.interruption()})) {}

Database::Database(const std::string& file, ReadableTables tables, std::unique_ptr<Interruption> interruption)
    : file_(file),
      interruption_(std::move(interruption)),
      access_(std::make_unique<Access>(Access{std::move(tables), *interruption_})) {
  if (MemoryDatabase::NameInMemory(file) == nullptr) CheckIsFile(file);
  const Interruption::Running running(*interruption_);
  OpenFile();
  LimitWhatStatementsMayDo();
  // The first read shows whether the file is a database at all.
  for (const char* sql : {"PRAGMA query_only=1", "PRAGMA temp_store=MEMORY", "PRAGMA cell_size_check=1",
                          "SELECT count(*) FROM sqlite_master"}) {
    if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw ErrorOf("Open");
  }
  sqlite3_set_authorizer(handle(), Authorize, access_.get());
}

void Database::OpenFile() {
  sqlite3* opened = nullptr;
  const char* in_memory = MemoryDatabase::NameInMemory(file_);
  const int code = sqlite3_open_v2(in_memory != nullptr ? in_memory : file_.c_str(), &opened,
                                   SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                                   in_memory != nullptr ? MemoryDatabase::kFileSystem : nullptr);
  handle_.reset(opened);
  if (code == SQLITE_OK) return;
  const char* detail = opened != nullptr ? sqlite3_errmsg(opened) : sqlite3_errstr(code);
  throw platform::Error("Open", ExplainCode(code, file_, detail), code, KindOfCode(code));
}

void Database::LimitWhatStatementsMayDo() {
  constexpr int kInstructionsBetweenChecks = 2000;
  sqlite3_progress_handler(handle(), kInstructionsBetweenChecks, OnProgress, interruption_.get());
  sqlite3_busy_handler(handle(), OnLock, interruption_.get());
  sqlite3_limit(handle(), SQLITE_LIMIT_ATTACHED, 0);
  // What a journal reads stays far below these.
  constexpr int kMostBytes = 16 << 20;
  sqlite3_limit(handle(), SQLITE_LIMIT_LENGTH, kMostBytes);
  sqlite3_limit(handle(), SQLITE_LIMIT_SQL_LENGTH, kMostBytes);
  sqlite3_limit(handle(), SQLITE_LIMIT_VDBE_OP, 25'000'000);
  sqlite3_limit(handle(), SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000);
  sqlite3_db_config(handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

// A table that is read for a view was chosen by the author of the view; that the view itself may be read is asked
// apart. Reading no column of a table is asked without its view, and tells no more than how many rows it has; the
// translator, which knows every name of a statement, refuses it where it is no view's.
int Database::Authorize(void* access, int action, const char* table, const char* column, const char*,
                        const char* view) {
  const auto& allowed = *static_cast<const Access*>(access);
  if (allowed.own_work > 0) {
    const bool reads = action == SQLITE_SELECT || action == SQLITE_READ || action == SQLITE_FUNCTION ||
                       action == SQLITE_PRAGMA || action == SQLITE_TRANSACTION;
    return reads ? SQLITE_OK : SQLITE_DENY;
  }
  // Views of views are read many times over before SQLite runs its first instruction.
  if (allowed.interruption.IsDue()) return SQLITE_DENY;
  if (action == SQLITE_SELECT || action == SQLITE_FUNCTION) return SQLITE_OK;
  if (action != SQLITE_READ || table == nullptr || column == nullptr) return SQLITE_DENY;
  if (IsOfSqlite(table)) return SQLITE_DENY;
  return view != nullptr || *column == '\0' || allowed.tables.Contains(table) ? SQLITE_OK : SQLITE_DENY;
}

platform::Error Database::ErrorOf(const char* operation) const {
  const int code = sqlite3_extended_errcode(handle());
  const auto kind = KindOfCode(code);
  // Waiting for a lock ends as busy, even if it was cancelled, and compiling as refused, even if its time was up.
  const bool cancelled = kind == platform::ErrorKind::kBusy && interruption_->WasCancelled();
  const bool refused = code == SQLITE_AUTH && interruption_->IsDue();
  if (kind == platform::ErrorKind::kDamaged || kind == platform::ErrorKind::kInputOutput) doubts_memory_ = true;
  if (kind == platform::ErrorKind::kInterrupted || cancelled || refused) return interruption_->Reason(operation);
  return {operation, ExplainCode(code, file_, sqlite3_errmsg(handle())), code, kind};
}

// Where a file is cut off, SQLite remembers zeros in the place of what is missing, for as long as the file says that
// nobody has written to it: also when it is whole again.
void Database::ForgetWhatIsDoubted() const {
  if (std::exchange(doubts_memory_, false)) sqlite3_db_release_memory(handle());
}

Database::OwnWork::OwnWork(const Database& database) : database_(database) { ++database.access_->own_work; }

Database::OwnWork::~OwnWork() { --database_.access_->own_work; }

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
  const Database::OwnWork own(database);
  database.interruption().BeginMoment();
  try {
    FindState();
  } catch (...) {
    // Also if there is no memory for the error: a moment that stays open would never see what others post.
    sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    database.ForgetWhatIsDoubted();
    throw;
  }
}

void ReadTransaction::Begin() const {
  // BEGIN alone takes no lock; the first read does.
  for (const char* sql : {"BEGIN", "SELECT count(*) FROM sqlite_master"}) {
    if (sqlite3_exec(database_.handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
      throw database_.ErrorOf("Execute");
  }
}

// A log's head that was the same before and after the transaction began is the one that it sees.
void ReadTransaction::FindState() const {
  constexpr int kTries = 3;
  database_.state_ = {};
  for (int tries = 0;; ++tries) {
    const auto before = database_.had_log_ ? LogHeadOf(database_.handle()) : std::nullopt;
    database_.had_log_ = false;
    Begin();
    {
      Statement mode(database_, "PRAGMA main.journal_mode");
      if (!mode.Step()) return;
      if (mode.Text(0) != "wal") {
        database_.state_ = FileState::OfRollbackJournal();
        return;
      }
    }
    database_.had_log_ = true;
    const auto after = LogHeadOf(database_.handle());
    if (before && before == after) database_.state_ = FileState::OfLog(*after);
    if ((before && before == after) || tries + 1 == kTries) return;
    if (sqlite3_exec(database_.handle(), "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
      throw database_.ErrorOf("Execute");
  }
}

ReadTransaction::~ReadTransaction() {
  if (!outermost_) return;
  const Database::OwnWork own(database_);
  sqlite3_exec(database_.handle(), "COMMIT", nullptr, nullptr, nullptr);
  database_.ForgetWhatIsDoubted();
}

}  // namespace stockbook::databases
