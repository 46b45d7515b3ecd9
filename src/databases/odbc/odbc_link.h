// SPDX-License-Identifier: MIT
#pragma once

#include <sql.h>

#include <memory>
#include <string>
#include <string_view>

#include "databases/odbc/odbc_error.h"
#include "databases/odbc/odbc_settings.h"

namespace stockbook::databases {

// A call of a driver that failed. Thrown on the thread that calls it; the session makes a platform::Error of it.
struct OdbcFailure {
  OdbcDiagnosis diagnosis;
  bool opening = false;
  bool lost = false;  // the connection is gone
};

enum class OdbcEngine { kPostgres, kSqlServer, kSqlite, kOther };

// What a connected driver says of itself.
struct OdbcInfo {
  OdbcEngine engine = OdbcEngine::kOther;
  std::string engine_name;
  OdbcLetters letters = OdbcLetters::kWide;
  std::string quote = "\"";    // around names; empty where there are no quoted names
  std::string schema;          // the one that names without a schema mean, or empty
  bool reads_moments = false;  // several statements as of one moment
};

// A driver's connection, read only as far as the driver and the engine can promise it. Every function calls the driver
// and may take as long as that likes, destroying included.
class OdbcLink {
 public:
  // Throws OdbcFailure when it cannot connect.
  explicit OdbcLink(const OdbcSettings& settings);
  ~OdbcLink();
  OdbcLink(const OdbcLink&) = delete;
  OdbcLink& operator=(const OdbcLink&) = delete;

  const OdbcInfo& info() const { return info_; }
  SQLHDBC handle() const { return connection_; }
  // What the driver says of a call that failed.
  OdbcFailure Failure(SQLSMALLINT handle_type, SQLHANDLE handle) const;

  // A transaction that reads as of now; what it was begun for is over with Rollback.
  void Begin();
  void Rollback();

 private:
  void Allocate();
  void Connect(const OdbcSettings& settings);
  void ConnectBy(OdbcLetters letters, const OdbcSettings& settings);
  void Disconnect();
  OdbcLetters LettersOfDriver() const;
  void ReadInfo();
  void ForbidChanges();
  void ChooseIsolation();
  bool SetIsolation(SQLUINTEGER level);
  std::string InfoText(SQLUSMALLINT which) const;
  std::string FirstText(std::string_view sql);
  void Run(std::string_view sql);
  void Free();

  SQLHENV environment_ = nullptr;
  SQLHDBC connection_ = nullptr;
  bool connected_ = false;
  bool in_transaction_ = false;
  OdbcInfo info_;
};

// A statement of a link, which it keeps alive.
class OdbcStatement {
 public:
  explicit OdbcStatement(std::shared_ptr<OdbcLink> link);
  ~OdbcStatement();
  OdbcStatement(const OdbcStatement&) = delete;
  OdbcStatement& operator=(const OdbcStatement&) = delete;

  SQLHSTMT handle() const { return handle_; }
  const OdbcLink& link() const { return *link_; }

  // What makes a result, by the functions that the driver knows. An empty schema is any.
  SQLRETURN Execute(std::string_view sql) const;
  SQLRETURN Tables(std::string_view schema) const;
  SQLRETURN Columns(std::string_view schema, std::string_view table) const;
  SQLRETURN PrimaryKeys(std::string_view schema, std::string_view table) const;

  // Throws OdbcFailure unless the call succeeded.
  void Check(SQLRETURN code) const;

 private:
  std::shared_ptr<OdbcLink> link_;
  SQLHSTMT handle_ = nullptr;
};

}  // namespace stockbook::databases
