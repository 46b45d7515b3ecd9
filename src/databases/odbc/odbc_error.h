// SPDX-License-Identifier: MIT
#pragma once

#include <sql.h>

#include <string>

#include "databases/odbc/odbc_text.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {

// What a driver says about the last call of a handle that failed.
struct OdbcDiagnosis {
  std::string state;  // SQLSTATE, five characters
  int native = 0;
  std::string text;  // of all records, in one line
};
OdbcDiagnosis DiagnosisOf(SQLSMALLINT handle_type, SQLHANDLE handle, OdbcLetters letters);

// Whether a state says that the connection is gone.
bool IsConnectionLost(const std::string& state);

platform::ErrorKind KindOfState(const std::string& state);

// The error of a statement, of a connection that broke meanwhile, or of opening, as one sentence for the user followed
// by the driver's own words.
platform::Error ExecuteErrorOf(const OdbcDiagnosis& diagnosis, platform::ErrorKind kind);
platform::Error LostErrorOf(const OdbcDiagnosis& diagnosis);
platform::Error OpenErrorOf(const OdbcDiagnosis& diagnosis);

}  // namespace stockbook::databases
