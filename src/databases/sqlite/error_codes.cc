// SPDX-License-Identifier: MIT
#include "databases/sqlite/error_codes.h"

#include <sqlite3.h>

namespace stockbook::databases {
namespace {

// The code that tells most: the upper bytes of an extended code say where it happened, but one of them says what.
int PrimaryCode(int code) { return code == SQLITE_IOERR_NOMEM ? SQLITE_NOMEM : code & 0xFF; }

}  // namespace

platform::ErrorKind KindOfCode(int code) {
  switch (PrimaryCode(code)) {
    case SQLITE_ERROR:
    case SQLITE_AUTH:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_RANGE:
    case SQLITE_TOOBIG:
      return platform::ErrorKind::kStatement;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
    case SQLITE_SCHEMA:
      return platform::ErrorKind::kBusy;
    case SQLITE_CORRUPT:
    case SQLITE_FORMAT:
    case SQLITE_INTERNAL:
    case SQLITE_NOTADB:
      return platform::ErrorKind::kDamaged;
    case SQLITE_NOMEM:
      return platform::ErrorKind::kMemory;
    case SQLITE_ABORT:
    case SQLITE_INTERRUPT:
      return platform::ErrorKind::kInterrupted;
    default:
      return platform::ErrorKind::kInputOutput;
  }
}

std::string ExplainCode(int code, const std::string& file, const char* detail) {
  if (code == SQLITE_READONLY_DIRECTORY || code == SQLITE_READONLY_CANTINIT) {
    return "数据库“" + file + "”是 WAL 模式，而它所在的文件夹不允许写入，请先打开写入它的程序，或允许写入该文件夹";
  }
  switch (PrimaryCode(code)) {
    case SQLITE_NOTADB:
      return "文件“" + file + "”不是 SQLite 数据库";
    case SQLITE_CORRUPT:
      return "数据库文件“" + file + "”已损坏：" + detail;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
      return "数据库“" + file + "”正被其他程序独占，请稍后再试";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
      return "无法打开数据库文件“" + file + "”，请检查文件及其权限：" + detail;
    case SQLITE_READONLY:
      return "数据库“" + file + "”上次写入时中断，只读打开无法恢复，请让写入它的程序再打开一次，然后重试";
    case SQLITE_AUTH:
      return "语句要读取不允许读取的表，请检查语句，或在连接字符串的 Tables 中列出这个表";
    case SQLITE_TOOBIG:
      return "语句中的文本或数据太长，请缩短后再试";
    case SQLITE_NOMEM:
      return "内存不足，无法读取数据库“" + file + "”";
    case SQLITE_IOERR:
      return "读取数据库文件“" + file + "”时出错：" + detail;
    default:
      return detail;
  }
}

}  // namespace stockbook::databases
