// SPDX-License-Identifier: MIT
#include "databases/sqlite/error_codes.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace stockbook::databases {
namespace {

using platform::ErrorKind;

TEST(ErrorCodes, TellWhetherTheStatementOrTheEngineFailed) {
  const struct {
    ErrorKind kind;
    std::initializer_list<int> codes;
  } kinds[] = {
      {ErrorKind::kStatement,
       {SQLITE_ERROR, SQLITE_ERROR_MISSING_COLLSEQ, SQLITE_AUTH, SQLITE_CONSTRAINT, SQLITE_CONSTRAINT_FUNCTION,
        SQLITE_MISMATCH, SQLITE_RANGE, SQLITE_TOOBIG}},
      {ErrorKind::kBusy,
       {SQLITE_BUSY, SQLITE_BUSY_RECOVERY, SQLITE_BUSY_SNAPSHOT, SQLITE_BUSY_TIMEOUT, SQLITE_LOCKED,
        SQLITE_LOCKED_SHAREDCACHE, SQLITE_PROTOCOL, SQLITE_SCHEMA}},
      {ErrorKind::kInputOutput,
       {SQLITE_CANTOPEN, SQLITE_CANTOPEN_ISDIR, SQLITE_PERM, SQLITE_IOERR, SQLITE_IOERR_READ, SQLITE_IOERR_SHORT_READ,
        SQLITE_FULL, SQLITE_READONLY, SQLITE_READONLY_ROLLBACK, SQLITE_READONLY_RECOVERY, SQLITE_NOLFS, SQLITE_MISUSE,
        250}},
      {ErrorKind::kDamaged,
       {SQLITE_CORRUPT, SQLITE_CORRUPT_INDEX, SQLITE_CORRUPT_VTAB, SQLITE_NOTADB, SQLITE_FORMAT, SQLITE_INTERNAL}},
      {ErrorKind::kMemory, {SQLITE_NOMEM, SQLITE_IOERR_NOMEM}},
      {ErrorKind::kInterrupted, {SQLITE_INTERRUPT, SQLITE_ABORT, SQLITE_ABORT_ROLLBACK}},
  };
  for (const auto& [kind, codes] : kinds) {
    for (const int code : codes) EXPECT_EQ(KindOfCode(code), kind) << code;
  }
}

TEST(ErrorCodes, AreExplainedInTheUsersLanguage) {
  for (const int code : {SQLITE_READONLY_ROLLBACK, SQLITE_AUTH, SQLITE_TOOBIG, SQLITE_NOMEM, SQLITE_IOERR_NOMEM,
                         SQLITE_PROTOCOL, SQLITE_BUSY_SNAPSHOT}) {
    const std::string text = ExplainCode(code, "a.db", "english");
    EXPECT_EQ(text.find("english"), std::string::npos) << code;
    EXPECT_GE(static_cast<unsigned char>(text.front()), 0x80) << code;
  }
}

TEST(ErrorCodes, TellAFolderThatMayNotBeWrittenToFromAWriteThatWasCutOff) {
  for (const int code : {SQLITE_READONLY_DIRECTORY, SQLITE_READONLY_CANTINIT}) {
    const std::string text = ExplainCode(code, "a.db", "");
    EXPECT_TRUE(text.starts_with("数据库“a.db”是 WAL 模式")) << text;
    EXPECT_EQ(text.find("中断"), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace stockbook::databases
